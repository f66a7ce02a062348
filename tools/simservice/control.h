// Where orders come from besides the link: lines on standard input and on a unix socket, and
// signals. A thread of its own collects them; they are carried out on the loop.
#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include "tools/simservice/event_loop.h"

namespace zorvanelink::simservice {

// SIGINT, SIGTERM, SIGHUP and SIGUSR1 are held back for ControlChannel. Before any thread starts.
void HoldSignals();

class ControlChannel {
  public:
    // Both run on the loop.
    struct Hooks {
        std::function<std::string(std::string const& line)> order;  // the answer, with line ends
        std::function<void(int signal)> signal;
        std::function<void(std::string_view text)> print;  // answers to standard input
    };

    ControlChannel(EventLoop& loop, Hooks hooks);
    // Ends the thread and removes the socket.
    ~ControlChannel();
    ControlChannel(ControlChannel const&) = delete;
    ControlChannel& operator=(ControlChannel const&) = delete;

    // The socket is its owner's only; an empty path is none. False, with a sentence for the user,
    // when it cannot be made.
    bool Start(std::string const& socket_path, std::string& error);

  private:
    class Descriptor {
      public:
        explicit Descriptor(int number = -1) : number_(number) {}
        ~Descriptor();
        Descriptor(Descriptor const&) = delete;
        Descriptor& operator=(Descriptor const&) = delete;
        int Get() const { return number_; }

      private:
        int const number_;
    };
    struct Peer {
        int input;
        std::shared_ptr<Descriptor> socket;  // null for standard input
        std::string unread;
    };

    bool listenOn(std::string const& path);
    void run();
    bool serve(Peer& peer);
    void order(std::shared_ptr<Descriptor> const& socket, std::string line);
    void takeClient();
    void takeSignal();

    EventLoop& loop_;
    Hooks const hooks_;
    std::unique_ptr<Descriptor> wake_;
    std::unique_ptr<Descriptor> signals_;
    std::unique_ptr<Descriptor> listener_;
    std::string socket_path_;
    std::list<Peer> peers_;
    std::thread thread_;
};

}  // namespace zorvanelink::simservice
