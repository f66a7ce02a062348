// Whole files at once.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zorvanelink::components::utils {

inline constexpr std::size_t kMaxContentSize = std::size_t{64} * 1024 * 1024;  // bytes

// False, with content unchanged, unless the path is a readable regular file of at most
// kMaxContentSize bytes.
bool ReadContentFromFile(std::string const& path, std::string& content);

// Writes a temporary file beside the path, readable by its owner only (0600), syncs it and renames
// it. False leaves an old file as it was; opened tells whether there was a file to write to.
bool WritePrivateFile(std::string const& path, std::string_view content, bool* opened = nullptr);

}  // namespace zorvanelink::components::utils
