#include "ui/session/status_handler.h"

#include <QDateTime>

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

}  // namespace

StatusHandler::Row const StatusHandler::kRows[] = {
    {MsgCode::HEARTBEAT_TIMEOUT, &StatusHandler::onHeartbeatTimeout},
    {MsgCode::ONLINE, &StatusHandler::onOnline},
    {MsgCode::OFFLINE, &StatusHandler::onOffline},
    {MsgCode::CONNECTING, &StatusHandler::onConnecting},
    {MsgCode::RECONNECTING, &StatusHandler::onReconnecting},
    {MsgCode::PREPARE_RECONNECTING, &StatusHandler::onPrepareReconnecting},
    {MsgCode::ERR_AUTH_USER_ACCOUNT_LOCK, &StatusHandler::onAccountLocked},
    {MsgCode::UPDATE_CLIENT_IP, &StatusHandler::onClientAddress},
    {MsgCode::UI_TR_VERITY_SERVER_CERTIFICATE_FAILED, &StatusHandler::onNothing},
};

StatusHandler::StatusHandler(ConnectionState& state, StatusUpdater& updater, ConnectFlow& flow,
                             FailurePresenter& failures, QObject* parent)
    : QObject(parent), state_(state), updater_(updater), flow_(flow), failures_(failures) {
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
    if (failures_.HandleErrMsg(data)) {
        return true;
    }
    Log().info("Recv status {} [{}] in ui", static_cast<int>(data.statusCode),
               common::g_IPCMessageMap.Name(data.statusCode));
    for (Row const& row : kRows) {
        if (row.code == data.statusCode) {
            (this->*row.handle)(data, *profile);
            return true;
        }
    }
    if (!failures_.HandleUnmarked(data)) {
        Log().debug("Not supported status: {}", static_cast<int>(data.statusCode));
    }
    return true;
}

void StatusHandler::onOnline(Data const& data, Profile& profile) {
    Log().info("Profile [{}] is online ", profile.name);
    ++state_.attempt;
    if (!data.receivedUserName.empty()) {
        profile.context.receivedUserName = data.receivedUserName;
    }
    state_.pendingWarnings.assign(data.warningCode.begin(), data.warningCode.end());
    profile.context.connectTime = QDateTime::currentDateTime();
    state_.beenOnline = true;
    state_.untoldFailure.clear();
    bool const first = !state_.reconnectingSeen;
    updater_.UpdateConnectStatus(profile.name, ConnectStatus::Connected);
    Q_EMIT CameOnline(first);
}

void StatusHandler::onOffline(Data const& /*data*/, Profile& profile) {
    if (flow_.BelongsToOldAttempt()) {
        Log().info("Profile [{}] is offline, of the attempt before", profile.name);
        return;
    }
    g_running_client = 0;
    Log().info("Profile [{}] is offline ", profile.name);
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
}

void StatusHandler::onReconnecting(Data const& /*data*/, Profile& profile) {
    Log().info("Profile [{}] is reconnecting ", profile.name);
    updater_.UpdateConnectStatus(profile.name, ConnectStatus::Reconnecting);
}

void StatusHandler::onPrepareReconnecting(Data const& /*data*/, Profile& profile) {
    Log().info("Profile [{}] is prepare reconnecting ", profile.name);
    updater_.UpdateConnectStatus(profile.name, ConnectStatus::PrepareReconnecting);
}

void StatusHandler::onHeartbeatTimeout(Data const& /*data*/, Profile& profile) {
    Log().info("Profile [{}] heartbeat timeout ", profile.name);
}

void StatusHandler::onAccountLocked(Data const& data, Profile& /*profile*/) {
    QString const until = QDateTime::currentDateTime()
                              .addSecs(data.accountLockSenconds)
                              .toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    std::uint64_t const attempt = state_.attempt;
    failures_.ShowPopMsgBox(BoxKind::kCritical, GetErrMsg(MsgCode::UI_ERROR),
                            GetErrMsg(MsgCode::UI_INFO_ACCOUNT_ABNORMAL_AND_LOCKED).arg(until),
                            GetErrMsg(MsgCode::UI_INFO_OK));
    if (attempt == state_.attempt) {
        flow_.StopConnect();
    }
}

void StatusHandler::onClientAddress(Data const& data, Profile& profile) {
    Log().info("Recv client ip [{}]", data.updateClientPublicIP);
    profile.context.netConfig.clientPublicIP = data.updateClientPublicIP;
    Q_EMIT ClientAddressChanged(QString::fromStdString(data.updateClientPublicIP));
}

// The box that the code's own row shows is all there is to it.
void StatusHandler::onNothing(Data const& /*data*/, Profile& /*profile*/) {
}

}  // namespace zorvanelink::ui
