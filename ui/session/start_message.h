// What the client says to begin and to end a connection, gathered from profile and settings.
// GUI thread.
#pragma once

#include <optional>
#include <string>

#include "ui/config/config.h"

namespace zorvanelink::ui {

// `query`: the gateway is asked for its types first. Empty when the type of login needs a
// certificate that is gone.
std::optional<std::string> BuildStartMessage(Profile const& profile, bool query,
                                             Config const& config);
std::string BuildStopMessage(Profile const& profile, bool query);

// "verbose" to "error"; "info" for a number outside the table.
std::string Int2LogString(int level);

}  // namespace zorvanelink::ui
