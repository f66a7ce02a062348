// The gateway's side of the conversation: what it answers to "start", "stop" and the rest, and what
// it tells while a tunnel is up. Knows no socket and no clock of its own. One thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/clmsg.h"
#include "core/request_records.h"
#include "tools/simservice/scenario.h"
#include "tools/simservice/scheduler.h"

namespace zorvanelink::simservice {

class Session {
  public:
    struct Hooks {
        std::function<void(std::string const& json)> send;
        std::function<void(std::string const& line)> say;  // for people; never a secret
        std::function<void(Moment)> happened;
    };
    enum class State { kIdle, kConnecting, kOnline };

    // The scenario must outlive the session.
    Session(Scenario const& scenario, Scheduler& scheduler, Hooks hooks);

    void LinkUp();
    void LinkDown();
    void Receive(std::string const& json);

    // From the gateway's own will. Of the profile started last, or the first user's.
    void SendStatus(common::MsgCode code);
    void Flood(int count, common::MsgCode code);
    void SetVnic(bool usable);

    State GetState() const { return state_; }
    std::string const& ProfileName() const { return profile_; }

  private:
    using Task = std::function<void()>;
    using Handler = void (Session::*)(std::string const& json);
    static Handler handlerOf(core::CLMsg::Type type);

    void handleStart(std::string const& json);
    void handleStop(std::string const& json);
    void handleGet(std::string const& json);
    void handleUpdate(std::string const& json);

    void connecting(core::sslvpn::CLMsgStartData const& start);
    void verdict(core::sslvpn::CLMsgStartData const& start);
    void accept(User const& user);
    void refuse(common::MsgCode code);
    void goOnline(User const& user);
    void tick();
    // Ends what runs: its timers are void from here on.
    void endSession();

    User const* findUser(core::sslvpn::CLMsgStartData const& start) const;
    void reply(common::MsgCode code);
    void reply(core::sslvpn::CLMsgCommonReplyData data);
    core::sslvpn::CLMsgReplyTunnelStatisticsData statistics() const;
    core::sslvpn::CLMsgReplyNetConfigData netconfig() const;
    // Voided by the end of the session...
    void step(int delay_ms, Task task);
    // ...and by the end of the link.
    void later(int delay_ms, Task task);
    void after(int delay_ms, std::weak_ptr<int> alive, Task task);

    Scenario const& scenario_;
    Scheduler& scheduler_;
    Hooks hooks_;
    std::shared_ptr<int> link_ = std::make_shared<int>();
    std::shared_ptr<int> attempt_ = std::make_shared<int>();
    State state_ = State::kIdle;
    std::string profile_;
    Scheduler::Clock::time_point online_since_;
    bool vnic_;
};

}  // namespace zorvanelink::simservice
