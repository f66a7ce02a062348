// Waiting in tests: on a condition, with a deadline, never for a while.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>
#include <functional>

namespace zorvanelink::test {

// Runs the event loop until the condition holds; false when the deadline (milliseconds) comes
// first.
inline bool WaitUntil(std::function<bool()> const& condition, int deadline_ms = 10000) {
    QDeadlineTimer const deadline(deadline_ms);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::usleep(200);
    }
    return true;
}

}  // namespace zorvanelink::test
