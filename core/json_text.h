// Private to core: what has to be done to texts on their way in and out of JSON and the log.
#pragma once

#include <string>
#include <string_view>

namespace zorvanelink::core::json {

bool IsUtf8(std::string_view text);
// Each byte that belongs to no valid sequence becomes U+FFFD.
std::string RepairUtf8(std::string_view text);

// A copy with the values of sensitive keys replaced by "****". Works on texts that are no JSON,
// since those are the ones that are logged whole.
std::string MaskSecrets(std::string_view json);

}  // namespace zorvanelink::core::json
