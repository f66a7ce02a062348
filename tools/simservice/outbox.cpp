#include "tools/simservice/outbox.h"

#include <algorithm>
#include <array>

#include "components/ipc/ipc.h"

namespace zorvanelink::simservice {
namespace {

// Looks like the beginning of a frame again and again without ever being one.
std::string junk(int bytes) {
    constexpr std::array<char, 5> kPattern{'d', 'e', 'a', '\0', '\xff'};
    std::string text;
    for (int at = 0; at < bytes; ++at) {
        text += kPattern[static_cast<std::size_t>(at) % kPattern.size()];
    }
    return text;
}

}  // namespace

Outbox::Outbox(Scheduler& scheduler, Write write)
    : scheduler_(scheduler), write_(std::move(write)) {
}

void Outbox::SendMessage(std::string_view json) {
    push(components::ipc::kIPCCommon, json);
}

void Outbox::SendHeartbeat() {
    if (waiting_.empty()) {
        push(components::ipc::kIPCHeartbeat, {});
    }
}

void Outbox::Clear() {
    waiting_.clear();
    position_ = 0;
    piece_pending_ = false;
    connection_ = std::make_shared<int>();
}

void Outbox::push(std::int32_t type, std::string_view payload) {
    if (silent_) {
        return;
    }
    auto const header = components::ipc::MakeIPCMsgHeader(
        static_cast<components::ipc::IPCMsgType>(type), static_cast<std::int32_t>(payload.size()));
    std::string frame = junk(junk_);
    frame.append(reinterpret_cast<char const*>(&header), sizeof(header));
    frame.append(payload);
    if (hold_ && !waiting_.empty()) {
        waiting_.back() += frame;
    } else {
        waiting_.push_back(std::move(frame));
    }
    pump();
}

void Outbox::SetHold(bool hold) {
    hold_ = hold;
    pump();
}

void Outbox::pump() {
    while (!hold_ && !waiting_.empty() && !piece_pending_) {
        writePiece();
    }
}

void Outbox::writePiece() {
    auto const& frame = waiting_.front();
    bool const pieces = split_ > 0 || slow_ > 0;
    auto const wanted = pieces ? static_cast<std::size_t>(std::max(split_, 1)) : frame.size();
    auto const piece = std::string_view(frame).substr(position_, wanted);
    write_(piece);
    position_ += piece.size();
    if (position_ >= frame.size()) {
        waiting_.pop_front();
        position_ = 0;
    }
    if (!pieces) {
        return;
    }
    piece_pending_ = true;
    // Without a pause the kernel would join the pieces again.
    scheduler_.After(Scheduler::Milliseconds(std::max(slow_, 1)),
                     [this, alive = std::weak_ptr(connection_)] {
                         if (!alive.expired()) {
                             piece_pending_ = false;
                             pump();
                         }
                     });
}

}  // namespace zorvanelink::simservice
