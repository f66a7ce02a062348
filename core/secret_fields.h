// Private to core: which keys are flagged as secret, by those who describe the records.
#pragma once

#include <string_view>
#include <vector>

#include "core/json_fields.h"

namespace zorvanelink::core {

namespace json {

template <class Record>
void AddSecrets(std::span<Field<Record> const> fields, std::vector<std::string_view>& keys) {
    for (Field<Record> const& field : fields) {
        if (field.secret) {
            keys.push_back(field.key);
        }
    }
}

}  // namespace json

namespace sslvpn {

void AddStartSecrets(std::vector<std::string_view>& keys);
void AddSetSecrets(std::vector<std::string_view>& keys);
void AddReplySecrets(std::vector<std::string_view>& keys);

}  // namespace sslvpn
}  // namespace zorvanelink::core
