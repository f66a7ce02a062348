#include "ui/widgets/dim_cover.h"

#include <QEvent>

namespace zorvanelink::ui {

DimCover::DimCover(QWidget* parent, QString const& style) : QWidget(parent) {
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(style);
    hide();
    parent->installEventFilter(this);
}

void DimCover::ToBack() {
    setGeometry(parentWidget()->contentsRect());
    raise();
    show();
}

void DimCover::ToFront() {
    hide();
}

bool DimCover::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && isVisible()) {
        setGeometry(parentWidget()->contentsRect());
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace zorvanelink::ui
