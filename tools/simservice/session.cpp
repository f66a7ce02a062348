#include "tools/simservice/session.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "common/auth_type_list.h"
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

std::string readableCode(MsgCode code) {
    auto const name = common::g_IPCMessageMap.Name(code);
    auto const number = static_cast<int>(code);
    return name.empty() ? fmt::format("{}", number) : fmt::format("{} {}", number, name);
}

bool hasSessionData(core::sslvpn::CLMsgCommonReplyData const& data) {
    return !data.redirectUrl.empty() || !data.resourceListPagePath.empty() ||
           !data.cipherAlg.empty() || !data.ipCompAlg.empty() || !data.sslVersion.empty() ||
           data.needClearWebCacheWhenOffline;
}

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

Session::Handler Session::handlerOf(CLMsg::Type type) {
    struct Row {
        CLMsg::Type type;
        Handler handler;
    };
    static constexpr std::array<Row, 5> kRows{{
        {CLMsg::Type::kStart, &Session::handleStart},
        {CLMsg::Type::kStop, &Session::handleStop},
        {CLMsg::Type::kGet, &Session::handleGet},
        {CLMsg::Type::kSet, &Session::handleSet},
        {CLMsg::Type::kUpdate, &Session::handleUpdate},
    }};
    auto const* const row = std::find_if(
        kRows.begin(), kRows.end(), [&](Row const& candidate) { return candidate.type == type; });
    return row == kRows.end() ? nullptr : row->handler;
}

void Session::Receive(std::string const& json) {
    auto type = CLMsg::Type::kUnknown;
    auto client = CLMsg::ClientType::kUnknown;
    if (!CLMsgJsonParse::Parse(json, &type, &client)) {
        hooks_.say("a message that nobody understands was dropped");
        return;
    }
    if (auto const handler = handlerOf(type)) {
        (this->*handler)(json);
    }
}

