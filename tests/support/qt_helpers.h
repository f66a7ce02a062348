// Helpers of widget tests: find by name or fail, wait on a condition, act inside a modal call.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace zorvanelink::test {

// The child of that type and object name; throws, and so fails the test, when there is none.
template <class T>
T& Find(QObject const& parent, char const* name) {
    auto* found = parent.findChild<T*>(QLatin1String(name));
    if (found == nullptr) {
        throw std::runtime_error(std::string("no child named ") + name);
    }
    return *found;
}

// Runs the event loop until the condition holds; false when that took more than five seconds.
inline bool WaitFor(std::function<bool()> const& condition) {
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.hasExpired(5000)) {
            return false;
        }
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

// Runs `act` on the modal widget of that type as soon as one stands; for calls that block.
template <class T>
void WhenModal(std::function<void(T&)> act) {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act = std::move(act)] {
        if (auto* widget = qobject_cast<T*>(QApplication::activeModalWidget())) {
            timer->stop();
            timer->deleteLater();
            act(*widget);
        }
    });
    timer->start(1);
}

}  // namespace zorvanelink::test
