#include "components/ipc/frame_parser.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace zorvanelink::components::ipc {
namespace {

constexpr std::size_t kFirstCapacity = 16 * 1024;
constexpr std::size_t kKeptCapacity = 1024 * 1024;  // an empty buffer above this gives memory back

}  // namespace

char* FrameParser::Prepare(std::size_t size) {
    if (begin_ == end_) {
        begin_ = end_ = 0;
        if (capacity_ > kKeptCapacity) {
            buffer_.reset();
            capacity_ = 0;
        }
    }
    // Moving less than what has been consumed in front of it keeps the work linear.
    if (capacity_ - end_ < size && begin_ > Unread()) {
        std::memcpy(buffer_.get(), buffer_.get() + begin_, Unread());
        end_ = Unread();
        begin_ = 0;
    }
    if (capacity_ - end_ < size) {
        resize(std::max({kFirstCapacity, capacity_ * 2, end_ + size}));
    }
    return buffer_.get() + end_;
}

void FrameParser::Commit(std::size_t size) {
    end_ += std::min(size, capacity_ - end_);
}

bool FrameParser::next(std::size_t pass_size, Frame& frame) {
    if (!skipJunk()) {
        return false;
    }
    IPCMsg header;
    std::memcpy(&header, buffer_.get() + begin_, sizeof header);
    if (header.length > 0 && static_cast<std::size_t>(header.length) > pass_size) {
        return false;
    }
    std::size_t const payload = begin_ + sizeof header;
    std::size_t const frame_end = payload + static_cast<std::size_t>(std::max(header.length, 0));
    if (frame_end > end_) {
        if (frame_end > capacity_) {
            resize(frame_end);
        }
        std::memset(buffer_.get() + end_, 0, frame_end - end_);
    }
    begin_ = std::min(frame_end, end_);
    frame = {header.type, header.length, buffer_.get() + payload};
    return true;
}

// Leaves begin_ on a preamble with a whole header, or on what is too short to be one.
bool FrameParser::skipJunk() {
    while (Unread() >= kIPCMsgHeaderLen) {
        char const* const here = buffer_.get() + begin_;
        if (std::memcmp(here, kIPCMsgPreable, kIPCMsgPreableLen) == 0) {
            return true;
        }
        std::size_t const candidates = Unread() - kIPCMsgHeaderLen;
        auto const* const found =
            static_cast<char const*>(std::memchr(here + 1, kIPCMsgPreable[0], candidates));
        begin_ += found != nullptr ? static_cast<std::size_t>(found - here) : candidates + 1;
    }
    return false;
}

void FrameParser::resize(std::size_t capacity) {
    char* const grown = static_cast<char*>(std::realloc(buffer_.get(), capacity));
    if (grown == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(buffer_.release());
    buffer_.reset(grown);
    capacity_ = capacity;
}

}  // namespace zorvanelink::components::ipc
