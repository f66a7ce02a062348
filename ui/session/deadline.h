// How long a step of the login may take: the gateway's clock goes on while this machine sleeps, and
// so does this one. GUI thread.
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <functional>

namespace zorvanelink::ui {

// Since the machine has started, the time asleep included.
std::chrono::milliseconds BootTime();

class Deadline : public QObject {
    Q_OBJECT

  public:
    using Time = std::chrono::milliseconds;
    struct Clock {
        std::function<Time()> now = BootTime;
        Time tick{1000};
    };

    explicit Deadline(Clock clock);

    void Start(Time time);
    void Stop() { timer_.stop(); }
    bool Runs() const { return timer_.isActive(); }
    // For people, such as "Time left: 9:41".
    QString TimeLeft() const;

  Q_SIGNALS:
    void Ticked();
    // Once, and it no longer runs.
    void Passed();

  private:
    void arm();
    void onTick();

    Clock const clock_;
    QTimer timer_;
    Time end_{};
};

}  // namespace zorvanelink::ui
