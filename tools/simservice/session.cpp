#include "tools/simservice/session.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"
#include "tools/simservice/notices.h"

namespace zorvanelink::simservice {
namespace {

using common::MsgCode;
using core::CLMsg;
using core::CLMsgJsonParse;
using core::sslvpn::CLMsgJson;
using core::sslvpn::CLMsgReplyJson;

constexpr std::int32_t kNoUpdate = 1;

}  // namespace

Session::Session(Scenario const& scenario, Scheduler& scheduler, Hooks hooks)
    : scenario_(scenario),
      scheduler_(scheduler),
      hooks_(std::move(hooks)),
      gatekeeper_(scenario, scheduler),
      vnic_(scenario.vnic) {
    if (!scenario_.users.empty()) {
        profile_ = scenario_.users.front().profile;
    }
}

void Session::LinkUp() {
    link_ = std::make_shared<int>();
    hooks_.send(CLMsgJsonParse::BuildVnicStateReply(vnic_));
    hooks_.happened(Moment::kLink);
}

void Session::LinkDown() {
    if (state_ != State::kIdle) {
        hooks_.say(fmt::format("client left without a stop, {} ends", profile_));
    }
    goOffline();
    stopping_.clear();
    link_ = std::make_shared<int>();
    hooks_.happened(Moment::kLinkEnd);
}

// What the client may ask for: one row a demand. Whatever has none is recorded and not answered.
Session::Demand const Session::kDemands[] = {
    {CLMsg::Type::kStart, "", &Session::onStart},
    {CLMsg::Type::kStop, "", &Session::onStop},
    {CLMsg::Type::kGet, "state", &Session::onState},
    {CLMsg::Type::kGet, "statistics", &Session::onStatistics},
    {CLMsg::Type::kGet, "config", &Session::onConfig},
    {CLMsg::Type::kGet, "certRequest", &Session::onCertificates},
    {CLMsg::Type::kGet, "gmCertRequest", &Session::onUsbKeys},
    {CLMsg::Type::kSet, "acceptServerCert", &Session::onServerCertificate},
    {CLMsg::Type::kSet, "smsCode", &Session::onAuthCode},
    {CLMsg::Type::kSet, "emailCode", &Session::onAuthCode},
    {CLMsg::Type::kSet, "tokenCode", &Session::onAuthCode},
    {CLMsg::Type::kSet, "requestSmsCode", &Session::onRequestAuthCode},
    {CLMsg::Type::kSet, "requestEmailCode", &Session::onRequestAuthCode},
    {CLMsg::Type::kSet, "newPassword", &Session::onNewPassword},
    {CLMsg::Type::kUpdate, "update", &Session::onUpdate},
};

void Session::Receive(std::string const& json) {
    auto type = CLMsg::Type::kUnknown;
    auto client = CLMsg::ClientType::kUnknown;
    Message message;
    if (!CLMsgJsonParse::Parse(json, &type, &client, &message)) {
        hooks_.say("a message that nobody understands was dropped");
        return;
    }
    auto what = CLMsgJsonParse::TextOf(message, "subtype");
    if (what.empty()) {
        what = CLMsgJsonParse::TextOf(message, "getType");
    }
    auto const* const demand =
        std::find_if(std::begin(kDemands), std::end(kDemands), [&](Demand const& row) {
            return row.type == type && (row.what.empty() || row.what == what);
        });
    if (demand != std::end(kDemands)) {
        (this->*demand->answer)(message);
    }
}

void Session::onStart(Message const& message) {
    core::sslvpn::CLMsgStartData start;
    if (!CLMsgJson::Parse(message, &start)) {
        hooks_.say("a start without all it needs was dropped");
        return;
    }
    // What is on its way down is down before anything comes up.
    while (!stopping_.empty()) {
        finishStop();
    }
    endSession();
    state_ = State::kConnecting;
    profile_ = start.profileName;
    hooks_.say(fmt::format("start {} ({})", profile_,
                           start.user.empty() ? std::string("no user") : start.user));
    hooks_.happened(Moment::kStart);
    step(scenario_.delays.answer_ms, [this, start] { connecting(start); });
}

void Session::tick() {
    hooks_.send(CLMsgReplyJson::Build(statistics()));
    step(scenario_.counters.interval_ms, [this] { tick(); });
}

core::sslvpn::CLMsgReplyTunnelStatisticsData Session::statistics() const {
    core::sslvpn::CLMsgReplyTunnelStatisticsData data;
    data.profileName = profile_;
    auto const& counters = scenario_.counters;
    double seconds = 0;
    if (state_ == State::kOnline) {
        seconds = std::chrono::duration<double>(scheduler_.Now() - online_since_).count();
    }
    auto const total = [&](double per_second) {
        return static_cast<std::uint64_t>(per_second * seconds);
    };
    data.inbound_bytes = total(counters.inbound_bytes);
    data.outbound_bytes = total(counters.outbound_bytes);
    data.inbound_packets = total(counters.inbound_packets);
    data.outbound_packets = total(counters.outbound_packets);
    data.inbound_comp_ratio = static_cast<float>(counters.inbound_comp_ratio);
    data.outbound_comp_ratio = static_cast<float>(counters.outbound_comp_ratio);
    return data;
}

core::sslvpn::CLMsgReplyNetConfigData Session::netconfig() const {
    auto data = scenario_.netconfig;
    data.profileName = profile_;
    return data;
}

void Session::onStop(Message const& message) {
    core::sslvpn::CLMsgStopData stop;
    if (!CLMsgJson::Parse(message, &stop)) {
        hooks_.say("a stop without a profile was dropped");
        return;
    }
    hooks_.say(fmt::format("stop {}", stop.profileName));
    if (stop.profileName == profile_) {
        goOffline();
    }
    stopping_.push_back(std::make_shared<std::string>(stop.profileName));
    later(scenario_.delays.stop_ms, [this, stopped = std::weak_ptr(stopping_.back())] {
        if (!stopped.expired()) {
            finishStop();
        }
    });
}

void Session::finishStop() {
    core::sslvpn::CLMsgCommonReplyData data;
    data.profileName = *stopping_.front();
    data.statusCode = MsgCode::OFFLINE;
    stopping_.pop_front();
    hooks_.send(CLMsgReplyJson::Build(data));
    hooks_.say(fmt::format("offline {}", data.profileName));
}

void Session::onState(Message const& /*message*/) {
    static constexpr std::array kCodes{MsgCode::OFFLINE, MsgCode::CONNECTING, MsgCode::ONLINE,
                                       MsgCode::RECONNECTING};
    reply(kCodes[static_cast<std::size_t>(state_)]);
}

void Session::onStatistics(Message const& /*message*/) {
    hooks_.send(CLMsgReplyJson::Build(statistics()));
}

void Session::onConfig(Message const& /*message*/) {
    hooks_.send(CLMsgReplyJson::Build(netconfig()));
}

// The questions for certificates carry no profile: this gateway has none to offer.
void Session::onCertificates(Message const& /*message*/) {
    hooks_.send(CLMsgReplyJson::Build(core::sslvpn::ALMsgCertRespondData{profile_, {}}));
}

void Session::onUsbKeys(Message const& /*message*/) {
    hooks_.send(CLMsgReplyJson::Build(core::sslvpn::ALMsgGMCertRespondData{profile_, {}}));
}

void Session::onUpdate(Message const& message) {
    core::sslvpn::CLMsgUpdateRequestData request;
    if (!CLMsgJson::Parse(message, &request) ||
        request.command != core::sslvpn::UpdateCommand::kInquire) {
        return;
    }
    core::sslvpn::CLMsgUpdate data;
    data.profileName = request.profileName;
    data.state = kNoUpdate;
    hooks_.send(CLMsgReplyJson::Build(data));
}

void Session::SendStatus(MsgCode code, std::string const& fields) {
    hooks_.say(fmt::format("status {}", ReadableCode(code)));
    hooks_.send(StatusNotice(profile_, code, fields));
    if (code == MsgCode::OFFLINE) {
        goOffline();
    }
}

void Session::Disconnect(int reason) {
    hooks_.say(fmt::format("disconnect, {}", core::sslvpn::DisconnectReasonText(reason)));
    hooks_.send(
        CLMsgReplyJson::Build(core::sslvpn::CLMsgReplyTunnelDisconnectData{profile_, reason}));
    reply(MsgCode::OFFLINE);
    goOffline();
}

bool Session::Reconnect(int phase_ms) {
    if (state_ != State::kOnline) {
        return false;
    }
    hooks_.say("the tunnel is lost, reconnecting");
    attempt_ = std::make_shared<int>();
    state_ = State::kReconnecting;
    reply(MsgCode::PREPARE_RECONNECTING);
    step(phase_ms, [this, phase_ms] {
        reply(MsgCode::RECONNECTING);
        step(phase_ms, [this] { accept(*user_); });
    });
    return true;
}

void Session::TellGateways(Scenario const& from) {
    if (!from.gateways.empty()) {
        hooks_.send(
            CLMsgReplyJson::Build(core::sslvpn::CLMsgGatewayListData{profile_, from.gateways}));
    }
}

void Session::TellClusters(Scenario const& from) {
    if (!from.clusters.empty()) {
        hooks_.send(CLMsgReplyJson::Build(core::sslvpn::CLMsgClusterData{profile_, from.clusters}));
    }
}

void Session::Flood(int count, MsgCode code) {
    hooks_.say(fmt::format("flood, {} times {}", count, ReadableCode(code)));
    for (int at = 0; at < count; ++at) {
        reply(code);
    }
}

void Session::SetVnic(bool usable) {
    vnic_ = usable;
    hooks_.send(CLMsgJsonParse::BuildVnicStateReply(vnic_));
}

void Session::reply(MsgCode code) {
    core::sslvpn::CLMsgCommonReplyData data;
    data.statusCode = code;
    reply(std::move(data));
}

void Session::reply(core::sslvpn::CLMsgCommonReplyData data) {
    data.profileName = profile_;
    hooks_.send(CLMsgReplyJson::Build(data));
}

void Session::endSession() {
    attempt_ = std::make_shared<int>();
    questioned_.reset();
    challenge_.reset();
    if (std::exchange(state_, State::kIdle) != State::kIdle) {
        hooks_.happened(Moment::kSessionEnd);
    }
}

void Session::goOffline() {
    server_accepted_ = false;
    endSession();
}

void Session::step(int delay_ms, Task task) {
    after(delay_ms, attempt_, std::move(task));
}

void Session::later(int delay_ms, Task task) {
    after(delay_ms, link_, std::move(task));
}

void Session::after(int delay_ms, std::weak_ptr<int> alive, Task task) {
    scheduler_.After(Scheduler::Milliseconds(delay_ms),
                     [alive = std::move(alive), task = std::move(task)] {
                         if (!alive.expired()) {
                             task();
                         }
                     });
}

}  // namespace zorvanelink::simservice
