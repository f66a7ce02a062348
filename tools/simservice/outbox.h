// Everything that leaves for the client passes here: frames are built, and the faults of the wire
// (junk, pieces, slowness, silence) are done to them. One thread.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include "tools/simservice/scheduler.h"

namespace zorvanelink::simservice {

class Outbox {
  public:
    using Write = std::function<void(std::string_view bytes)>;

    Outbox(Scheduler& scheduler, Write write);

    void SendMessage(std::string_view json);
    // Not while frames are waiting: they are a sign of life themselves.
    void SendHeartbeat();
    // Forgets what waits; for a connection that has ended.
    void Clear();

    // While silent, frames are dropped, not kept.
    void SetSilent(bool silent) { silent_ = silent; }
    // While held, frames are kept, and leave as one piece at the end.
    void SetHold(bool hold);
    // 0 switches each of them off.
    void SetJunk(int bytes) { junk_ = bytes; }
    void SetSplit(int bytes) { split_ = bytes; }
    void SetSlow(int milliseconds) { slow_ = milliseconds; }

  private:
    void push(std::int32_t type, std::string_view payload);
    void pump();
    void writePiece();

    Scheduler& scheduler_;
    Write write_;
    std::deque<std::string> waiting_;
    std::size_t position_ = 0;  // written bytes of the first waiting frame
    bool piece_pending_ = false;
    // Outlived by no task: a task holds it weakly and does nothing once it was replaced.
    std::shared_ptr<int> connection_ = std::make_shared<int>();
    bool silent_ = false;
    bool hold_ = false;
    int junk_ = 0;
    int split_ = 0;
    int slow_ = 0;
};

}  // namespace zorvanelink::simservice
