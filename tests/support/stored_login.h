// A connection whose password is stored, as most tests of a login want it.
#pragma once

#include "components/utils/sensitive_value.h"
#include "ui/config/profile.h"

namespace zorvanelink::test {

inline std::shared_ptr<ui::Profile> StoredLogin(std::string const& name) {
    auto profile = std::make_shared<ui::Profile>();
    profile->name = name;
    profile->server = "vpn.example.com";
    profile->userName = "alice";
    profile->authType = common::SupportedAuthType::kPwd;
    profile->password = components::utils::EncodeSensitiveValue("correct horse");
    profile->rememberPassword = true;
    return profile;
}

}  // namespace zorvanelink::test
