#include "ui/widgets/frameless_window.h"

#include <QEvent>
#include <QScreen>
#include <QStyle>

#include "ui/widgets/resize_edges.h"
#include "ui/widgets/round_corners.h"
#include "ui/widgets/window_shadow.h"

namespace zorvanelink::ui {

FramelessWindow::FramelessWindow(QString const& title, Size size, Opening opening, QWidget* parent)
    : QWidget(parent, Qt::FramelessWindowHint) {
    setWindowTitle(title);
    // On a small or strongly scaled screen nothing of a frameless window may lie outside.
    QSize const screenSize = screen()->availableSize();
    PrepareRoundCorners(*this);
    WindowShadow::Give(*this);
    setMinimumSize(size.smallest.boundedTo(screenSize).grownBy(contentsMargins()));
    resize(size.wanted.boundedTo(screenSize).grownBy(contentsMargins()));
    if (opening == Opening::kAtOnce) {
        show();
    }
}

void FramelessWindow::ContentsMade() {
    new ResizeEdges(*this);
    for (QWidget* const child : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!child->testAttribute(Qt::WA_WState_ExplicitShowHide)) {
            child->show();
        }
    }
}

void FramelessWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    CutRoundCorners(*this);
}

// A maximised window ends where the screen does: no border, no round corners.
void FramelessWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    auto* const frame = findChild<QWidget*>(QStringLiteral("window_frame_"));
    if (event->type() == QEvent::WindowStateChange && frame != nullptr &&
        frame->property("maximised").toBool() != isMaximized()) {
        frame->setProperty("maximised", isMaximized());
        frame->style()->unpolish(frame);
        frame->style()->polish(frame);
    }
}

}  // namespace zorvanelink::ui
