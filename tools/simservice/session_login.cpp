// A login, from "start" to the tunnel or the refusal.
#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "common/auth_type_list.h"
#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"
#include "tools/simservice/login_page.h"
#include "tools/simservice/notices.h"
#include "tools/simservice/session.h"

namespace zorvanelink::simservice {
namespace {

using common::MsgCode;
using core::sslvpn::CLMsgJson;
using core::sslvpn::CLMsgReplyJson;

bool hasSessionData(core::sslvpn::CLMsgCommonReplyData const& data) {
    return !data.redirectUrl.empty() || !data.resourceListPagePath.empty() ||
           !data.cipherAlg.empty() || !data.ipCompAlg.empty() || !data.sslVersion.empty() ||
           data.needClearWebCacheWhenOffline;
}

}  // namespace

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
        hooks_.say(fmt::format("asks about the server's certificate, {}", ReadableCode(code)));
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
        openProvidersPage(start);
        return;
    }
    if (!common::NeedsPassword(start.authType) && !common::NeedsCertificate(start.authType)) {
        refuse({nullptr, MsgCode::ERR_LOGIN_MODE});
        return;
    }
    auto const judgement = gatekeeper_.Judge(start);
    if (judgement.user != nullptr) {
        admit(*judgement.user);
    } else {
        refuse(judgement);
    }
}

void Session::openProvidersPage(Start const& start) {
    ThirdParty const& rules = scenario_.third_party;
    if (rules.failure == MsgCode::ERR_RECV_INVALID_OAUTH_INFO ||
        rules.failure == MsgCode::ERR_WRITE_OAUTH_INFO) {
        refuse({nullptr, rules.failure});
        return;
    }
    core::sslvpn::CLMsgCommonReplyData data;
    data.statusCode = MsgCode::OAUTH_PAGE;
    data.oauthPagePath = rules.page;
    if (rules.server && hooks_.third_party) {
        auto const answered = [this, alive = std::weak_ptr(attempt_)](bool yes) {
            if (!alive.expired()) {
                thirdPartyAnswered(yes);
            }
        };
        data.oauthPagePath = WriteLoginPage(start.userDataPath, hooks_.third_party(answered));
    }
    if (data.oauthPagePath.empty()) {
        refuse({nullptr, MsgCode::ERR_WRITE_OAUTH_INFO});
        return;
    }
    hooks_.say(fmt::format("asks to log in at {}", data.oauthPagePath));
    reply(std::move(data));
    if (!rules.server) {
        step(rules.after_ms, [this] { thirdPartyAnswered(true); });
    }
}

void Session::thirdPartyAnswered(bool yes) {
    auto const failure = scenario_.third_party.failure;
    if (!yes) {
        refuse({nullptr, MsgCode::ERR_OAUTH_LOGIN_OAUTH_SERVER_FAILED});
    } else if (failure != MsgCode::UNSPECIFIED) {
        refuse({nullptr, failure});
    } else {
        admit(scenario_.users.front());
    }
}

void Session::refuse(Judgement const& judgement) {
    hooks_.say(fmt::format("login refused, {}", ReadableCode(judgement.refusal)));
    core::sslvpn::CLMsgCommonReplyData data;
    data.statusCode = judgement.refusal;
    data.accountLockSenconds = judgement.lock_seconds;
    reply(std::move(data));
    reply(MsgCode::OFFLINE);
    goOffline();
}

void Session::accept(User const& user) {
    tellPasswordRules();
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

void Session::onServerCertificate(Message const& message) {
    core::sslvpn::CLMsgSetData set;
    if (!CLMsgJson::Parse(message, &set) || !questioned_ || set.profileName != profile_) {
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

}  // namespace zorvanelink::simservice
