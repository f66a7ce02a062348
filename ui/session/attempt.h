// The one guard of what goes on after a nested event loop: taken before it, asked behind it.
// GUI thread.
#pragma once

#include "app/environment/globals.h"
#include "ui/session/connection_state.h"

namespace zorvanelink::ui {

class Attempt {
  public:
    explicit Attempt(ConnectionState const& state)
        : state_(&state), attempt_(state.attempt), starts_(state.starts) {}

    // Neither a start nor ONLINE nor OFFLINE has come since, and the program goes on.
    bool Still() const { return !g_quit && attempt_ == state_->attempt; }
    // No start has come since, and no link has gone: what an attempt leads to outlives its OFFLINE.
    bool NotBegunAnew() const { return !g_quit && NoStartSince(); }
    bool NoStartSince() const { return starts_ == state_->starts; }

  private:
    ConnectionState const* state_;
    std::uint64_t attempt_;
    std::uint64_t starts_;
};

}  // namespace zorvanelink::ui
