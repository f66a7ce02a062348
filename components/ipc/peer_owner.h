// Who holds the other end of a connection over the loop-back address, as the kernel's own tables
// of connections tell.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace zorvanelink::components::ipc {

// One connection between two ports of 127.0.0.1.
struct LocalConnection {
    std::uint16_t own_port;
    std::uint16_t peer_port;
};

// The user of the peer's end in the text of /proc/self/net/tcp or tcp6. Nothing while the table
// shows no owner: there is none before the peer has accepted and after it has closed.
std::optional<uid_t> PeerOwnerIn(std::string_view table, LocalConnection connection);

struct PeerOwner {
    bool readable = false;     // whether there is a table to look into
    std::optional<uid_t> uid;  // nothing while there is no owner
};
using FindOwner = std::function<PeerOwner(LocalConnection)>;
PeerOwner FindPeerOwner(LocalConnection connection);

}  // namespace zorvanelink::components::ipc
