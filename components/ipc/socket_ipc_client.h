// The client's end of the socket link: the front-end. See SocketIPC for life cycle and threads.
#pragma once

#include "components/ipc/socket_ipc.h"

namespace zorvanelink::components::ipc {

class SocketIPCClient : public SocketIPC {
  public:
    // Without a context the link makes its own, and a worker thread for it.
    explicit SocketIPCClient(std::string const& name, boost::asio::io_context* context = nullptr,
                             PortPlace place = {});

    int Ping() override;
    // Says goodbye to the server and stops; nothing without a connection.
    void Quit();

  private:
    bool Init() override;
    void readPort();

    std::string const client_name_;
};

}  // namespace zorvanelink::components::ipc
