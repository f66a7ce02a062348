// The server's end of the socket link: the service. One client at a time; a second one is closed
// at once. See SocketIPC for life cycle and threads.
#pragma once

#include "components/ipc/socket_ipc.h"

namespace zorvanelink::components::ipc {

class SocketIPCServer : public SocketIPC {
  public:
    // Without a context the link makes its own, and a worker thread for it.
    explicit SocketIPCServer(boost::asio::io_context* context = nullptr, PortPlace place = {});
    ~SocketIPCServer() override;

    // Frees the place for the next client. Happens by itself at the client's goodbye; the owner
    // calls it, from any thread, when the client vanished without one (the error handler).
    void DisconnectClient();

  private:
    struct Role;

    bool Init() override;
    void closeRole() override;
    bool Bind();
    bool bindTo(std::uint16_t port);
    void DoAccept();
    void retryAccept();
    void takeClient(std::shared_ptr<DeadlineSocket> const& socket);
    void disconnectNow(std::shared_ptr<DeadlineSocket> const& socket);

    std::unique_ptr<Role> role_;
};

}  // namespace zorvanelink::components::ipc