void Session::handleStart(std::string const& json) {
    core::sslvpn::CLMsgStartData start;
    if (!CLMsgJson::Parse(json, &start)) {
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

void Session::connecting(Start const& start) {
    reply(MsgCode::CONNECTING);
    step(scenario_.delays.connecting_ms, [this, start] { verdict(start); });
}

void Session::verdict(Start const& start) {
    if (!passServerCertificate(start)) {
        return;
    }
    auto const& offered = scenario_.auth_types;
    if (start.needQueryAuthType) {
        offerTypes();
    } else if (std::find(offered.begin(), offered.end(), start.authType) == offered.end()) {
        refuse({nullptr, MsgCode::ERR_LOGIN_MODE});
    } else {
        login(start);
    }
}

bool Session::passServerCertificate(Start const& start) {
    switch (scenario_.server_certificate) {
        case ServerCertificate::kGood:
            return true;
        case ServerCertificate::kUntrusted:
            if (start.enableVerifyServerCert) {
                refuse({nullptr, MsgCode::UI_TR_VERITY_SERVER_CERTIFICATE_FAILED});
            }
            return !start.enableVerifyServerCert;
        case ServerCertificate::kNotYetValid:
        case ServerCertificate::kExpired:
            break;
    }
    if (!server_accepted_) {
        questioned_ = start;
        auto const code = scenario_.server_certificate == ServerCertificate::kExpired
                              ? MsgCode::SSL_CERT_EXPIRED
                              : MsgCode::SSL_CERT_YET_VALID;
        hooks_.say(fmt::format("asks about the server's certificate, {}", readableCode(code)));
        reply(code);
    }
    return server_accepted_;
}

void Session::offerTypes() {
    hooks_.say("asks for the authentication type");
    core::sslvpn::CLMsgCommonReplyData data;
    data.statusCode = MsgCode::NEED_SELECT_AUTH_TYPE;
    data.supportedAuthType =
        components::utils::ConvertSupportedAuthTypeToStrList(scenario_.auth_types);
    reply(std::move(data));
}

void Session::login(Start const& start) {
    if (start.authType == common::SupportedAuthType::kOauth && !scenario_.users.empty()) {
        openProvidersPage();
        return;
    }
    if (!common::NeedsPassword(start.authType) && !common::NeedsCertificate(start.authType)) {
        refuse({nullptr, MsgCode::ERR_LOGIN_MODE});
        return;
    }
    auto const judgement = gatekeeper_.Judge(start);
    if (judgement.user != nullptr) {
        accept(*judgement.user);
    } else {
        refuse(judgement);
    }
}

void Session::openProvidersPage() {
    core::sslvpn::CLMsgCommonReplyData data;
    data.statusCode = MsgCode::OAUTH_PAGE;
    data.oauthPagePath = scenario_.third_party.page;
    hooks_.say(fmt::format("asks to log in at {}", data.oauthPagePath));
    reply(std::move(data));
    step(scenario_.third_party.after_ms, [this] { accept(scenario_.users.front()); });
}

void Session::refuse(Judgement const& judgement) {
    hooks_.say(fmt::format("login refused, {}", readableCode(judgement.refusal)));
    core::sslvpn::CLMsgCommonReplyData data;
    data.statusCode = judgement.refusal;
    data.accountLockSenconds = judgement.lock_seconds;
    reply(std::move(data));
    reply(MsgCode::OFFLINE);
    goOffline();
}

void Session::accept(User const& user) {
    if (hasSessionData(scenario_.session)) {
        auto data = scenario_.session;
        data.statusCode = MsgCode::KEY_EXCHANGE_DATA;
        reply(std::move(data));
    }
    TellGateways(scenario_);
    TellClusters(scenario_);
    hooks_.send(CLMsgReplyJson::Build(netconfig()));
    step(scenario_.delays.online_ms, [this, &user] { goOnline(user); });
}

void Session::goOnline(User const& user) {
    state_ = State::kOnline;
    user_ = &user;
    online_since_ = scheduler_.Now();
    core::sslvpn::CLMsgCommonReplyData data;
    data.statusCode = MsgCode::ONLINE;
    data.receivedUserName =
        scenario_.session.receivedUserName.empty() ? user.name : scenario_.session.receivedUserName;
    data.warningCode.assign(scenario_.warnings.begin(), scenario_.warnings.end());
    reply(std::move(data));
    auto const& config = scenario_.netconfig;
    hooks_.say(fmt::format("online {}", config.clientPrivateIP.empty() ? config.clientPrivateIPv6
                                                                       : config.clientPrivateIP));
    hooks_.happened(Moment::kOnline);
    step(scenario_.counters.interval_ms, [this] { tick(); });
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

void Session::handleStop(std::string const& json) {
    core::sslvpn::CLMsgStopData stop;
    if (!CLMsgJson::Parse(json, &stop)) {
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

void Session::handleGet(std::string const& json) {
    // The questions for certificates carry no profile: this gateway has none to offer.
    auto type = CLMsg::Type::kUnknown;
    auto subtype = CLMsg::SubType::kUnknown;
    auto status = MsgCode::UNSPECIFIED;
    if (CLMsgJsonParse::Parse(json, &type, &subtype, &status)) {
        if (subtype == CLMsg::SubType::kCertRequest) {
            hooks_.send(CLMsgReplyJson::Build(core::sslvpn::ALMsgCertRespondData{profile_, {}}));
            return;
        }
        if (subtype == CLMsg::SubType::kGmCertRequest) {
            hooks_.send(CLMsgReplyJson::Build(core::sslvpn::ALMsgGMCertRespondData{profile_, {}}));
            return;
        }
    }
    core::sslvpn::CLMsgGetData get;
    if (!CLMsgJson::Parse(json, &get)) {
        return;
    }
    switch (get.getType) {
        case core::sslvpn::GetType::kState:
            reply(stateCode());
            break;
        case core::sslvpn::GetType::kStatistics:
            hooks_.send(CLMsgReplyJson::Build(statistics()));
            break;
        case core::sslvpn::GetType::kConfig:
            hooks_.send(CLMsgReplyJson::Build(netconfig()));
            break;
        default:
            break;
    }
}

MsgCode Session::stateCode() const {
    static constexpr std::array kCodes{MsgCode::OFFLINE, MsgCode::CONNECTING, MsgCode::ONLINE,
                                       MsgCode::RECONNECTING};
    return kCodes[static_cast<std::size_t>(state_)];
}

void Session::handleUpdate(std::string const& json) {
    core::sslvpn::CLMsgUpdateRequestData request;
    if (!CLMsgJson::Parse(json, &request) ||
        request.command != core::sslvpn::UpdateCommand::kInquire) {
        return;
    }
    core::sslvpn::CLMsgUpdate data;
    data.profileName = request.profileName;
    data.state = kNoUpdate;
    hooks_.send(CLMsgReplyJson::Build(data));
}

// Most of them have been done when their log level was read, and are only recorded.
void Session::handleSet(std::string const& json) {
    core::sslvpn::CLMsgSetData set;
    if (!CLMsgJson::Parse(json, &set) || set.subtype != core::sslvpn::SetType::kAcceptServerCert ||
        !questioned_ || set.profileName != profile_) {
        return;
    }
    auto const start = *std::exchange(questioned_, std::nullopt);
    server_accepted_ = set.result;
    hooks_.say(set.result ? "the server's certificate is accepted"
                          : "the server's certificate is refused");
    if (server_accepted_) {
        verdict(start);
    } else {
        reply(MsgCode::OFFLINE);
        goOffline();
    }
}

void Session::SendStatus(MsgCode code, std::string const& fields) {
    hooks_.say(fmt::format("status {}", readableCode(code)));
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
    hooks_.say(fmt::format("flood, {} times {}", count, readableCode(code)));
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
