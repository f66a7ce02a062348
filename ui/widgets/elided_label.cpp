#include "ui/widgets/elided_label.h"

#include <QEvent>

#include "ui/widgets/elide.h"

namespace zorvanelink::ui {

ElidedLabel::ElidedLabel(QString const& text, QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    SetFullText(text);
}

void ElidedLabel::SetFullText(QString const& text, QString const& tail) {
    full_ = text.simplified();
    tail_ = tail;
    setAccessibleName(full_ + tail_);
    elide();
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    elide();
}

void ElidedLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        elide();
    }
}

void ElidedLabel::elide() {
    int const room = contentsRect().width() - fontMetrics().horizontalAdvance(tail_);
    QString const shown = fontMetrics().elidedText(full_, Qt::ElideRight, qMax(0, room));
    setText(shown + tail_);
    setToolTip(shown == full_ ? QString() : PlainToolTip(full_));
}

}  // namespace zorvanelink::ui
