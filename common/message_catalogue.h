// The catalogue of codes: what every number on the link means, its symbol and its two texts.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>

namespace zorvanelink::common {

enum class MsgCode : std::int32_t {
#define ZVL_MESSAGE(symbol, number, type, handler, english, chinese) symbol = number,
#include "common/messages.def"
#undef ZVL_MESSAGE
};

// The service's class of a code, 0 to 8; handed on to the handlers below and not read here.
using CodeType = std::int32_t;

// Shows a received status to the user as it stands. Set once by the GUI at start-up; empty in
// the service.
using ShowHandler = std::function<void(CodeType, std::string)>;
extern ShowHandler ShowCriticalMsgBox;
extern ShowHandler ShowErrorMsgBox;

struct IPCMessage {
    MsgCode code{};
    CodeType type = 0;
    std::string chinese;  // UTF-8
    std::string english;
    ShowHandler const* show = nullptr;  // null, or one of the two handlers above
};

// Any thread: lookups and the insertion of an empty row are under a lock.
class IPCMessageMap {
  public:
    IPCMessageMap();

    // The row of the code. An unknown code is added as an empty row and answered as such.
    IPCMessage Get(MsgCode code);
    // The symbol, such as "ONLINE"; empty for an unknown code.
    std::string Name(MsgCode code) const;
    // Every row, by code; for tests and tools.
    std::map<std::int32_t, IPCMessage> All() const;

  private:
    mutable std::mutex mutex_;
    std::map<std::int32_t, IPCMessage> messages_;
    std::map<std::int32_t, std::string> names_;
};

extern IPCMessageMap g_IPCMessageMap;

}  // namespace zorvanelink::common
