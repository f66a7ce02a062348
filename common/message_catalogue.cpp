#include "common/message_catalogue.h"

namespace zorvanelink::common {
namespace {

// As the table spells them.
constexpr Show None = Show::kNone;
constexpr Show Error = Show::kError;
constexpr Show Critical = Show::kCritical;

struct Row {
    MsgCode code;
    char const* symbol;
    CodeType type;
    Show show;
    char const* english;
    char const* chinese;
};

constexpr Row kRows[] = {
#define ZVL_MESSAGE(symbol, number, type, handler, english, chinese) \
    {MsgCode::symbol, #symbol, type, handler, english, chinese},
#include "common/messages.def"
#undef ZVL_MESSAGE
};

}  // namespace

IPCMessageMap const g_IPCMessageMap;

IPCMessageMap::IPCMessageMap() {
    for (Row const& row : kRows) {
        auto const number = static_cast<std::int32_t>(row.code);
        messages_[number] = {row.code, row.type, row.chinese, row.english, row.show};
        names_[number] = row.symbol;
    }
}

IPCMessage IPCMessageMap::Get(MsgCode code) const {
    auto const row = messages_.find(static_cast<std::int32_t>(code));
    return row == messages_.end() ? IPCMessage{code, 0, {}, {}} : row->second;
}

std::string IPCMessageMap::Name(MsgCode code) const {
    auto const name = names_.find(static_cast<std::int32_t>(code));
    return name == names_.end() ? std::string() : name->second;
}

}  // namespace zorvanelink::common
