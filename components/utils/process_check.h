// Whether another process of a name runs, by the process table.
#pragma once

#include <string>
#include <string_view>

namespace zorvanelink::components::utils {

// The text behind the last "/" or "\".
std::string GetFileName(std::string_view path);

// Looks for processes of this user whose own name (that of the program, not a word of its command
// line) is this one; the caller's ancestors never count. With skipSelf any but the caller counts,
// without it the second one. False for a name outside [A-Za-z0-9._-]+ and without a process table.
// Logs nothing: the first of all log files is opened only after it.
bool CheckRunningUIProcessByName(std::string const& name, bool skipSelf);

}  // namespace zorvanelink::components::utils
