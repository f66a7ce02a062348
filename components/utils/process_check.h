// Whether another process of a name runs, by the process table's text: needs no clean-up after a
// crash, as a lock file would.
#pragma once

#include <string>
#include <string_view>

namespace zorvanelink::components::utils {

// The text behind the last "/" or "\".
std::string GetFileName(std::string_view path);

// Looks at the command lines that end in the name, then at those where a space follows it; lines
// of "sudo -u" do not count. With skipSelf any line but the own counts, without it the second one.
// False for a name outside [A-Za-z0-9._-]+ and on a machine without ps. Blocks for two commands.
bool CheckRunningUIProcessByName(std::string const& name, bool skipSelf);

}  // namespace zorvanelink::components::utils
