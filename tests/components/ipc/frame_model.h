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
        auto const size = unread_.size();
        std::size_t at = 0;
        while (at + components::ipc::kIPCMsgHeaderLen <= size) {
            if (unread_.compare(at, 4, "deaf") != 0) {
                ++at;
                continue;
            }
            ShownFrame frame{};
            std::memcpy(&frame.type, unread_.data() + at + 4, sizeof frame.type);
            std::memcpy(&frame.length, unread_.data() + at + 8, sizeof frame.length);
            if (frame.length > 0 && static_cast<std::size_t>(frame.length) > size) {
                break;
            }
            std::size_t const length =
                frame.length > 0 ? static_cast<std::size_t>(frame.length) : 0;
            frame.payload = unread_.substr(at + 12, length);
            frame.payload.resize(length, '\0');
            shown.push_back(frame);
            at += 12 + length;
        }
        unread_.erase(0, at);
        return shown;
    }

  private:
    std::string unread_;
};

}  // namespace zorvanelink::test
