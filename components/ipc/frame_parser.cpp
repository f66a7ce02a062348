#include "components/ipc/frame_parser.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string_view>

namespace zorvanelink::components::ipc {
namespace {

constexpr std::size_t kFirstCapacity = 16 * 1024;
constexpr std::size_t kKeptCapacity = 1024 * 1024;  // an empty buffer above this gives memory back
constexpr std::string_view kMessageBegins = "{ \t\r\n";

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

bool FrameParser::next(Frame& frame) {
    for (; skipToPreamble(); ++begin_) {
        IPCMsg header;
        std::memcpy(&header, buffer_.get() + begin_, sizeof header);
        if (header.length < 0 || header.length > kMaxLength) {
            saw_bad_length_ = true;
            continue;
        }
        std::size_t const size = sizeof header + static_cast<std::size_t>(header.length);
        if (size <= Unread()) {
            frame = {header.type, header.length, buffer_.get() + begin_ + sizeof header};
            begin_ += size;
            return true;
        }
        if (mayBecomeFrame(header)) {
            return false;
        }
    }
    return false;
}

// Leaves begin_ on a preamble with a whole header, or on what is too short to be one.
bool FrameParser::skipToPreamble() {
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

// Of a header whose payload has not arrived whole, so its length is above 0.
bool FrameParser::mayBecomeFrame(IPCMsg const& header) const {
    switch (header.type) {
        case kIPCHeartbeat:
        case kIPCQuit:
        case kIPCAck:
            return false;
        case kIPCCommon:
            return Unread() == kIPCMsgHeaderLen ||
                   kMessageBegins.find(buffer_.get()[begin_ + kIPCMsgHeaderLen]) !=
                       std::string_view::npos;
        default:
            return header.length <= kMaxUnknownLength;
    }
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
