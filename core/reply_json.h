// Private to core: rows that every list of a reply begins with, and the one reader and the one
// writer of all replies.
#pragma once

#include <string>
#include <string_view>

#include "components/logger/logger.h"
#include "core/clmsg_reply_json.h"
#include "core/json_fields.h"
#include "core/message_log.h"

namespace zorvanelink::core::sslvpn {

template <class Record>
constexpr auto ProfileRow() {
    return json::Rows<Record>::template Required<&Record::profileName>("profileName");
}

// The fields of a record, in the order in which they are written and, where it is another one, in
// which they are read.
template <class Record>
inline constexpr std::array<json::Field<Record>, 0> kFields{};
template <class Record>
inline constexpr auto const& kReadFields = kFields<Record>;

template <class Record>
std::string Reply<Record>::Build(Record const& record) {
    std::string text = json::BuildMessage(json::Style::kIndented, kFields<Record>, record);
    auto& log = components::logger::Log();
    if (log.level() <= components::logger::LOG_LEVEL::verbose) {
        log.verbose("Encode json[{}]", core::MaskSecrets(text));
    }
    return text;
}

template <class Record>
bool Reply<Record>::Parse(CLMsgDocument const& message, Record* record) {
    return json::ReadMessage(message, kReadFields<Record>, *record);
}

// `type`, and `subtype` as a list of rows.
template <class Record>
constexpr auto TypeRow() {
    return json::Rows<Record>::Constant("type", "reply");
}

template <class Record>
constexpr auto TypeRows(std::string_view subtype) {
    return std::array{TypeRow<Record>(), json::Rows<Record>::Constant("subtype", subtype)};
}

// Profile, `type`, `subtype`.
template <class Record>
constexpr auto HeadRows(std::string_view subtype) {
    return json::Join(std::array{ProfileRow<Record>()}, TypeRows<Record>(subtype));
}

// The code and, for the reader of a log, its symbol.
template <class Record>
constexpr auto StatusRows() {
    using Row = json::Rows<Record>;
    return std::array{Row::template Required<&Record::statusCode>("statusCode"),
                      Row::Computed("statusCodeDes", [](json::Output& out, Record const& record) {
                          out.Text(common::g_IPCMessageMap.Name(record.statusCode));
                      })};
}

// The password policy behind `enableComplexity`, written when `when` says so.
template <class Record>
constexpr auto PolicyRows(typename json::Rows<Record>::When when = nullptr) {
    using Row = json::Rows<Record>;
    return std::array{
        Row::template Optional<&Record::minLength>("minLength", when),
        Row::template Optional<&Record::capitalLetters>("capitalLetters", when),
        Row::template Optional<&Record::smallLetters>("smallLetters", when),
        Row::template Optional<&Record::nonAlphanumericLetters>("nonAlphanumericLetters", when),
        Row::template Optional<&Record::numericCharacters>("numericCharacters", when),
        Row::template Optional<&Record::noIncludeUserName>("noIncludeUserName", when),
    };
}

template <class Record>
constexpr auto ComplexityRow() {
    return json::Rows<Record>::template Optional<&Record::enableComplexity>("enableComplexity");
}

}  // namespace zorvanelink::core::sslvpn
