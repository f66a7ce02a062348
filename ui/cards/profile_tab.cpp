#include "ui/cards/profile_tab.h"

#include <QEvent>
#include <QStyle>

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "ui/text/texts.h"
#include "ui/widgets/elide.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {

using common::MsgCode;
using components::logger::Log;

namespace {

constexpr char const* kDisabledStyle = "background-color: #E8E8E8; color: #CCCCCC; border-radius:4";

char const* nameOf(ConnectStatus status) {
    switch (status) {
        case ConnectStatus::Disconnected:
            return "DISCONNECT";
        case ConnectStatus::Connecting:
            return "CONNECTING";
        case ConnectStatus::PrepareReconnecting:
            return "Prepare RECONNECTING";
        case ConnectStatus::Reconnecting:
            return "RECONNECTING";
        case ConnectStatus::Connected:
            return "CONNECTED";
    }
    return "UNKNOWN";
}

}  // namespace

void ProfileTab::SetConnButtonDisableTime(std::chrono::milliseconds time) {
    connButtonDisableMs = static_cast<std::int32_t>(time.count());
}

void ProfileTab::SetOtherPending(bool pending) {
    if (std::exchange(otherPending_, pending) != pending) {
        render();
    }
}

void ProfileTab::SetAdapterUsable(bool usable) {
    if (std::exchange(adapterUsable_, usable) != usable) {
        render();
    }
}

void ProfileTab::SetSelected(bool selected) {
    selected_ = selected;
    updateMenu();
    update();
}

void ProfileTab::Start(bool retry) {
    bool queryAuthType = false;
    if (!retry) {
        // A password that was typed for one attempt is asked for again.
        if (profile->tempCredential && !profile->rememberPassword) {
            Log().debug("Clear password when not remember");
            profile->password.clear();
        }
        queryAuthType = !profile->keepAuthType || profile->authType == SupportedAuthType::kNone;
    }
    profile->tempCredential = !profile->rememberPassword;
    g_running_client = 1;
    Q_EMIT StartConnect(QString::fromStdString(profile->name), queryAuthType);
    Log().info("start connect in profile tab");
}

void ProfileTab::Stop() {
    Q_EMIT StopConnect(QString::fromStdString(profile->name), true);
    g_running_client = 0;
    Log().info("stop connect in profile tab");
}

void ProfileTab::onConnButtonTriggered() {
    CardAction const action = action_;
    AwaitStatus();
    setFocus();
    Q_EMIT Pending(QString::fromStdString(profile->name), true);
    if (action == CardAction::kConnect) {
        Start(false);
    } else {
        Stop();
    }
}

void ProfileTab::AwaitStatus() {
    if (pending_) {
        return;
    }
    pending_ = true;
    ConnectButtonEnable(false);
    menu_panel_->setEnabled(false);
    updateMenu();
    connButtonDisableTimer->start(connButtonDisableMs);
}

void ProfileTab::onStartConnect(QString const&, bool) {
    Start(true);
}

void ProfileTab::onAutoLogin(QString const& name) {
    if (name.toStdString() == profile->name) {
        Log().info("auto login profile_name: {}", profile->name);
        conn_button_->click();  // a grey one does nothing
    }
}

void ProfileTab::ConnectButtonEnable(bool enable) {
    conn_button_->setEnabled(enable);
    QString const style = enable ? QString() : QString::fromLatin1(kDisabledStyle);
    if (conn_button_->styleSheet() != style) {
        conn_button_->setStyleSheet(style);
    }
    if (enable) {
        ConnButtonDisableTimerStop();
    }
}

void ProfileTab::ConnButtonDisableTimerStop() {
    connButtonDisableTimer->stop();
}

void ProfileTab::onConnButtonDisableTimerTimeout() {
    pending_ = false;
    ConnectButtonEnable(true);
    updateMenu();
    Q_EMIT Pending(QString::fromStdString(profile->name), false);
}

void ProfileTab::NotifyConnectStatusTriggered(QString const& name, ConnectStatus status) {
    if (name.toStdString() == profile->name) {
        onOwnStatus(status);
    } else {
        onOtherStatus(status);
    }
}

void ProfileTab::onOwnStatus(ConnectStatus status) {
    SetUserName(profile->userName);
    g_running_client = status == ConnectStatus::Disconnected ? 0 : 1;
    Log().info("client current connect status: {}", nameOf(status));
    if (status > ConnectStatus::Connected) {
        return;
    }
    status_ = status;
    pending_ = false;
    otherRuns_ = false;
    otherPending_ = false;
    render();
}

void ProfileTab::onOtherStatus(ConnectStatus status) {
    otherRuns_ = status != ConnectStatus::Disconnected;
    otherPending_ = false;
    Log().debug("conn_button_->setEnabled({})", !otherRuns_);
    render();
}

void ProfileTab::render() {
    CardView const view = cardViewFor(status_, otherRuns_ || otherPending_, adapterUsable_);
    renderState(view);
    renderButton(view);
    menu_panel_->setEnabled(view.menuEnabled && !pending_);
    updateMenu();
    placeTexts();
}

void ProfileTab::renderState(CardView const& view) {
    stateLabel_->setVisible(view.stateText.has_value());
    stateLamp_->setVisible(view.lamp != nullptr);
    stateLabel_->setText(view.stateText ? GetTrMsg(*view.stateText) : QString());
    stateLabel_->setProperty("state", QLatin1String(view.stateName));
    stateLabel_->style()->polish(stateLabel_);
    if (view.lamp != nullptr) {
        stateLamp_->setPixmap(
            LoadImage(QStringLiteral(":/assets/images/%1.png").arg(QLatin1String(view.lamp))));
    }
    setAccessibleDescription(stateLabel_->text());
}

void ProfileTab::renderButton(CardView const& view) {
    bool const primary = view.action == CardAction::kConnect;
    action_ = view.action;
    conn_button_->setText(GetTrMsg(view.buttonText));
    conn_button_->setAccessibleName(
        QStringLiteral("%1 %2").arg(conn_button_->text(), QString::fromStdString(profile->name)));
    if (conn_button_->property("primary").toBool() != primary) {
        conn_button_->setProperty("primary", primary);
        conn_button_->style()->polish(conn_button_);
    }
    if (pending_) {
        return;
    }
    if (view.buttonEnabled) {
        ConnectButtonEnable(*view.buttonEnabled);
    }
}

void ProfileTab::MenuPanelBtnClicked() {
    QString const name = QString::fromStdString(profile->name);
    QString const button = sender() != nullptr ? sender()->objectName() : QString();
    if (button == QLatin1String("mod_config_button_")) {
        Log().info("Modify connect info: {}", profile->name);
        Q_EMIT ModifyConnectionInfo(name);
    } else if (button == QLatin1String("del_config_button_")) {
        Log().info("Delete connect info: {}", profile->name);
        Q_EMIT DeleteConnectionInfo(name);
    } else if (button == QLatin1String("forgot_pwd_button_")) {
        Log().info("Push Browser for change passwd");
        Q_EMIT ForgotPassword(QString::fromStdString(profile->forgotPwdUrl));
    } else {
        Log().warning("unknown operation");
    }
}

}  // namespace zorvanelink::ui
