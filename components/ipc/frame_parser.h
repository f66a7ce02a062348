// Takes frames out of a stream of bytes that a peer chooses freely.
//
// Bytes are read straight into the parser's buffer (Prepare, then Commit); Parse then makes one
// pass over what has arrived and shows each frame where it lies. A frame counts as complete when
// its declared length is not above the count of unread bytes at the start of the pass: it may be
// shown before its last bytes have come. Those are then zero, in memory of the buffer; what
// arrives of them later is skipped as junk. The buffer holds at most what has arrived, twice.
// One thread at a time. Prepare and Parse throw std::bad_alloc when memory runs out.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

#include "components/ipc/ipc.h"

namespace zorvanelink::components::ipc {

class FrameParser {
  public:
    // Room for `size` more bytes, valid until the next call of Prepare or Parse.
    char* Prepare(std::size_t size);
    // Takes `size` bytes of the prepared room as arrived.
    void Commit(std::size_t size);

    // Calls on_frame(IPCMsgType, char const* payload, int length) -> bool for each frame; false
    // ends the pass early. A negative length comes through as it was declared.
    template <class OnFrame>
    void Parse(OnFrame&& on_frame) {
        Frame frame{};
        std::size_t const size = Unread();
        while (next(size, frame) && on_frame(frame.type, frame.payload, frame.length)) {
        }
    }

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

    bool next(std::size_t pass_size, Frame& frame);
    bool skipJunk();
    void resize(std::size_t capacity);

    std::unique_ptr<char, Free> buffer_;
    std::size_t capacity_ = 0;
    std::size_t begin_ = 0;  // first unread byte
    std::size_t end_ = 0;    // end of what has arrived
};

}  // namespace zorvanelink::components::ipc
