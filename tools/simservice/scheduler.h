// Time as the simulated gateway sees it, so that a test can turn the hands of the clock.
#pragma once

#include <chrono>
#include <functional>

namespace zorvanelink::simservice {

class Scheduler {
  public:
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::milliseconds;

    virtual ~Scheduler() = default;
    virtual Clock::time_point Now() const = 0;
    // Runs the task once, `delay` from now, never inside this call. Equal times keep their order.
    virtual void After(Milliseconds delay, std::function<void()> task) = 0;
};

}  // namespace zorvanelink::simservice
