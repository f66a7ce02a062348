// One client a user: a lock that the running client holds for life, and a socket beside it over
// which a later start speaks to it. The kernel gives the lock back after any end, so that a crash
// leaves nothing to clean up. Nothing here logs: a later start has no log file of its own.
#pragma once

#include <QObject>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "components/utils/descriptor.h"

namespace zorvanelink::ui {

class SingleInstance {
  public:
    static constexpr std::size_t kMaxRequest = 4096;  // bytes, one request a connection
    static constexpr std::chrono::milliseconds kAnswerTime{1000};  // for a request to arrive whole

    enum class Place {
        kFirst,     // the lock is ours until the end
        kAnswered,  // another client has it and took the request
        kSilent,    // another client has it and does not answer
        kNoLock,    // nobody can tell: no lock can be made here
    };
    using Answer = std::function<std::string(std::string const& request)>;

    // The folder must be this user's own.
    explicit SingleInstance(std::string folder);
    ~SingleInstance();
    SingleInstance(SingleInstance const&) = delete;
    SingleInstance& operator=(SingleInstance const&) = delete;

    // Takes the lock and listens, or hands the request to the client that has it. That one may
    // still be starting, or ending: both are tried until the patience ends. Blocks.
    Place Enter(std::string const& request, std::chrono::milliseconds patience);

    // What the client in that folder answers; nothing when none does within the patience, or when
    // whoever listens there is another user. Blocks.
    static std::optional<std::string> Ask(std::string const& folder, std::string const& request,
                                          std::chrono::milliseconds patience);

    // From now on the first client answers, also what came before this call, as long as the owner
    // lives. An empty answer is none. GUI thread, with an event loop.
    void Serve(QObject& owner, Answer const& answer) const;

  private:
    bool listen();

    std::string folder_;
    components::utils::Descriptor lock_;
    components::utils::Descriptor socket_;
};

}  // namespace zorvanelink::ui
