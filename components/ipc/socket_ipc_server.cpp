#include "components/ipc/socket_ipc_server.h"

#include <fcntl.h>
#include <fmt/format.h>

#include <boost/asio/basic_socket_acceptor.hpp>

#include "components/ipc/port_file.h"
#include "components/ipc/resolve.h"
#include "components/ipc/socket_core.h"

namespace zorvanelink::components::ipc {
namespace {

constexpr int kMaxOffset = 1000;
constexpr int kBacklog = 1000;
constexpr auto kAcceptRetry = std::chrono::milliseconds(100);

}  // namespace

struct SocketIPCServer::Role {
    explicit Role(boost::asio::io_context& context) : acceptor(context), retry_timer(context) {}

    boost::asio::basic_socket_acceptor<Tcp, IoExecutor> acceptor;
    IoTimer retry_timer;
};

SocketIPCServer::SocketIPCServer(boost::asio::io_context* context, PortPlace place)
    : SocketIPC(Mode::kServer, context, std::move(place)) {
    if (core_) {
        role_ = std::make_unique<Role>(core_->context);
    }
    RegisterIPCMsgCallback(kIPCQuit, [this](char const*, int) { DisconnectClient(); });
}

SocketIPCServer::~SocketIPCServer() = default;

bool SocketIPCServer::Init() {
    texts_->Append(LinkTexts::kInfo, "start init ipc server\n");
    if (!role_ || !Bind()) {
        return false;
    }
    texts_->Append(LinkTexts::kInfo, "bind ok in ipc server\n");
    boost::system::error_code error;
    role_->acceptor.listen(kBacklog, error);
    if (error) {
        texts_->Set(LinkTexts::kError, "Failed to listen for ipc server");
        return false;
    }
    return runOnWorker([this, self = shared_from_this()] { DoAccept(); });
}

bool SocketIPCServer::Bind() {
    int const first = port_;
    for (int offset = 0; offset <= kMaxOffset; ++offset) {
        if (first + offset > kHighestPort) {
            texts_->Set(LinkTexts::kError, "Failed to bind port for ipc server");
            return false;
        }
        auto const port = static_cast<std::uint16_t>(first + offset);
        if (bindTo(port)) {
            texts_->Append(LinkTexts::kDebug, fmt::format("IPC bind {}\n", port));
            port_ = port;
            if (!WritePortFile(place_.file, port)) {
                texts_->Append(LinkTexts::kError, "Failed to open port file in ipc server\n");
            }
            return true;
        }
    }
    texts_->Set(LinkTexts::kError, "Ipc server bind error exceed 1000");
    return false;
}

bool SocketIPCServer::bindTo(std::uint16_t port) {
    auto const endpoint = ResolveLocal(core_->context, port);
    if (!endpoint) {
        return false;
    }
    boost::system::error_code error;
    auto& acceptor = role_->acceptor;
    if (!acceptor.is_open()) {
        acceptor.open(endpoint->protocol(), error);
        ::fcntl(acceptor.native_handle(), F_SETFD, FD_CLOEXEC);
    }
    if (!error) {
        acceptor.set_option(Tcp::acceptor::reuse_address(true), error);
    }
    if (!error) {
        acceptor.bind(*endpoint, error);
    }
    if (error) {
        boost::system::error_code ignored;
        acceptor.close(ignored);
    }
    return !error;
}

void SocketIPCServer::DoAccept() {
    if (isStopping()) {
        return;
    }
    texts_->Append(LinkTexts::kInfo, "do accept in ipc server\n");
    role_->acceptor.async_accept(
        core_->context,
        [this, self = shared_from_this()](boost::system::error_code error, TcpStream stream) {
            if (!role_->acceptor.is_open()) {
                texts_->Append(LinkTexts::kError, "null acceptor in ipc server\n");
                return;
            }
            if (error) {
                retryAccept();
                return;
            }
            takeClient(std::make_shared<DeadlineSocket>(std::move(stream), texts_));
            DoAccept();
        });
}

// A failing accept (no descriptor left) would fail again at once.
void SocketIPCServer::retryAccept() {
    role_->retry_timer.expires_after(kAcceptRetry);
    role_->retry_timer.async_wait(
        [this, self = shared_from_this()](boost::system::error_code cancelled) {
            if (!cancelled && role_->acceptor.is_open()) {
                DoAccept();
            }
        });
}

void SocketIPCServer::takeClient(std::shared_ptr<DeadlineSocket> const& socket) {
    texts_->Append(LinkTexts::kDebug, "Accept one client in ipc server\n");
    if (currentSocket()) {
        texts_->Append(LinkTexts::kDebug, "Already has one client in ipc server\n");
        socket->close();
        return;
    }
    if (!replaceSocket(socket)) {
        socket->close();
        return;
    }
    noteSignOfLife();
    if (client_connected_handler_) {
        callHandler(client_connected_handler_);
    }
    StartRead(socket);
}

void SocketIPCServer::DisconnectClient() {
    if (!role_) {
        return;
    }
    // Weak: before Run nothing would ever take the task out of the context again.
    runOnWorker([this, weak = weak_from_this(), socket = currentSocket()] {
        if (auto const self = weak.lock()) {
            disconnectNow(socket);
        }
    });
}

// The client may have left, and another one come, since the call.
void SocketIPCServer::disconnectNow(std::shared_ptr<DeadlineSocket> const& socket) {
    if (currentSocket() != socket) {
        return;
    }
    if (dropSocket(socket)) {
        texts_->Append(LinkTexts::kDebug, "Will disconnect ipc client\n");
    }
    runClientDisconnectedHandlers();
    zeroReadCount();
}

void SocketIPCServer::closeRole() {
    if (!role_) {
        return;
    }
    role_->retry_timer.cancel();
    boost::system::error_code error;
    role_->acceptor.cancel(error);
    if (role_->acceptor.is_open() && error) {
        texts_->Append(LinkTexts::kError, fmt::format("cancel: {}\n", error.message()));
    }
    role_->acceptor.close(error);
    if (error) {
        texts_->Append(LinkTexts::kError, fmt::format("close: {}\n", error.message()));
    }
}

}  // namespace zorvanelink::components::ipc
