#include "ui/session/status_handler.h"

#include <QDateTime>

#include "app/environment/globals.h"
#include "components/logger/logger.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

}  // namespace

StatusHandler::Row const StatusHandler::kRows[] = {
    {MsgCode::CONNECTING, &StatusHandler::onConnecting},
    {MsgCode::ONLINE, &StatusHandler::onOnline},
    {MsgCode::OFFLINE, &StatusHandler::onOffline},
    {MsgCode::PREPARE_RECONNECTING, &StatusHandler::onPrepareReconnecting},
    {MsgCode::RECONNECTING, &StatusHandler::onReconnecting},
    {MsgCode::HEARTBEAT_TIMEOUT, &StatusHandler::onHeartbeatTimeout},
    {MsgCode::UPDATE_CLIENT_IP, &StatusHandler::onClientAddress},

    {MsgCode::NEED_SELECT_AUTH_TYPE, &StatusHandler::onNeedSelectAuthType, When::kSession},
    {MsgCode::NEED_SMS_AUTH_CODE, &StatusHandler::onNeedAuthCode, When::kSession},
    {MsgCode::NEED_TOKEN_AUTH_CODE, &StatusHandler::onNeedAuthCode, When::kSession},
    {MsgCode::NEED_EMAIL_AUTH_CODE, &StatusHandler::onNeedAuthCode, When::kSession},
    {MsgCode::SMS_AUTH_CODE_CHECK_OK, &StatusHandler::onAuthCodeRight},
    {MsgCode::TOKEN_AUTH_CODE_CHECK_OK, &StatusHandler::onAuthCodeRight},
    {MsgCode::EMAIL_AUTH_CODE_CHECK_OK, &StatusHandler::onAuthCodeRight},
    {MsgCode::WRONG_AUTH_CODE, &StatusHandler::onAuthCodeWrong},
    {MsgCode::ERR_SMS_CODE, &StatusHandler::onAuthCodeWrong},
    {MsgCode::ERR_EMAIL_AUTH_CODE, &StatusHandler::onAuthCodeWrong},
    {MsgCode::ERR_AUTH_CODE_RETRY_LIMIT, &StatusHandler::onAuthCodeLimit},
    {MsgCode::ERR_AUTH_CODE_REAPPLY_LIMIT, &StatusHandler::onAuthCodeLimit},
    {MsgCode::NEED_CHANGE_PWD, &StatusHandler::HandleChangePWD, When::kSession},
    {MsgCode::WRONG_USR_PWD_IN_CHANGE_PWD, &StatusHandler::onPasswordRefused},
    {MsgCode::DISALLOW_CHG_PASS_IN_ONLINE_STATE, &StatusHandler::onPasswordRefused},
    {MsgCode::AUTH_DATA, &StatusHandler::HandleAuthData, When::kSession},
    {MsgCode::ERR_AUTH_USER_ACCOUNT_LOCK, &StatusHandler::onAccountLocked, When::kSession},
    {MsgCode::SSL_CERT_YET_VALID, &StatusHandler::onServerCertificate, When::kSession},
    {MsgCode::SSL_CERT_EXPIRED, &StatusHandler::onServerCertificate, When::kSession},
    {MsgCode::CERT_REQUEST, &StatusHandler::HandleSignRequest, When::kSession},

    {MsgCode::KEY_EXCHANGE_DATA, &StatusHandler::onKeyExchangeData, When::kSession},
    {MsgCode::RESOURCE_LIST, &StatusHandler::onResourceList, When::kSession},
    {MsgCode::URL_REDIRECT_ENABLE, &StatusHandler::onUrlRedirect, When::kSession},
    {MsgCode::OAUTH_PAGE, &StatusHandler::onOauthPage, When::kSession},
    {MsgCode::UPDATE_RESOURCE_PORTAL_STATIC_FILE, &StatusHandler::onPortalFiles},
};

// The tails of three failures: a login that the gateway refused is begun again, another way.
struct StatusHandler::Tail {
    MsgCode code;
    bool runs;
    bool wasQuery;
    std::uint64_t starts;
    OnceSecrets once;
};

