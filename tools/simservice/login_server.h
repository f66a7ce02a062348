// A provider's login, on a port of this machine: a page with a yes and a no. A thread of its own.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace zorvanelink::simservice {

class LoginServer {
  public:
    // Called on the server's thread with the mark of the page and the user's answer.
    using Answered = std::function<void(std::string const& mark, bool yes)>;

    explicit LoginServer(Answered answered);
    ~LoginServer();
    LoginServer(LoginServer const&) = delete;
    LoginServer& operator=(LoginServer const&) = delete;

    // The address of a login; empty when there is no port.
    std::string Address(std::string const& mark) const;

  private:
    void run();
    void serve(int peer) const;

    Answered const answered_;
    int listener_ = -1;
    int port_ = 0;
    std::atomic<bool> ends_{false};
    std::thread thread_;
};

}  // namespace zorvanelink::simservice
