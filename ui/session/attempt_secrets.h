// The secrets of the present attempt, as sensitive values: they outlive what the profile may not
// keep, so that a user whose login is refused corrects only what was wrong. GUI thread.
#pragma once

#include <optional>
#include <string>

#include "ui/config/profile.h"

namespace zorvanelink::ui {

class AttemptSecrets {
  public:
    enum class Secret { kPassword, kPin };

    // The start message has been built: takes the profile's secrets over and clears there what the
    // user does not want remembered. With `query` only the password: the login is still to come.
    // What the profile no longer has is kept from the start before.
    void Begin(Profile& profile, bool query);
    // Gives one back to the profile, where it was cleared: it is to be used once more.
    void Keep(Secret secret, Profile& profile) const;
    // The gateway has refused it: it is to be typed anew, remembered or not.
    void Refuse(Secret secret) { refused_ = secret; }
    std::optional<Secret> Refused() const { return refused_; }
    // The login has succeeded or the attempt is over.
    void Forget() { *this = {}; }
    // The attempt goes no further: what is not to be remembered leaves the profile, too.
    void Forget(Profile& profile);

  private:
    std::string password_;
    std::string systemPin_;
    std::string gmPin_;
    std::optional<Secret> refused_;
};

}  // namespace zorvanelink::ui
