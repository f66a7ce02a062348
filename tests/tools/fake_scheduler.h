// A clock that stands still until a test moves it.
#pragma once

#include <map>

#include "tools/simservice/scheduler.h"

namespace zorvanelink::test {

class FakeScheduler : public simservice::Scheduler {
  public:
    Clock::time_point Now() const override { return now_; }
    void After(Milliseconds delay, std::function<void()> task) override {
        tasks_.emplace(now_ + delay, std::move(task));
    }
    void Advance(int milliseconds) {
        auto const end = now_ + Milliseconds(milliseconds);
        while (!tasks_.empty() && tasks_.begin()->first <= end) {
            now_ = tasks_.begin()->first;
            auto const task = std::move(tasks_.begin()->second);
            tasks_.erase(tasks_.begin());
            task();
        }
        now_ = end;
    }

  private:
    Clock::time_point now_{};
    std::multimap<Clock::time_point, std::function<void()>> tasks_;
};

}  // namespace zorvanelink::test
