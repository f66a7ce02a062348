// The small file in which the server leaves its port for the client.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace zorvanelink::components::ipc {

// The number in the file, 0 when it holds none. Nothing when there is no file that can be trusted:
// a regular file, no link, owned by root or by this user, writable by nobody else. Never blocks.
std::optional<long> ReadPortFile(std::string const& path);

// Replaces the file in one step; everybody may read it. What stands in its place and is no regular
// file of ours is renamed first. False when that could not be done.
bool WritePortFile(std::string const& path, std::uint16_t port);

}  // namespace zorvanelink::components::ipc
