// The page that leads to a provider's login, written where a service writes it. One thread.
#pragma once

#include <string>

namespace zorvanelink::simservice {

// Below the client's data folder, with its data and icon; `address` is where the user logs in. The
// page's path, or empty when it cannot be written.
std::string WriteLoginPage(std::string const& data_folder, std::string const& address);

}  // namespace zorvanelink::simservice
