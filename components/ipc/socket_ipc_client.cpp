#include "components/ipc/socket_ipc_client.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <boost/asio/ip/tcp.hpp>
#include <thread>

#include "components/ipc/port_file.h"
#include "components/ipc/resolve.h"
#include "components/ipc/socket_core.h"
#include "components/logger/logger.h"

namespace zorvanelink::components::ipc {
namespace {

using components::logger::Log;

constexpr unsigned int kQuitTimeoutMs = 100;
constexpr auto kLookPause = std::chrono::milliseconds(20);
constexpr auto kLookLimit = std::chrono::seconds(1);
constexpr auto kRefusalPeriod = std::chrono::minutes(1);

// Each try makes a link of its own: the period is the program's.
bool refusalIsDue() {
    using Clock = std::chrono::steady_clock;
    static std::atomic<Clock::time_point> due{Clock::time_point::min()};
    auto const now = Clock::now();
    auto seen = due.load();
    return now >= seen && due.compare_exchange_strong(seen, now + kRefusalPeriod);
}

}  // namespace

SocketIPCClient::SocketIPCClient(std::string const& name, boost::asio::io_context* context,
                                 PortPlace place, FindOwner find_owner)
    : SocketIPC(Mode::kClient, context, std::move(place)),
      client_name_(name),
      find_owner_(std::move(find_owner)) {
}

int SocketIPCClient::Ping() {
    return -1;
}

void SocketIPCClient::Quit() {
    if (currentSocket()) {
        SendTimeout(kIPCQuitMsg, kQuitTimeoutMs);
        Stop();
    }
}

void SocketIPCClient::readPort() {
    auto const number = ReadPortFile(place_.file);
    if (!number) {
        port_ = place_.port;
        struct stat info {};
        if (lstat(place_.file.c_str(), &info) == 0) {
            texts_->Append(LinkTexts::kError,
                           fmt::format("Ignored {}, which others may have written\n", place_.file));
        }
    } else if (*number >= 1 && *number <= kHighestPort) {
        port_ = static_cast<std::uint16_t>(*number);
    }
}

bool SocketIPCClient::Init() {
    std::shared_ptr<DeadlineSocket> socket;
    try {
        socket = std::make_shared<DeadlineSocket>(core_->context, texts_);
    } catch (std::exception const& failure) {
        texts_->Set(LinkTexts::kError, failure.what());
    }
    if (!socket || !replaceSocket(socket)) {
        return false;
    }
    readPort();
    auto const endpoint = ResolveLocal(core_->context, port_);
    if (!endpoint) {
        texts_->Set(LinkTexts::kError, fmt::format("Failed to resolve {}:{}", kHost, port_.load()));
        return false;
    }
    bool const connected = socket->connect(*endpoint) && isService(*socket);
    texts_->Append(LinkTexts::kInfo, connected ? "init ok in ipc\n" : "init failed in ipc\n");
    if (!connected) {
        dropSocket(socket);
        return false;
    }
    return runOnWorker([this, self = shared_from_this(), socket] {
        SendHeartbeat();
        StartRead(socket);
    });
}

// The table shows no owner before the peer has accepted.
bool SocketIPCClient::isService(DeadlineSocket& peer) {
    auto const limit = Clock::now() + kLookLimit;
    for (;;) {
        if (isStopping()) {
            return false;
        }
        if (peer.HasEnded()) {
            readFailed(kEndOfFile, 0);
            return false;
        }
        PeerOwner const owner = find_owner_(peer.Ends());
        if (owner.uid && (*owner.uid == 0 || *owner.uid == geteuid())) {
            return true;
        }
        if (!owner.readable || owner.uid || Clock::now() > limit) {
            refuse(owner);
            return false;
        }
        std::this_thread::sleep_for(kLookPause);
    }
}

void SocketIPCClient::refuse(PeerOwner const& owner) {
    std::string reason = "nobody has taken the connection";
    if (!owner.readable) {
        reason = "the table of connections cannot be read";
    } else if (owner.uid) {
        reason = fmt::format("it belongs to uid {}", *owner.uid);
    }
    reason = fmt::format("Who answers on port {} is not the service: {}", port_.load(), reason);
    texts_->Append(LinkTexts::kError, reason);
    if (refusalIsDue()) {
        Log().error("{}", reason);
    }
}

}  // namespace zorvanelink::components::ipc
