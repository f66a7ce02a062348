// The gateway's side of the conversation: what it answers to "start", "stop" and the rest, and what
// it tells while a tunnel is up. Knows no socket and no clock of its own. One thread.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "core/clmsg.h"
#include "core/request_records.h"
#include "tools/simservice/gatekeeper.h"
#include "tools/simservice/scenario.h"
#include "tools/simservice/scheduler.h"
#include "tools/simservice/second_factor.h"

namespace zorvanelink::simservice {

class Session {
  public:
    struct Hooks {
        std::function<void(std::string const& json)> send;
        std::function<void(std::string const& line)> say;  // for people; never a secret
        std::function<void(Moment)> happened;
        // The address of a provider's login; the user's answer comes on the same thread. Empty
        // function: there is none.
        std::function<std::string(std::function<void(bool yes)> answered)> third_party = {};
    };
    enum class State { kIdle, kConnecting, kOnline, kReconnecting };

    // The scenario must outlive the session.
    Session(Scenario const& scenario, Scheduler& scheduler, Hooks hooks);

    void LinkUp();
    void LinkDown();
    void Receive(std::string const& json);

    // From the gateway's own will. Of the profile started last, or the first user's. `fields`:
    // further keys of the status, as a JSON object.
    void SendStatus(common::MsgCode code, std::string const& fields = {});
    void Flood(int count, common::MsgCode code);
    void SetVnic(bool usable);
    // Tells why, and ends the session.
    void Disconnect(int reason);
    // False when there is no tunnel to lose.
    bool Reconnect(int phase_ms);
    void TellGateways(Scenario const& from);
    void TellClusters(Scenario const& from);

    State GetState() const { return state_; }
    std::string const& ProfileName() const { return profile_; }

  private:
    using Task = std::function<void()>;
    using Message = core::CLMsgDocument;
    // One that the client makes: `what` is the subtype, or what a "get" wants.
    struct Demand {
        core::CLMsg::Type type;
        std::string_view what;  // empty: any
        void (Session::*answer)(Message const& message);
    };
    static Demand const kDemands[];

    void onStart(Message const& message);
    void onStop(Message const& message);
    void onState(Message const& message);
    void onStatistics(Message const& message);
    void onConfig(Message const& message);
    void onCertificates(Message const& message);
    void onUsbKeys(Message const& message);
    void onServerCertificate(Message const& message);
    bool awaits(core::sslvpn::CLMsgSetData const& set) const;
    void onAuthCode(Message const& message);
    void onRequestAuthCode(Message const& message);
    void onNewPassword(Message const& message);
    void onUpdate(Message const& message);

    using Start = core::sslvpn::CLMsgStartData;
    // A login, in this order.
    void connecting(Start const& start);
    void verdict(Start const& start);
    // False when the login has to wait for the client's answer, or has ended.
    bool passServerCertificate(Start const& start);
    void offerTypes();
    void login(Start const& start);
    void openProvidersPage(Start const& start);
    void thirdPartyAnswered(bool yes);
    // Once the credentials are right.
    void admit(User const& user);
    void sendCode();
    void judged(common::MsgCode verdict);  // on a code
    void tellPasswordRules();
    void accept(User const& user);
    void refuse(Judgement const& judgement);
    void goOnline(User const& user);
    void tick();
    // Ends what runs: its timers are void from here on.
    void endSession();
    // Answers the oldest stop.
    void finishStop();
    void goOffline();

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
    Gatekeeper gatekeeper_;
    std::shared_ptr<int> link_ = std::make_shared<int>();
    std::shared_ptr<int> attempt_ = std::make_shared<int>();
    State state_ = State::kIdle;
    std::string profile_;
    std::deque<std::shared_ptr<std::string>> stopping_;  // profiles whose stop has no answer yet
    User const* user_ = nullptr;                         // whose session it is
    std::optional<SecondFactor> challenge_;              // while a code is wanted
    Scheduler::Clock::time_point code_sent_;
    std::optional<Start> questioned_;  // a login that waits for the client's answer
    // The answer holds from the question for the types to the login after it.
    bool server_accepted_ = false;
    Scheduler::Clock::time_point online_since_;
    bool vnic_;
};

}  // namespace zorvanelink::simservice
