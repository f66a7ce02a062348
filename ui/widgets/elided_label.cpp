#include "ui/widgets/elided_label.h"

#include <QEvent>

#include "ui/widgets/elide.h"

namespace zorvanelink::ui {

ElidedLabel::ElidedLabel(QString const& text, QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    SetFullText(text);
}

void ElidedLabel::SetFullText(QString const& text) {
    full_ = text.simplified();
    setAccessibleName(full_);
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
    QString const shown = fontMetrics().elidedText(full_, Qt::ElideRight, contentsRect().width());
    setText(shown);
    setToolTip(shown == full_ ? QString() : PlainToolTip(full_));
}

}  // namespace zorvanelink::ui
