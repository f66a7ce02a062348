// The record of what the client really sent: one JSON object a line, written at once. Keys keep
// their order; secrets are masked. One thread.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "tools/simservice/scheduler.h"

namespace zorvanelink::simservice {

// The message on one line with its secrets as "****"; an empty secret stays empty. Empty for what
// is no JSON object.
std::string MaskedMessage(std::string const& json);

class Recorder {
  public:
    explicit Recorder(Scheduler const& scheduler);

    // Starts the file anew, readable by its owner only.
    bool Open(std::string const& path);
    // {"time": ms since start, "type": "start", "message": {...}}
    void Message(std::string const& json);
    // {"time": ..., "event": "connected"}
    void Event(std::string const& name);

  private:
    void write(std::string const& rest);

    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    Scheduler const& scheduler_;
    Scheduler::Clock::time_point start_;
    std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace zorvanelink::simservice
