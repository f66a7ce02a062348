#include "ui/session/connection_statuses.h"

#include <QApplication>
#include <QWidget>

#include "components/logger/logger.h"
#include "ui/session/page_statuses.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {

using components::logger::Log;

void ConnectionStatuses::onConnecting(Data const& data, Profile& profile) {
    ConnectionState& state = core_.state;
    if (!state.connectingProfileName.empty() && state.connectingProfileName != data.profileName) {
        Log().debug("Recv connecting status, ignore name {}", data.profileName);
        return;
    }
    Log().info("Profile [{}] is connecting ", profile.name);
    state.currentProfileName = data.profileName;
    state.queryingAuthType = profile.authType == SupportedAuthType::kNone;
    if (!state.StopSent()) {
        state.stop.reset();  // what comes from here on is of this attempt
    }
    core_.UpdateConnectStatus(profile.name, ConnectStatus::Connecting);
}

void ConnectionStatuses::onOnline(Data const& data, Profile& profile) {
    Log().info("Profile [{}] is online ", profile.name);
    ConnectionState& state = core_.state;
    core_.conversation.EndLogin();
    ++state.attempt;
    if (!data.receivedUserName.empty()) {
        core_.context.receivedUserName = data.receivedUserName;
    }
    state.pendingWarnings.assign(data.warningCode.begin(), data.warningCode.end());
    core_.context.connectTime = QDateTime::currentDateTime();
    core_.secrets.Forget();
    state.untoldFailure.clear();
    state.endReason.clear();
    bool const again = std::exchange(state.beenOnline, true) || state.reconnectingSeen;
    bool const first = !again && !state.StopSent();
    core_.UpdateConnectStatus(profile.name, ConnectStatus::Connected);
    Attempt const here = core_.Now();
    if (first) {
        pages_.OpenAfterLogin();
    }
    if (first && here.Still()) {
        SetWindowMinimize();
    }
}

// A window in the tray stays there, and what is being read or answered stays in view.
void ConnectionStatuses::SetWindowMinimize() {
    if (core_.config.autoMinimize && core_.window != nullptr && core_.window->isVisible() &&
        QApplication::activeModalWidget() == nullptr) {
        core_.window->showMinimized();
    }
}

void ConnectionStatuses::onOffline(Data const& /*data*/, Profile& profile) {
    ConnectionState& state = core_.state;
    if (state.OfAttemptBefore()) {
        Log().info("Profile [{}] is offline, of the attempt before", profile.name);
        state.stop.reset();
        return;
    }
    Log().info("Profile [{}] is offline ", profile.name);
    // Who chooses a type starts anew, or goes down with the dialog; no stop is owed for that.
    if (core_.conversation.OutlivesSession()) {
        state.stop.reset();
        state.manualDisconnected = true;
        return;
    }
    ++state.attempt;
    std::string const name = profile.name;
    bool const users_end = state.StopSent();
    if (core_.conversation.Stands() && !state.beenOnline && state.endReason.empty() &&
        state.untoldFailure.empty()) {
        core_.NoteReason(GetTrMsg(common::MsgCode::UI_INFO_CONNECTION_TERMINATED));
    }
    core_.UpdateConnectStatus(name, ConnectStatus::Disconnected);
    flow_.StopConnect();
    if (users_end) {
        state.stop.reset();
    }
    state.currentProfileName.clear();
    if (!users_end) {
        failures_.TellUntoldFailure();
    }
}

void ConnectionStatuses::onReconnecting(Data const& /*data*/, Profile& profile) {
    Log().info("Profile [{}] is reconnecting ", profile.name);
    core_.UpdateConnectStatus(profile.name, ConnectStatus::Reconnecting);
}

void ConnectionStatuses::onPrepareReconnecting(Data const& /*data*/, Profile& profile) {
    Log().info("Profile [{}] is prepare reconnecting ", profile.name);
    core_.UpdateConnectStatus(profile.name, ConnectStatus::PrepareReconnecting);
}

void ConnectionStatuses::onHeartbeatTimeout(Data const& /*data*/, Profile& profile) {
    Log().info("Profile [{}] heartbeat timeout ", profile.name);
}

void ConnectionStatuses::onClientAddress(Data const& data, Profile& /*profile*/) {
    Log().info("Recv client ip [{}]", data.updateClientPublicIP);
    core_.context.netConfig.clientPublicIP = data.updateClientPublicIP;
    Q_EMIT core_.ClientAddressChanged(QString::fromStdString(data.updateClientPublicIP));
}

void ConnectionStatuses::HandlePushReportData(core::sslvpn::CLMsgSessionStatus const& data) {
    Log().info("Recv session status [{}], sub code [{}], ip [{}]", data.status, data.subCode,
               data.connecttingIP);
    core_.conversation.StopDeadline();
}

}  // namespace zorvanelink::ui
