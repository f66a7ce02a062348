// The client's end of the socket link: the front-end. See SocketIPC for life cycle and threads.
#pragma once

#include "components/ipc/peer_owner.h"
#include "components/ipc/socket_ipc.h"

namespace zorvanelink::components::ipc {

class SocketIPCClient : public SocketIPC {
  public:
    // Without a context the link makes its own, and a worker thread for it.
    // Before a byte is sent or read, `find_owner` tells whose process has taken the connection:
    // only root's or this user's is the service, since what we send is not secret to others.
    explicit SocketIPCClient(std::string const& name, boost::asio::io_context* context = nullptr,
                             PortPlace place = {}, FindOwner find_owner = FindPeerOwner);

    int Ping() override;
    // Says goodbye to the server and stops; nothing without a connection.
    void Quit();

  private:
    bool Init() override;
    void readPort();
    bool isService(DeadlineSocket& peer);
    void refuse(PeerOwner const& owner);

    std::string const client_name_;
    FindOwner const find_owner_;
};

}  // namespace zorvanelink::components::ipc
