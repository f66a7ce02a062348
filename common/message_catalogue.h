// The catalogue of codes: what every number on the link means, its symbol and its two texts.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

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

// Views of texts that last as long as the program.
struct IPCMessage {
    MsgCode code{};
    std::string_view symbol{};  // such as "ONLINE"
    CodeType type = 0;
    Show show = Show::kNone;
    std::string_view english{};  // UTF-8
    std::string_view chinese{};
};

// Made by the compiler, so that it costs nothing at start. Any thread.
class IPCMessageMap {
  public:
    // The row of the code; an empty one for an unknown code.
    IPCMessage Get(MsgCode code) const;
    // The symbol; empty for an unknown code.
    std::string_view Name(MsgCode code) const { return Get(code).symbol; }
    // Every row, by code; for tests and tools.
    std::span<IPCMessage const> All() const;
};

inline constexpr IPCMessageMap g_IPCMessageMap;

}  // namespace zorvanelink::common
