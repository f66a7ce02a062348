#include "tools/simservice/terminal.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace zorvanelink::simservice {

void Terminal::Say(std::string_view line) {
    if (quiet_) {
        return;
    }
    std::string text(line);
    std::replace_if(
        text.begin(), text.end(),
        [](char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f; }, '?');
    std::time_t const now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    Print(fmt::format("{:02}:{:02}:{:02}  {}\n", local.tm_hour, local.tm_min, local.tm_sec, text));
}

void Terminal::Print(std::string_view text) {
    std::lock_guard lock(mutex_);
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

}  // namespace zorvanelink::simservice
