// Private to core: rows that every list of a reply begins with, and the shared last step of its
// writers.
#pragma once

#include <string>
#include <string_view>

#include "components/logger/logger.h"
#include "core/json_fields.h"
#include "core/reply_records.h"

namespace zorvanelink::core::sslvpn {

template <class Record>
constexpr auto ProfileRow() {
    return json::Rows<Record>::template Required<&Record::profileName>("profileName");
}

// For records of the service only: none of them holds a secret of the user.
template <class Record, std::size_t N>
std::string BuildReply(std::array<json::Field<Record>, N> const& fields, Record const& record) {
    std::string text = json::BuildMessage(json::Style::kIndented, fields, record);
    components::logger::Log().verbose("Encode json[{}]", text);
    return text;
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
