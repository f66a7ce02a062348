#include "core/clmsg.h"

#include <algorithm>

#include "components/logger/logger.h"
#include "core/clmsg_reply_json.h"
#include "core/json_fields.h"

namespace zorvanelink::core {
namespace {

using components::logger::Log;
using json::Need;

template <class Enum, std::size_t N>
std::string textOf(std::array<std::string_view, N> const& table, Enum value) {
    auto const index = static_cast<std::size_t>(value);
    return std::string(index < N ? table[index] : "max");
}

template <class Enum, std::size_t N>
Enum valueOf(std::array<std::string_view, N> const& table, std::string_view text) {
    return static_cast<Enum>(std::ranges::find(table, text) - table.begin());
}

// A key of the envelope. Without it `out` stays as it is.
enum class Found { kYes, kNo, kWrongType };

template <class T>
Found readKey(json::Value const& object, std::string_view key, Need need, T* out) {
    json::Value const* const value = json::FindKey(object, key);
    if (value == nullptr) {
        json::NoteMissing(key, need);
        return Found::kNo;
    }
    json::Outcome const outcome = json::Read(*value, *out);
    if (outcome.Stored()) {
        return Found::kYes;
    }
    json::NoteWrongType(key, outcome.type, need);
    return Found::kWrongType;
}

// The steps that both ends begin with.
bool readType(std::string const& text, CLMsgDocument& message, CLMsg::Type* type) {
    std::string name;
    if (!message.Parse(text) ||
        readKey(message.Get()->root, "type", Need::kRequired, &name) != Found::kYes) {
        return false;
    }
    *type = CLMsg::StringToType(name);
    return *type != CLMsg::Type::kUnknown;
}

bool readSubTypeAndStatus(json::Value const& object, CLMsg::SubType* subtype,
                          common::MsgCode* status) {
    std::string name;
    if (readKey(object, "subtype", Need::kOptional, &name) == Found::kWrongType) {
        return false;
    }
    *subtype = CLMsg::StringToSubType(name);
    switch (readKey(object, "statusCode", Need::kOptional, status)) {
        case Found::kNo:
            *status = common::MsgCode::UNSPECIFIED;
            return true;
        case Found::kYes:
            return true;
        case Found::kWrongType:
            break;
    }
    return false;
}

}  // namespace

thread_local std::string json_str_;
thread_local std::string CLMsgJsonParse::err_str_;
thread_local std::string CLMsgJsonParse::debug_str_;

std::string CLMsg::TypeToString(Type type) {
    return textOf(kTypeString, type);
}

std::string CLMsg::SubTypeToString(SubType subtype) {
    return textOf(kSubTypeString, subtype);
}

CLMsg::Type CLMsg::StringToType(std::string const& text) {
    return valueOf<Type>(kTypeString, text);
}

CLMsg::SubType CLMsg::StringToSubType(std::string const& text) {
    return valueOf<SubType>(kSubTypeString, text);
}

bool CLMsgJsonParse::Parse(std::string const& json, CLMsg::Type* type, CLMsg::SubType* subtype,
                           common::MsgCode* status, CLMsgDocument* message) {
    CLMsgDocument own;
    CLMsgDocument& parsed = message != nullptr ? *message : own;
    if (!readType(json, parsed, type)) {
        return false;
    }
    bool const understood = readSubTypeAndStatus(parsed.Get()->root, subtype, status);
    json::PublishNotes();
    return understood;
}

bool CLMsgJsonParse::Parse(std::string const& json, CLMsg::Type* type, CLMsg::ClientType* client,
                           CLMsgDocument* message) {
    CLMsgDocument own;
    CLMsgDocument& parsed = message != nullptr ? *message : own;
    if (!readType(json, parsed, type)) {
        return false;
    }
    std::string level;
    readKey(parsed.Get()->root, "logLevel", Need::kOptional, &level);
    json::PublishNotes();
    if (!level.empty()) {
        Log().setLogLevel(level);
    }
    if (*type != CLMsg::Type::kStart && *type != CLMsg::Type::kUpdate) {
        return true;
    }
    std::string name;
    if (readKey(parsed.Get()->root, "clientType", Need::kRequired, &name) != Found::kYes) {
        return false;
    }
    *client = GetClientType(name);
    return true;
}

CLMsg::ClientType CLMsgJsonParse::GetClientType(std::string const& text) {
    static constexpr std::array<std::string_view, 2> kClientTypeString{"zlvpn", "l2tp"};
    return valueOf<CLMsg::ClientType>(kClientTypeString, text);
}

std::string CLMsgJsonParse::TextOf(CLMsgDocument const& message, std::string_view key) {
    std::string text;
    if (message.Get() != nullptr) {
        readKey(message.Get()->root, key, Need::kOptional, &text);
    }
    return text;
}

std::string CLMsgJsonParse::BuildStopReply() {
    return "{\"status\":\"stop\"}";
}

std::string CLMsgJsonParse::BuildVnicStateReply(bool state) {
    return sslvpn::CLMsgReplyJson::Build(sslvpn::CLMsgVINCState{state});
}

}  // namespace zorvanelink::core
