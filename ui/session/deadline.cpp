#include "ui/session/deadline.h"

#include <algorithm>
#include <ctime>

#include "ui/text/texts.h"

namespace zorvanelink::ui {

std::chrono::milliseconds BootTime() {
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec));
}

Deadline::Deadline(Clock clock) : clock_(std::move(clock)) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Deadline::onTick);
}

void Deadline::Start(Time time) {
    end_ = clock_.now() + time;
    arm();
}

void Deadline::arm() {
    timer_.start(std::clamp(end_ - clock_.now(), Time(), clock_.tick));
}

QString Deadline::TimeLeft() const {
    auto const left =
        std::chrono::ceil<std::chrono::seconds>(std::max(end_ - clock_.now(), Time()));
    auto const minutes = std::chrono::floor<std::chrono::minutes>(left);
    return Translate(QT_TRANSLATE_NOOP("ui", "Time left: %1"))
        .arg(QStringLiteral("%1:%2")
                 .arg(minutes.count())
                 .arg((left - minutes).count(), 2, 10, QLatin1Char('0')));
}

void Deadline::onTick() {
    if (clock_.now() < end_) {
        arm();
        Q_EMIT Ticked();
    } else {
        Q_EMIT Passed();
    }
}

}  // namespace zorvanelink::ui
