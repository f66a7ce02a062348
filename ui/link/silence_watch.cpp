#include "ui/link/silence_watch.h"

#include <algorithm>

namespace zorvanelink::ui {

SilenceWatch::SilenceWatch(LinkCore& core, std::chrono::milliseconds limit)
    : core_(core), limit_(limit) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &SilenceWatch::look);
}

void SilenceWatch::Watch(bool on) {
    if (std::exchange(watching_, on) == on) {
        return;
    }
    if (on) {
        look();
    } else {
        timer_.stop();
        End();
    }
}

void SilenceWatch::Heard() {
    if (timer_.isActive()) {
        timer_.start(limit_);
    }
}

void SilenceWatch::End() {
    if (!since_) {
        return;
    }
    since_.reset();
    if (watching_) {
        timer_.start(limit_);
    }
    Q_EMIT Changed(since_);
}

void SilenceWatch::look() {
    auto const silent = core_.SilentFor(limit_);
    if (!silent || *silent < limit_) {
        timer_.start(silent ? limit_ - *silent : limit_);
        return;
    }
    since_ = QDateTime::currentDateTime().addMSecs(-silent->count());
    Q_EMIT Changed(since_);
}

}  // namespace zorvanelink::ui
