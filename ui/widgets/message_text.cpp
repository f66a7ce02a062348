#include "ui/widgets/message_text.h"

#include <QMouseEvent>
#include <QTextDocument>
#include <cmath>
#include <memory>

namespace zorvanelink::ui {

MessageText::MessageText(QWidget* parent) : QTextEdit(parent) {
    setReadOnly(true);
    setAcceptRichText(false);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFocusPolicy(Qt::ClickFocus);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
}

void MessageText::FitTo(int width, int maxHeight) {
    ensurePolished();
    document()->setDefaultFont(font());
    // A copy: before it is shown the widget wraps its own document at a width of its choice.
    std::unique_ptr<QTextDocument> const measured(document()->clone());
    measured->setTextWidth(width);
    int const height = static_cast<int>(std::ceil(measured->size().height()));
    setVerticalScrollBarPolicy(height > maxHeight ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    setFixedSize(width, qMin(height, maxHeight));
}

void MessageText::mouseReleaseEvent(QMouseEvent* event) {
    QString const url = anchorAt(event->pos());
    QTextEdit::mouseReleaseEvent(event);
    if (!url.isEmpty() && !textCursor().hasSelection()) {
        Q_EMIT LinkActivated(url);
    }
}

}  // namespace zorvanelink::ui
