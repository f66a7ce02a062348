#include "ui/session/signing_statuses.h"

#include "components/logger/logger.h"

namespace zorvanelink::ui {

using components::logger::Log;

void SigningStatuses::HandleSignRequest(Data const& data, Profile& profile) {
    if (profile.loginMode == kLoginModeGm) {
        HandleGmSignData(data, profile);
    } else {
        HandleSignData(data, profile);
    }
}

void SigningStatuses::HandleSignData(Data const& /*data*/, Profile const& profile) {
    Log().warning("Signing for profile [{}] is not there yet", profile.name);
}

void SigningStatuses::HandleGmSignData(Data const& /*data*/, Profile const& profile) {
    Log().warning("GM signing for profile [{}] is not there yet", profile.name);
}

}  // namespace zorvanelink::ui