StatusHandler::StatusHandler(Services services, QObject* parent)
    : QObject(parent),
      state_(services.state),
      updater_(services.updater),
      flow_(services.flow),
      failures_(services.failures),
      config_(services.config),
      prompts_(services.prompts),
      dialogs_(services.dialogs),
      window_(services.window),
      thirdParty_(flow_, failures_, prompts_, window_) {
    connect(&flow_, &ConnectFlow::NeedSelectAuthType, this, &StatusHandler::NeedSelectAuthType);
    connect(&flow_, &ConnectFlow::SessionEnded, this, &StatusHandler::RefreshTrayMenu);
    connect(&failures_, &FailurePresenter::ChangePWDRetSignal, this,
            &StatusHandler::ChangePWDRetSignal);
}

std::vector<MsgCode> StatusHandler::Codes() {
    std::vector<MsgCode> codes;
    for (Row const& row : kRows) {
        codes.push_back(row.code);
    }
    return codes;
}

std::shared_ptr<Profile> StatusHandler::Addressee(std::string const& profileName) const {
    std::shared_ptr<Profile> profile = flow_.RunningProfile();
    if (!profile) {
        Log().error("Can not get client");
        Log().debug("current client is offline");
        return nullptr;
    }
    if (profile->name != profileName) {
        Log().debug("current client profile name: {}", profile->name);
        Log().debug("object client profile name: {}", profileName);
        Log().debug("result: not match");
        return nullptr;
    }
    return profile;
}

bool StatusHandler::HandleCommonReplyData(Data const& data) {
    // Held here: a box below may run the event loop while the profile is deleted.
    std::shared_ptr<Profile> const profile = Addressee(data.profileName);
    if (!profile) {
        return false;
    }
    bool const session = !state_.offline && !state_.stopSent;
    Tail const tail{data.statusCode, session, profile->context.needQueryAuthType, state_.starts,
                    profile->context.once};
    if (failures_.HandleErrMsg(data)) {
        runTail(tail, *profile);
        return true;
    }
    Log().info("Recv status {} [{}] in ui", static_cast<int>(data.statusCode),
               common::g_IPCMessageMap.Name(data.statusCode));
    auto const* const row = std::find_if(std::begin(kRows), std::end(kRows), [&data](Row const& r) {
        return r.code == data.statusCode;
    });
    if (row != std::end(kRows)) {
        if (row->when == When::kSession && !session) {
            Log().debug("The session is over, ignore status {}", static_cast<int>(data.statusCode));
        } else {
            (this->*row->handle)(data, *profile);
        }
    } else if (!failures_.HandleUnmarked(data)) {
        Log().debug("Not supported status: {}", static_cast<int>(data.statusCode));
    }
    return true;
}

// The service's OFFLINE comes while the failure's box stands, or soon after it: what must not have
// happened meanwhile is another start.
void StatusHandler::runTail(Tail const& tail, Profile& profile) {
    if (!tail.runs || tail.starts != state_.starts || g_quit ||
        config_.GetProfile(profile.name).get() != &profile) {
        return;
    }
    switch (tail.code) {
        case MsgCode::ERR_LOGIN_MODE:
            if (!tail.wasQuery) {
                profile.authType = SupportedAuthType::kNone;
                flow_.onStartConnect(QString::fromStdString(profile.name), true);
            }
            break;
        case MsgCode::ERR_AUTH_USER_OR_PASS:
        case MsgCode::ERR_AUTH_BAD_CERT:
            giveBackRight(tail, profile);
            state_.currentProfileName = profile.name;
            Q_EMIT NeedSelectAuthType(!profile.keepAuthType);
            break;
        default:
            break;
    }
}

// What was right need not be typed again.
void StatusHandler::giveBackRight(Tail const& tail, Profile& profile) {
    auto const give = [](std::string const& once, std::string& stored) {
        if (stored.empty()) {
            stored = once;
        }
    };
    if (tail.code == MsgCode::ERR_AUTH_BAD_CERT) {
        give(tail.once.password, profile.password);
    } else {
        give(tail.once.tlsPin, profile.systemCert.pin);
        give(tail.once.gmPin, profile.gmCert.pin);
    }
    profile.context.once = {};
}

