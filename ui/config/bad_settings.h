// What stands in the place of the settings file and is none: it is put aside, never lost. GUI
// thread.
#pragma once

#include <string>
#include <string_view>

namespace zorvanelink::ui {

// The text of a settings file, however broken, without the values of its passwords and PINs.
std::string BlankSecrets(std::string_view text);

// Copies a file that does not parse to PATH.bad, or PATH.bad.1 and so on, 0600 and without its
// secrets; a copy that is there already counts. False when it cannot be read or copied.
bool KeepBadCopy(std::string const& path);

// Renames what is no regular file to the first such name that is free.
bool MoveAside(std::string const& path);

}  // namespace zorvanelink::ui
