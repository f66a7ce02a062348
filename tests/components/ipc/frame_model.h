// The rules of the frame parser once more, as plainly as they can be put: what each pass over the
// unread bytes must show. Slow, copying, and with nothing to get wrong.
#pragma once

#include <cstring>
#include <string>
#include <vector>

#include "components/ipc/ipc.h"

namespace zorvanelink::test {

struct ShownFrame {
    std::int32_t type;
    std::int32_t length;
    std::string payload;

    bool operator==(ShownFrame const&) const = default;
};

inline std::string MakeFrame(std::int32_t type, std::int32_t length, std::string const& payload) {
    std::string frame = "deaf";
    frame.append(reinterpret_cast<char const*>(&type), sizeof type);
    frame.append(reinterpret_cast<char const*>(&length), sizeof length);
    return frame + payload;
}

inline std::string MakeFrame(std::string const& payload) {
    return MakeFrame(components::ipc::kIPCCommon, static_cast<std::int32_t>(payload.size()),
                     payload);
}

class FrameModel {
  public:
    std::vector<ShownFrame> Receive(std::string const& bytes) {
        unread_ += bytes;
        std::vector<ShownFrame> shown;
        while (unread_.size() >= components::ipc::kIPCMsgHeaderLen) {
            ShownFrame frame{};
            std::memcpy(&frame.type, unread_.data() + 4, sizeof frame.type);
            std::memcpy(&frame.length, unread_.data() + 8, sizeof frame.length);
            bool const header =
                unread_.starts_with("deaf") && frame.length >= 0 && frame.length <= 16 << 20;
            auto const missing = 12 + std::int64_t{frame.length} - std::ssize(unread_);
            if (header && missing <= 0) {
                frame.payload = unread_.substr(12, static_cast<std::size_t>(frame.length));
                shown.push_back(frame);
                unread_.erase(0, 12 + frame.payload.size());
            } else if (header && worthWaiting(frame)) {
                break;
            } else {
                unread_.erase(0, 1);
            }
        }
        return shown;
    }

  private:
    bool worthWaiting(ShownFrame const& frame) const {
        bool const control = frame.type == 0 || frame.type == 1 || frame.type == 3;
        if (frame.type == components::ipc::kIPCCommon) {
            return unread_.size() == 12 ||
                   std::string("{ \t\r\n").find(unread_[12]) != std::string::npos;
        }
        return !control && frame.length <= 64 << 10;
    }

    std::string unread_;
};

}  // namespace zorvanelink::test
