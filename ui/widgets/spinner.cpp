#include "ui/widgets/spinner.h"

#include <QPainter>
#include <QTimerEvent>

#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

constexpr int kFrameMs = 40;
constexpr int kStepDegrees = 15;
constexpr int kArcDegrees = 100;

}  // namespace

Spinner::Spinner(int diameter, int thickness, QWidget* parent)
    : QWidget(parent), thickness_(thickness) {
    setFixedSize(diameter, diameter);
    setAccessibleName(Translate(QT_TRANSLATE_NOOP("ui", "Please wait")));
}

void Spinner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    qreal const inset = thickness_ / 2.0;
    QRectF const circle = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    QColor track = color_;
    track.setAlphaF(0.15);
    painter.setPen(QPen(track, thickness_));
    painter.drawEllipse(circle);
    painter.setPen(QPen(color_, thickness_, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, (90 - angle_) * 16, -kArcDegrees * 16);
}

void Spinner::timerEvent(QTimerEvent* event) {
    if (event->timerId() == timer_.timerId()) {
        angle_ = (angle_ + kStepDegrees) % 360;
        update();
    }
}

void Spinner::showEvent(QShowEvent* event) {
    timer_.start(kFrameMs, this);
    QWidget::showEvent(event);
}

void Spinner::hideEvent(QHideEvent* event) {
    timer_.stop();
    QWidget::hideEvent(event);
}

}  // namespace zorvanelink::ui
