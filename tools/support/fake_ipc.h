// A link without a socket: a test sees what is sent and plays the service.
#pragma once

#include <algorithm>
#include <atomic>
#include <mutex>
#include <string>
#include <vector>

#include "components/ipc/ipc.h"

namespace zorvanelink::test {

class FakeIpc : public components::ipc::IPC {
  public:
    // A link that answers at once proves itself at once.
    explicit FakeIpc(bool runs = true, bool alive = true) : runs_(runs), alive_(alive) {}

    bool Run() override {
        if (runs_ && alive_) {
            noteBytes();
            ProcessIPCMsg(components::ipc::kIPCHeartbeatMsg);
        }
        return runs_;
    }
    void Stop() override { stopped = true; }
    bool SendCommonIPCMsgTimeout(char const* data, unsigned long len, unsigned int) override {
        std::lock_guard lock(mutex_);
        sent_.emplace_back(data, len);
        return accepts;
    }

    void HoldReading(bool hold) override { held = hold; }
    void Deliver(std::string const& json) const {
        noteBytes();
        dispatch(components::ipc::kIPCCommon, json.data(), static_cast<int>(json.size()));
    }
    void FailRead(int code) const { heartbeat_error_handler_(code); }
    void TimeOut(int count) const { heartbeat_timeout_handler_(count); }

    std::vector<std::string> Sent() const {
        std::lock_guard lock(mutex_);
        return sent_;
    }

    // How many messages with that word, in quotes, have left.
    int Count(std::string const& word) const {
        auto const sent = Sent();
        return static_cast<int>(std::count_if(sent.begin(), sent.end(), [&](auto const& json) {
            return json.find('"' + word + '"') != std::string::npos;
        }));
    }

    std::atomic<bool> stopped{false};
    std::atomic<bool> held{false};
    std::atomic<bool> accepts{true};

    void Forget() {
        std::lock_guard lock(mutex_);
        sent_.clear();
    }

  private:
    bool const runs_;
    bool const alive_;
    mutable std::mutex mutex_;
    std::vector<std::string> sent_;
};

}  // namespace zorvanelink::test
