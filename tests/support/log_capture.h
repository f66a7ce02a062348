// The log lines of a scope.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "components/logger/logger.h"

namespace zorvanelink::test {

class LogCapture {
  public:
    LogCapture() {
        auto& log = components::logger::Log();
        log.setLogLevel(components::logger::LOG_LEVEL::debug);
        log.setSdkCallback([this](int, std::string const& line) {
            std::lock_guard lock(mutex_);
            lines_.push_back(line);
        });
    }
    ~LogCapture() { components::logger::Log().setSdkCallback(nullptr); }
    LogCapture(LogCapture const&) = delete;
    LogCapture& operator=(LogCapture const&) = delete;

    int Count(std::string const& text) const {
        std::lock_guard lock(mutex_);
        int count = 0;
        for (std::string const& line : lines_) {
            count += line.find(text) != std::string::npos ? 1 : 0;
        }
        return count;
    }
    bool Has(std::string const& text) const { return Count(text) > 0; }

  private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

}  // namespace zorvanelink::test
