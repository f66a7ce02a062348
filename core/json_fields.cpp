#include "core/json_fields.h"

#include <limits>

#include "components/logger/logger.h"
#include "core/clmsg.h"

namespace zorvanelink::core::json {
namespace {

using components::logger::Log;

constexpr int kNoValue = -1;

// The optional key that was noted last; most messages lack dozens of them, so the text is made
// once. Keys are literals.
struct Note {
    std::string_view key;
    int type = kNoValue;
};
thread_local Note t_note;

std::string noteText(std::string_view key, int type) {
    return type == kNoValue
               ? fmt::format("Failed to find key {} in clmsgjson parse", key)
               : fmt::format("Key [{}]'s value type[{}] is invalid in clmsgjson parse", key, type);
}

void note(std::string_view key, int type, Need need) {
    if (need != Need::kRequired) {
        t_note = {key, type};
        if (Log().level() <= components::logger::LOG_LEVEL::verbose) {
            Log().verbose("{}", noteText(key, type));
        }
        return;
    }
    CLMsgJsonParse::err_str_ = noteText(key, type);
    Log().error("{}", CLMsgJsonParse::err_str_);
}

}  // namespace

void NoteMissing(std::string_view key, Need need) {
    note(key, kNoValue, need);
}

void NoteWrongType(std::string_view key, int type, Need need) {
    note(key, type, need);
}

void NoteTooLong(std::size_t length, std::size_t most) {
    Log().warning("A text of {} bytes in a message counts as empty, {} are the most", length, most);
}

void PublishNotes() {
    if (!t_note.key.empty()) {
        CLMsgJsonParse::debug_str_ = noteText(t_note.key, t_note.type);
        t_note = {};
    }
}

Value const* FindKey(Value const& object, std::string_view key) {
    auto const name = rapidjson::StringRef(key.data(), key.size());
    auto const member = object.FindMember(Value(name));
    return member == object.MemberEnd() ? nullptr : &member->value;
}

Outcome Read(Value const& value, std::string& out) {
    if (!value.IsString()) {
        return WrongType(value);
    }
    std::string_view const text(value.GetString(), value.GetStringLength());
    if (IsUtf8(text)) {
        out = text;
    } else {
        out = RepairUtf8(text);
    }
    return kStored;
}

Outcome Read(Value const& value, bool& out) {
    if (!value.IsBool()) {
        return WrongType(value);
    }
    out = value.GetBool();
    return kStored;
}

Outcome Read(Value const& value, std::int32_t& out) {
    if (!value.IsInt()) {
        return WrongType(value);
    }
    out = value.GetInt();
    return kStored;
}

Outcome Read(Value const& value, std::uint64_t& out) {
    if (!value.IsUint64()) {
        return WrongType(value);
    }
    out = value.GetUint64();
    return kStored;
}

Outcome Read(Value const& value, float& out) {
    if (!value.IsDouble()) {
        return WrongType(value);
    }
    constexpr double kMost = std::numeric_limits<float>::max();
    double const number = value.GetDouble();
    if (number < -kMost || number > kMost) {
        return WrongType(value);
    }
    out = static_cast<float>(number);
    return kStored;
}

Outcome Read(Value const& value, std::vector<std::string>& out) {
    if (!value.IsArray()) {
        return WrongType(value);
    }
    std::vector<std::string> read;
    read.reserve(value.Size());
    for (Value const& element : value.GetArray()) {
        Outcome const outcome = Address::Read(element, read.emplace_back());
        if (!outcome.Stored()) {
            return outcome;
        }
    }
    out = std::move(read);
    return kStored;
}

Outcome Read(Value const& value, common::SupportedAuthType& out) {
    if (!value.IsString()) {
        return WrongType(value);
    }
    out = common::StringToAuthType({value.GetString(), value.GetStringLength()});
    return kStored;
}

void Write(Output& out, std::vector<std::string> const& value) {
    out.StartArray();
    for (std::string const& element : value) {
        out.Text(element);
    }
    out.EndArray();
}

}  // namespace zorvanelink::core::json
