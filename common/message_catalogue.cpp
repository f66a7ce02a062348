#include "common/message_catalogue.h"

#include <algorithm>
#include <array>

namespace zorvanelink::common {
namespace {

// As the table spells them.
constexpr Show None = Show::kNone;
constexpr Show Error = Show::kError;
constexpr Show Critical = Show::kCritical;

constexpr auto kByCode = [] {
    auto rows = std::to_array<IPCMessage>({
#define ZVL_MESSAGE(symbol, number, type, handler, english, chinese) \
    {MsgCode::symbol, #symbol, type, handler, english, chinese},
#include "common/messages.def"
#undef ZVL_MESSAGE
    });
    std::ranges::sort(rows, {}, &IPCMessage::code);
    return rows;
}();

static_assert(std::ranges::adjacent_find(kByCode, {}, &IPCMessage::code) == kByCode.end(),
              "a code has one row");

}  // namespace

IPCMessage IPCMessageMap::Get(MsgCode code) const {
    auto const row = std::ranges::lower_bound(kByCode, code, {}, &IPCMessage::code);
    return row != kByCode.end() && row->code == code ? *row : IPCMessage{.code = code};
}

std::span<IPCMessage const> IPCMessageMap::All() const {
    return kByCode;
}

}  // namespace zorvanelink::common