void StatusHandler::onOnline(Data const& data, Profile& profile) {
    Log().info("Profile [{}] is online ", profile.name);
    ++state_.attempt;
    if (!data.receivedUserName.empty()) {
        profile.context.receivedUserName = data.receivedUserName;
    }
    state_.pendingWarnings.assign(data.warningCode.begin(), data.warningCode.end());
    profile.context.connectTime = QDateTime::currentDateTime();
    profile.context.once = {};
    state_.beenOnline = true;
    state_.untoldFailure.clear();
    thirdParty_.Stop();
    bool const first = !state_.reconnectingSeen && !state_.stopSent;
    updater_.UpdateConnectStatus(profile.name, ConnectStatus::Connected);
    Q_EMIT RefreshTrayMenu();
    Q_EMIT CameOnline(first);
    if (first) {
        openPagesAfterLogin(profile);
    }
}

void StatusHandler::onOffline(Data const& /*data*/, Profile& profile) {
    if (flow_.BelongsToOldAttempt()) {
        Log().info("Profile [{}] is offline, of the attempt before", profile.name);
        return;
    }
    Log().info("Profile [{}] is offline ", profile.name);
    Q_EMIT UpdatePromptObsolete();
    thirdParty_.Stop();
    // Who chooses a type starts anew, or goes down with the dialog.
    if (dialogs_.authTypeDialog) {
        return;
    }
    g_running_client = 0;
    ++state_.attempt;
    std::string const name = profile.name;
    bool const users_end = state_.stopSent;
    updater_.UpdateConnectStatus(name, ConnectStatus::Disconnected);
    flow_.StopConnect();
    state_.currentProfileName.clear();
    if (!users_end) {
        failures_.TellUntoldFailure();
    }
}

void StatusHandler::onConnecting(Data const& data, Profile& profile) {
    if (!state_.connectingProfileName.empty() && state_.connectingProfileName != data.profileName) {
        Log().debug("Recv connecting status, ignore name {}", data.profileName);
        return;
    }
    Log().info("Profile [{}] is connecting ", profile.name);
    state_.currentProfileName = data.profileName;
    state_.queryingAuthType = profile.authType == SupportedAuthType::kNone;
    updater_.UpdateConnectStatus(profile.name, ConnectStatus::Connecting);
    Q_EMIT RefreshTrayMenu();
}

void StatusHandler::onReconnecting(Data const& /*data*/, Profile& profile) {
    Log().info("Profile [{}] is reconnecting ", profile.name);
    Q_EMIT UpdatePromptObsolete();
    updater_.UpdateConnectStatus(profile.name, ConnectStatus::Reconnecting);
    Q_EMIT RefreshTrayMenu();
}

void StatusHandler::onPrepareReconnecting(Data const& /*data*/, Profile& profile) {
    Log().info("Profile [{}] is prepare reconnecting ", profile.name);
    Q_EMIT ClearTrayMenuActions();
    updater_.UpdateConnectStatus(profile.name, ConnectStatus::PrepareReconnecting);
}

void StatusHandler::onHeartbeatTimeout(Data const& /*data*/, Profile& profile) {
    Log().info("Profile [{}] heartbeat timeout ", profile.name);
}

void StatusHandler::onClientAddress(Data const& data, Profile& profile) {
    Log().info("Recv client ip [{}]", data.updateClientPublicIP);
    profile.context.netConfig.clientPublicIP = data.updateClientPublicIP;
    Q_EMIT ClientAddressChanged(QString::fromStdString(data.updateClientPublicIP));
}

void StatusHandler::HandlePushReportData(core::sslvpn::CLMsgSessionStatus const& data) {
    Log().info("Recv session status [{}], sub code [{}], ip [{}]", data.status, data.subCode,
               data.connecttingIP);
    thirdParty_.Stop();
    Q_EMIT PushStatusArrived();
}

}  // namespace zorvanelink::ui
