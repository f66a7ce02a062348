// Takes frames out of a stream of bytes that a peer chooses freely.
//
// Bytes are read straight into the parser's buffer (Prepare, then Commit); Parse then makes one
// pass over what has arrived and shows each whole frame where it lies. Everything else is junk and
// skipped. A header that declares less than nothing or more than kMaxLength is none, and one whose
// payload is still to come is waited for only if what is there can be the beginning of a frame: a
// message begins as JSON does, heartbeat, goodbye and acknowledgement have no payload, other types
// end at kMaxUnknownLength. The buffer holds at most what has arrived, twice.
// One thread at a time. Prepare throws std::bad_alloc when memory runs out.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

#include "components/ipc/ipc.h"

namespace zorvanelink::components::ipc {

class FrameParser {
  public:
    static constexpr std::int32_t kMaxLength = 16 << 20;         // bytes of payload
    static constexpr std::int32_t kMaxUnknownLength = 64 << 10;  // bytes, while incomplete

    // Room for `size` more bytes, valid until the next call of Prepare or Parse.
    char* Prepare(std::size_t size);
    // Takes `size` bytes of the prepared room as arrived.
    void Commit(std::size_t size);

    // Calls on_frame(IPCMsgType, char const* payload, int length) -> bool for each frame; false
    // ends the pass early.
    template <class OnFrame>
    void Parse(OnFrame&& on_frame) {
        Frame frame{};
        while (next(frame) && on_frame(frame.type, frame.payload, frame.length)) {
        }
    }

    // Whether a header declared a length that no frame has.
    bool SawBadLength() const { return saw_bad_length_; }

    std::size_t Unread() const { return end_ - begin_; }
    std::size_t Capacity() const { return capacity_; }

  private:
    struct Frame {
        IPCMsgType type;
        std::int32_t length;
        char const* payload;
    };
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };

    bool next(Frame& frame);
    bool skipToPreamble();
    bool mayBecomeFrame(IPCMsg const& header) const;
    void resize(std::size_t capacity);

    std::unique_ptr<char, Free> buffer_;
    std::size_t capacity_ = 0;
    std::size_t begin_ = 0;  // first unread byte
    std::size_t end_ = 0;    // end of what has arrived
    bool saw_bad_length_ = false;
};

}  // namespace zorvanelink::components::ipc
