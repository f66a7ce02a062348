// Settings for the client, so that a new user finds the users of the scenario as connections.
#pragma once

#include <string>

#include "tools/simservice/scenario.h"

namespace zorvanelink::simservice {

// The client's settings file: one connection a user, passwords as sensitive values.
std::string SettingsText(Scenario const& scenario);

// Writes `folder`/AppConfig.ini (0600; the folder 0700 when it is missing). False, with a sentence
// for the user, when there is such a file already and `force` is not given, or on failure.
bool WriteProfile(Scenario const& scenario, std::string const& folder, bool force,
                  std::string& error);

}  // namespace zorvanelink::simservice
