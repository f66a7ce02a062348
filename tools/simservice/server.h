// The simulated service: owns the link, and brings together session, faults, record and orders on
// one loop.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "components/ipc/socket_ipc_server.h"
#include "tools/simservice/event_loop.h"
#include "tools/simservice/faults.h"
#include "tools/simservice/login_server.h"
#include "tools/simservice/options.h"
#include "tools/simservice/outbox.h"
#include "tools/simservice/recorder.h"
#include "tools/simservice/session.h"
#include "tools/simservice/terminal.h"

namespace zorvanelink::simservice {

class Server {
  public:
    // All of them must outlive the server.
    Server(Options const& options, Scenario const& scenario, EventLoop& loop, Terminal& terminal,
           Recorder& recorder);
    ~Server();
    Server(Server const&) = delete;
    Server& operator=(Server const&) = delete;

    // Before the loop runs. False, with a sentence for the user, when no port can be had.
    bool Start(std::string& error);
    // After the loop has run. Removes the port file if it is still ours.
    void Stop();

    // On the loop. The answer to a control line, with its line ends.
    std::string Order(std::string const& line);
    void OnSignal(int signal);
    std::uint16_t Port() const { return port_; }

  private:
    enum class Leaving { kQuit, kLost, kVanished };

    bool openLink(std::string& error);
    void closeLink();
    void registerHandlers();
    void restart(int delay_ms, int port);
    void linkUp(std::uint64_t generation);
    void linkDown(std::uint64_t generation, Leaving leaving);
    void received(std::uint64_t generation, std::string const& json);
    void heartbeat();
    std::string perform(Action const& action);
    std::string performInSession(Action const& action);
    // Tells the list of the scenario, or the one that the line holds.
    std::string tellList(Action const& action, char const* key,
                         void (Session::*tell)(Scenario const&));
    std::string loginAt(std::function<void(bool yes)> answered);
    std::string state() const;
    void drainTexts();

    Options const& options_;
    Scenario const& scenario_;
    EventLoop& loop_;
    Terminal& terminal_;
    Recorder& recorder_;
    std::shared_ptr<components::ipc::SocketIPCServer> link_;
    // Tells the present link from those before it; what an old one still reports is dropped.
    std::uint64_t generation_ = 0;
    std::uint16_t port_;
    bool linked_ = false;
    std::shared_ptr<std::atomic<Leaving>> leaving_;
    Outbox outbox_;
    Session session_;
    Faults faults_;
    int login_ = 0;  // of a third party's, counted
    std::function<void(bool yes)> login_answered_;
    std::unique_ptr<LoginServer> login_server_;
};

}  // namespace zorvanelink::simservice
