#include "ui/widgets/form_scroll.h"

#include <QEvent>
#include <QLayout>
#include <QScrollBar>

namespace zorvanelink::ui {
namespace {

constexpr int kLeastHeight = 48;  // pixels

}  // namespace

FormScroll::FormScroll(QWidget* form, QWidget* parent) : QScrollArea(parent) {
    setObjectName(QStringLiteral("form_scroll_"));
    form->setObjectName(QStringLiteral("form_content_"));
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setWidget(form);
    form->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &FormScroll::follow);
}

QSize FormScroll::sizeHint() const {
    return widget()
        ->sizeHint()
        .expandedTo(widget()->minimumSize())
        .boundedTo(widget()->maximumSize());
}

QSize FormScroll::minimumSizeHint() const {
    return {sizeHint().width(), qMin(kLeastHeight, sizeHint().height())};
}

bool FormScroll::hasHeightForWidth() const {
    return widget()->hasHeightForWidth();
}

int FormScroll::heightForWidth(int width) const {
    return qMax(widget()->minimumHeight(), widget()->heightForWidth(width));
}

// The layout around the area asks again when something inside it came or went.
bool FormScroll::eventFilter(QObject* watched, QEvent* event) {
    bool const done = QScrollArea::eventFilter(watched, event);
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        follow();
    }
    return done;
}

void FormScroll::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    follow();
}

void FormScroll::follow() {
    bool const scrolls = verticalScrollBar()->maximum() > 0;
    QLayout* const layout = widget()->layout();
    if (scrolls == scrolls_ || layout == nullptr) {
        return;
    }
    scrolls_ = scrolls;
    int const bar = verticalScrollBar()->sizeHint().width();
    QMargins margins = layout->contentsMargins();
    margins.setRight(margins.right() + (scrolls ? -bar : bar));
    layout->setContentsMargins(margins);
    Q_EMIT Scrolls(scrolls);
}

}  // namespace zorvanelink::ui
