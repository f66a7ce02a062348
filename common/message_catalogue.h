// The catalogue of codes: what every number on the link means, its symbol and its two texts.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace zorvanelink::common {

enum class MsgCode : std::int32_t {
#define ZVL_MESSAGE(symbol, number, type, handler, english, chinese) symbol = number,
#include "common/messages.def"
#undef ZVL_MESSAGE
};

// The service's class of a code, 0 to 8.
using CodeType = std::int32_t;

// Whether a received code is shown to the user as it stands, and whether its session is over.
enum class Show { kNone, kError, kCritical };

struct IPCMessage {
    MsgCode code{};
    CodeType type = 0;
    std::string chinese;  // UTF-8
    std::string english;
    Show show = Show::kNone;
};

// Any thread: nothing changes after the constructor.
class IPCMessageMap {
  public:
    IPCMessageMap();

    // The row of the code; an empty one, which is not kept, for an unknown code.
    IPCMessage Get(MsgCode code) const;
    // The symbol, such as "ONLINE"; empty for an unknown code.
    std::string Name(MsgCode code) const;
    // Every row, by code; for tests and tools.
    std::map<std::int32_t, IPCMessage> const& All() const { return messages_; }

  private:
    std::map<std::int32_t, IPCMessage> messages_;
    std::map<std::int32_t, std::string> names_;
};

extern IPCMessageMap const g_IPCMessageMap;

}  // namespace zorvanelink::common
