// The one thread on which the gateway thinks: messages of the link, timers and control lines all
// become tasks of this loop and so never race.
#pragma once

#include <condition_variable>
#include <map>
#include <mutex>

#include "tools/simservice/scheduler.h"

namespace zorvanelink::simservice {

class EventLoop : public Scheduler {
  public:
    // Any thread.
    Clock::time_point Now() const override { return Clock::now(); }
    void After(Milliseconds delay, std::function<void()> task) override;
    void Post(std::function<void()> task) { After(Milliseconds(0), std::move(task)); }
    void Quit();

    // Runs tasks on the calling thread until Quit. What is still waiting then never runs.
    void Run();

  private:
    std::mutex mutex_;
    std::condition_variable wake_;
    std::multimap<Clock::time_point, std::function<void()>> tasks_;
    bool quit_ = false;
};

}  // namespace zorvanelink::simservice
