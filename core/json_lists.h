// Private to core: the lists of gateways and cluster members, which travel in replies and in the
// start message with keys of their own each.
#pragma once

#include <map>
#include <string>

#include "core/json_fields.h"
#include "core/reply_records.h"

namespace zorvanelink::core::sslvpn {

struct GatewayEntry {
    std::string name;
    std::string addr;
    std::string detectPort;
    std::string sslPort;
};

inline GatewayEntry ToEntry(std::pair<std::string const, Gateway> const& row) {
    return {row.first, row.second.addr, row.second.detectPort, row.second.sslPort};
}

inline std::pair<std::string, Gateway> ToRow(GatewayEntry&& entry) {
    return {std::move(entry.name),
            {std::move(entry.addr), std::move(entry.detectPort), std::move(entry.sslPort)}};
}

inline Server const& ToEntry(std::pair<std::string const, Server> const& row) {
    return row.second;
}

inline std::pair<std::string, Server> ToRow(Server&& entry) {
    std::string key = entry.addr;
    return {std::move(key), std::move(entry)};
}

// Codec: a map as an array of objects; the first of two with one key stays.
template <class Entry, auto const& kReadFields, auto const& kWriteFields = kReadFields>
struct EntryMap {
    template <class Mapped>
    static json::Outcome Read(json::Value const& value, std::map<std::string, Mapped>& out) {
        return json::ReadObjects(value, out, [](json::Value const& object, auto& read) {
            Entry entry;
            if (!json::ReadFields(object, kReadFields, entry)) {
                return json::Outcome{json::Outcome::kFailed};
            }
            read.insert(ToRow(std::move(entry)));
            return json::kStored;
        });
    }
    template <class Mapped>
    static void Write(json::Output& out, std::map<std::string, Mapped> const& value) {
        out.StartArray();
        for (auto const& row : value) {
            json::WriteObject(out, kWriteFields, ToEntry(row));
        }
        out.EndArray();
    }
};

inline constexpr std::array kGatewayFields{
    json::Rows<GatewayEntry>::Required<&GatewayEntry::name>("name"),
    json::Rows<GatewayEntry>::Required<&GatewayEntry::addr>("addr"),
    json::Rows<GatewayEntry>::Required<&GatewayEntry::detectPort>("detectPort"),
    json::Rows<GatewayEntry>::Required<&GatewayEntry::sslPort>("sslPort"),
};

// Texts of authentication types.
template <json::Need kNeed>
using AuthTypeTexts = json::KeyedValues<"authTypeStr", kNeed>;

}  // namespace zorvanelink::core::sslvpn
