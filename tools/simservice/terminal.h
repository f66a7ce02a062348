// What people see: one short line an event, with the time of day. Any thread.
#pragma once

#include <mutex>
#include <string>
#include <string_view>

namespace zorvanelink::simservice {

class Terminal {
  public:
    explicit Terminal(bool quiet) : quiet_(quiet) {}

    // Not when quiet. Control characters of outside text come out as "?".
    void Say(std::string_view line);
    // Always, as it stands: the answers to control lines.
    void Print(std::string_view text);

  private:
    std::mutex mutex_;
    bool const quiet_;
};

}  // namespace zorvanelink::simservice
