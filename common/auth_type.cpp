#include "common/auth_type.h"

#include <algorithm>

namespace zorvanelink::common {

std::string_view AuthTypeToString(SupportedAuthType type) {
    auto const index = static_cast<std::size_t>(type);
    return index < kSupportedAuthTypeString.size() ? kSupportedAuthTypeString[index]
                                                   : kSupportedAuthTypeString[0];
}

SupportedAuthType StringToAuthType(std::string_view text) {
    auto const* const found = std::ranges::find(kSupportedAuthTypeString, text);
    if (found == kSupportedAuthTypeString.end()) {
        return SupportedAuthType::kUnknown;
    }
    return static_cast<SupportedAuthType>(found - kSupportedAuthTypeString.begin());
}

}  // namespace zorvanelink::common
