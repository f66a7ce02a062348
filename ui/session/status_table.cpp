#include "ui/session/status_table.h"

#include <algorithm>

#include "components/logger/logger.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using Data = StatusTable::Data;
using Handlers = StatusHandlers;

using Handle = void (*)(Handlers& handlers, Data const& data, Profile& profile);

// The row's object among the handlers, and its method.
template <auto object, auto method>
void call(Handlers& handlers, Data const& data, Profile& profile) {
    ((handlers.*object).*method)(data, profile);
}

// kSession: nothing happens once the session is down or its stop has been sent, nor what is still
// of the attempt before.
enum class When { kAlways, kSession };

struct Row {
    MsgCode code;
    Handle handle;
    When when = When::kAlways;
};

constexpr auto kConnection = &Handlers::connection;
constexpr auto kLogin = &Handlers::login;
constexpr auto kPages = &Handlers::pages;
constexpr auto kSigning = &Handlers::signing;

constexpr Row kRows[] = {
    {MsgCode::CONNECTING, call<kConnection, &ConnectionStatuses::onConnecting>},
    {MsgCode::ONLINE, call<kConnection, &ConnectionStatuses::onOnline>},
    {MsgCode::OFFLINE, call<kConnection, &ConnectionStatuses::onOffline>},
    {MsgCode::PREPARE_RECONNECTING, call<kConnection, &ConnectionStatuses::onPrepareReconnecting>},
    {MsgCode::RECONNECTING, call<kConnection, &ConnectionStatuses::onReconnecting>},
    {MsgCode::HEARTBEAT_TIMEOUT, call<kConnection, &ConnectionStatuses::onHeartbeatTimeout>},
    {MsgCode::UPDATE_CLIENT_IP, call<kConnection, &ConnectionStatuses::onClientAddress>},

    {MsgCode::NEED_SELECT_AUTH_TYPE, call<kLogin, &LoginStatuses::onNeedSelectAuthType>,
     When::kSession},
    {MsgCode::NEED_SMS_AUTH_CODE, call<kLogin, &LoginStatuses::onNeedAuthCode>, When::kSession},
    {MsgCode::NEED_TOKEN_AUTH_CODE, call<kLogin, &LoginStatuses::onNeedAuthCode>, When::kSession},
    {MsgCode::NEED_EMAIL_AUTH_CODE, call<kLogin, &LoginStatuses::onNeedAuthCode>, When::kSession},
    {MsgCode::SMS_AUTH_CODE_CHECK_OK, call<kLogin, &LoginStatuses::onUnawaitedAnswer>},
    {MsgCode::TOKEN_AUTH_CODE_CHECK_OK, call<kLogin, &LoginStatuses::onUnawaitedAnswer>},
    {MsgCode::EMAIL_AUTH_CODE_CHECK_OK, call<kLogin, &LoginStatuses::onUnawaitedAnswer>},
    {MsgCode::WRONG_AUTH_CODE, call<kLogin, &LoginStatuses::onUnawaitedAnswer>},
    {MsgCode::ERR_SMS_CODE, call<kLogin, &LoginStatuses::onUnawaitedAnswer>},
    {MsgCode::ERR_EMAIL_AUTH_CODE, call<kLogin, &LoginStatuses::onUnawaitedAnswer>},
    {MsgCode::ERR_AUTH_CODE_RETRY_LIMIT, call<kLogin, &LoginStatuses::onAuthCodeRetryLimit>,
     When::kSession},
    {MsgCode::ERR_AUTH_CODE_REAPPLY_LIMIT, call<kLogin, &LoginStatuses::onAuthCodeRetryLimit>,
     When::kSession},
    {MsgCode::NEED_CHANGE_PWD, call<kLogin, &LoginStatuses::HandleChangePWD>, When::kSession},
    {MsgCode::CHANGE_PWD_SUCCESS, call<kLogin, &LoginStatuses::HandleChangePWD>, When::kSession},
    {MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD, call<kLogin, &LoginStatuses::onPasswordRefused>,
     When::kSession},
    {MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE, call<kLogin, &LoginStatuses::onPasswordRefused>,
     When::kSession},
    {MsgCode::AUTH_DATA, call<kLogin, &LoginStatuses::HandleAuthData>, When::kSession},
    {MsgCode::ERR_AUTH_USER_ACCOUNT_LOCK, call<kLogin, &LoginStatuses::onAccountLocked>,
     When::kSession},
    {MsgCode::SSL_CERT_YET_VALID, call<kLogin, &LoginStatuses::onServerCertificate>,
     When::kSession},
    {MsgCode::SSL_CERT_EXPIRED, call<kLogin, &LoginStatuses::onServerCertificate>, When::kSession},
    {MsgCode::OAUTH_PAGE, call<kLogin, &LoginStatuses::onOauthPage>, When::kSession},

    {MsgCode::KEY_EXCHANGE_DATA, call<kPages, &PageStatuses::onKeyExchangeData>, When::kSession},
    {MsgCode::RESOURCE_LIST, call<kPages, &PageStatuses::onResourceList>, When::kSession},
    {MsgCode::URL_REDIRECT_ENABLE, call<kPages, &PageStatuses::onUrlRedirect>, When::kSession},
    {MsgCode::UPDATE_RESOURCE_PORTAL_STATIC_FILE, call<kPages, &PageStatuses::onPortalFiles>},

    {MsgCode::CERT_REQUEST, call<kSigning, &SigningStatuses::HandleSignRequest>, When::kSession},
};

}  // namespace

// Support asks for the number, whatever language the text is in.
void LogStatus(MsgCode code) {
    Log().info("Recv status {} [{}] in ui", static_cast<int>(code),
               common::g_IPCMessageMap.Name(code));
}

std::vector<MsgCode> StatusTable::Codes() {
    std::vector<MsgCode> codes;
    for (Row const& row : kRows) {
        codes.push_back(row.code);
    }
    return codes;
}

void StatusTable::HandleCommonReplyData(Data const& data) {
    // Held here: a box below may run the event loop while the profile is deleted.
    std::shared_ptr<Profile> const profile = core_.Addressee(data.profileName);
    if (!profile) {
        return;
    }
    LogStatus(data.statusCode);
    auto const* const row = std::find_if(std::begin(kRows), std::end(kRows), [&data](Row const& r) {
        return r.code == data.statusCode;
    });
    bool const known = row != std::end(kRows);
    bool const always = known && row->when == When::kAlways;
    if (!always && core_.state.OfAttemptBefore()) {
        Log().info("That was of the attempt before");
    } else if (core_.conversation.OnAnswer(data.statusCode)) {
        return;
    } else if (common::Show const show = common::g_IPCMessageMap.Get(data.statusCode).show;
               show != common::Show::kNone) {
        failures_.HandleErrMsg(data, show, handlers_.login.TailOf(data.statusCode, profile));
    } else if (!known) {
        failures_.HandleUnmarked(data);
    } else if (!always && !core_.state.SessionStands()) {
        Log().debug("The session is over");
    } else {
        row->handle(handlers_, data, *profile);
    }
}

}  // namespace zorvanelink::ui
