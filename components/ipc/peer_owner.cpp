#include "components/ipc/peer_owner.h"

#include <arpa/inet.h>
#include <fmt/format.h>

#include <fstream>
#include <sstream>
#include <string>

namespace zorvanelink::components::ipc {
namespace {

// Addresses stand in the tables as 32-bit words of the host, whatever the host's byte order.
std::string endOf(std::uint16_t port) {
    return fmt::format("{:08X}:{:04X}", htonl(INADDR_LOOPBACK), port);
}

std::string mappedEndOf(std::uint16_t port) {
    return fmt::format("{:016X}{:08X}{}", 0, htonl(0xFFFF), endOf(port));
}

// Between "state" and the owner: queues, timer, retransmissions.
std::optional<uid_t> ownerOf(std::string_view row_behind_state) {
    std::istringstream row{std::string(row_behind_state.substr(0, row_behind_state.find('\n')))};
    std::string queues, timer, retransmissions, timeout;
    uid_t uid = 0;
    std::uint64_t inode = 0;
    if (row >> queues >> timer >> retransmissions >> uid >> timeout >> inode && inode != 0) {
        return uid;
    }
    return std::nullopt;
}

std::optional<std::string> readTable(char const* path) {
    std::ifstream const file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return file && text ? std::optional(text.str()) : std::nullopt;
}

}  // namespace

std::optional<uid_t> PeerOwnerIn(std::string_view table, LocalConnection connection) {
    constexpr char kEstablished[] = "01";
    for (auto const end : {endOf, mappedEndOf}) {
        // The number of the row stands in front: nothing else ends in a colon and a blank.
        auto const row = fmt::format(": {} {} {} ", end(connection.peer_port),
                                     end(connection.own_port), kEstablished);
        if (auto const at = table.find(row); at != std::string_view::npos) {
            return ownerOf(table.substr(at + row.size()));
        }
    }
    return std::nullopt;
}

PeerOwner FindPeerOwner(LocalConnection connection) {
    auto const table = readTable("/proc/self/net/tcp");
    if (!table) {
        return {};
    }
    PeerOwner owner{true, PeerOwnerIn(*table, connection)};
    if (!owner.uid) {
        // Without IPv6 there is no second table.
        owner.uid = PeerOwnerIn(readTable("/proc/self/net/tcp6").value_or(""), connection);
    }
    return owner;
}

}  // namespace zorvanelink::components::ipc
