#include "common/message_catalogue.h"

namespace zorvanelink::common {
namespace {

enum class Handler { None, Critical, Error };

struct Row {
    MsgCode code;
    char const* symbol;
    CodeType type;
    Handler handler;
    char const* english;
    char const* chinese;
};

constexpr Row kRows[] = {
#define ZVL_MESSAGE(symbol, number, type, handler, english, chinese) \
    {MsgCode::symbol, #symbol, type, Handler::handler, english, chinese},
#include "common/messages.def"
#undef ZVL_MESSAGE
};

ShowHandler const* handlerOf(Handler handler) {
    switch (handler) {
        case Handler::Critical:
            return &ShowCriticalMsgBox;
        case Handler::Error:
            return &ShowErrorMsgBox;
        case Handler::None:
            break;
    }
    return nullptr;
}

}  // namespace

ShowHandler ShowCriticalMsgBox;
ShowHandler ShowErrorMsgBox;
IPCMessageMap g_IPCMessageMap;

IPCMessageMap::IPCMessageMap() {
    for (Row const& row : kRows) {
        auto const number = static_cast<std::int32_t>(row.code);
        messages_[number] = {row.code, row.type, row.chinese, row.english, handlerOf(row.handler)};
        names_[number] = row.symbol;
    }
}

IPCMessage IPCMessageMap::Get(MsgCode code) {
    std::lock_guard lock(mutex_);
    auto [row, added] = messages_.try_emplace(static_cast<std::int32_t>(code));
    if (added) {
        row->second.code = code;
    }
    return row->second;
}

std::string IPCMessageMap::Name(MsgCode code) const {
    std::lock_guard lock(mutex_);
    auto const name = names_.find(static_cast<std::int32_t>(code));
    return name == names_.end() ? std::string() : name->second;
}

std::map<std::int32_t, IPCMessage> IPCMessageMap::All() const {
    std::lock_guard lock(mutex_);
    return messages_;
}

}  // namespace zorvanelink::common
