#include "components/ipc/socket_ipc_client.h"

#include <fmt/format.h>

#include <boost/asio/ip/tcp.hpp>

#include "components/ipc/port_file.h"
#include "components/ipc/resolve.h"
#include "components/ipc/socket_core.h"

namespace zorvanelink::components::ipc {
namespace {

constexpr unsigned int kQuitTimeoutMs = 100;
constexpr long kHighestPort = 65534;

}  // namespace

SocketIPCClient::SocketIPCClient(std::string const& name, boost::asio::io_context* context,
                                 PortPlace place)
    : SocketIPC(Mode::kClient, context, std::move(place)), client_name_(name) {
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
    bool const connected = socket->connect(*endpoint);
    texts_->Append(LinkTexts::kInfo, connected ? "init ok in ipc\n" : "init failed in ipc\n");
    return connected && runOnWorker([this, self = shared_from_this(), socket] {
               SendHeartbeat();
               StartRead(socket);
           });
}

}  // namespace zorvanelink::components::ipc
