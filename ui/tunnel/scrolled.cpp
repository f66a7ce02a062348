#include "ui/tunnel/scrolled.h"

#include <QVBoxLayout>

namespace zorvanelink::ui {

QScrollArea& Scroll(QWidget& body, QWidget& view) {
    auto* const area = new QScrollArea(&view);
    area->setWidget(&body);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->viewport()->setAutoFillBackground(false);
    body.setAutoFillBackground(false);
    auto* const whole = new QVBoxLayout(&view);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(area);
    return *area;
}

}  // namespace zorvanelink::ui
