#include "ui/config/profile.h"

#include "components/logger/logger.h"

namespace zorvanelink::ui {

bool ProfileBase::GetSupportedAuthType(std::vector<SupportedAuthType> const& list) {
    supportedAuthTypes.clear();
    for (SupportedAuthType const type : list) {
        auto const value = static_cast<std::int32_t>(type);
        if (common::IsListableAuthType(value)) {
            supportedAuthTypes.push_back(type);
        } else {
            components::logger::Log().warning(
                "Recv invalid auth type [{}] in select auth type status for profile[{}]", value,
                name);
        }
    }
    return !supportedAuthTypes.empty();
}

SupportedAuthType ConvertOldAuthType(int oldType) {
    switch (oldType) {
        case 1:
            return SupportedAuthType::kPwd;
        case 2:
            return SupportedAuthType::kPwdWithCert;
        case 3:
            return SupportedAuthType::kOnlyUkey;
        default:
            return SupportedAuthType::kNone;
    }
}

}  // namespace zorvanelink::ui
