#include "ui/session/attempt_secrets.h"

#include "components/logger/logger.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;

void take(std::string const& from, std::string& to) {
    if (!from.empty()) {
        to = from;
    }
}

void forgetUnremembered(Profile& profile, bool query) {
    if (!profile.rememberPassword) {
        if (!query) {
            Log().debug("Clear password when not remember");
        }
        profile.password.clear();
    }
    if (query) {
        return;
    }
    if (!profile.rememberTlsPin) {
        Log().debug("Clear tls pincode when not remember");
        profile.fileCert.pin.clear();
        profile.systemCert.pin.clear();
    }
    if (!profile.rememberGmPin) {
        Log().debug("Clear gmssl pincode when not remember");
        profile.gmCert.pin.clear();
    }
}

}  // namespace

void AttemptSecrets::Begin(Profile& profile, bool query) {
    take(profile.password, password_);
    take(profile.systemCert.pin, systemPin_);
    take(profile.gmCert.pin, gmPin_);
    refused_.reset();
    forgetUnremembered(profile, query);
}

void AttemptSecrets::Keep(Secret secret, Profile& profile) const {
    auto const give = [](std::string const& kept, std::string& stored) {
        if (stored.empty()) {
            stored = kept;
        }
    };
    if (secret == Secret::kPassword) {
        give(password_, profile.password);
    } else {
        give(systemPin_, profile.systemCert.pin);
        give(gmPin_, profile.gmCert.pin);
    }
}

void AttemptSecrets::Forget(Profile& profile) {
    forgetUnremembered(profile, false);
    Forget();
}

}  // namespace zorvanelink::ui
