#include "tools/simservice/event_loop.h"

namespace zorvanelink::simservice {

void EventLoop::After(Milliseconds delay, std::function<void()> task) {
    {
        std::lock_guard lock(mutex_);
        tasks_.emplace(Now() + delay, std::move(task));
    }
    wake_.notify_one();
}

void EventLoop::Quit() {
    {
        std::lock_guard lock(mutex_);
        quit_ = true;
    }
    wake_.notify_one();
}

void EventLoop::Run() {
    std::unique_lock lock(mutex_);
    while (!quit_) {
        if (tasks_.empty()) {
            wake_.wait(lock);
            continue;
        }
        auto const first = tasks_.begin();
        if (first->first > Now()) {
            // A copy: the entry may be gone when the wait ends.
            auto const due = first->first;
            wake_.wait_until(lock, due);
            continue;
        }
        auto const task = std::move(first->second);
        tasks_.erase(first);
        lock.unlock();
        task();
        lock.lock();
    }
}

}  // namespace zorvanelink::simservice
