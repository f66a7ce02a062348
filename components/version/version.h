// The program's version, as the build knows it.
#pragma once

#include <string>

namespace zorvanelink::components::version {

// "1.0.0"
std::string GetVersion();
// Commit the program was built from, abbreviated; "unknown" outside a repository.
std::string GetBuildId();

}  // namespace zorvanelink::components::version
