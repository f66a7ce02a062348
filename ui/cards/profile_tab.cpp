#include "ui/cards/profile_tab.h"

#include <QEvent>
#include <QStyle>

#include "components/logger/logger.h"
#include "ui/text/texts.h"
#include "ui/widgets/elide.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {

using common::MsgCode;
using components::logger::Log;

namespace {

constexpr char const* kDisabledStyle = "background-color: #E8E8E8; color: #CCCCCC; border-radius:4";

}  // namespace

void ProfileTab::SetSelected(bool selected) {
    selected_ = selected;
    updateMenu();
    update();
}

void ProfileTab::onConnButtonTriggered() {
    QString const name = QString::fromStdString(profile->name);
    setFocus();
    if (view_.action == CardAction::kConnect) {
        Q_EMIT StartConnect(name);
        Log().info("start connect in profile tab");
    } else {
        Q_EMIT StopConnect(name);
        Log().info("stop connect in profile tab");
    }
}

void ProfileTab::Press() {
    conn_button_->click();
}

void ProfileTab::ConnectButtonEnable(bool enable) {
    conn_button_->setEnabled(enable);
    QString const style = enable ? QString() : QString::fromLatin1(kDisabledStyle);
    if (conn_button_->styleSheet() != style) {
        conn_button_->setStyleSheet(style);
    }
}

void ProfileTab::Render(CardView const& view) {
    Shown const shown{profile->name,     profile->server,    profile->port,
                      profile->userName, profile->loginMode, !profile->forgotPwdUrl.empty()};
    bool const same_profile = shown == shown_;
    bool const same_state = view == view_ && !shown_.name.empty();
    if (same_profile && same_state) {
        return;
    }
    if (view.logName != view_.logName && !view_.logName.empty()) {
        Log().info("client current connect status: {}", view.logName);
    }
    view_ = view;
    shown_ = shown;
    if (!same_profile) {
        renderProfile();
    }
    if (!same_state) {
        renderState();
        renderButton();
    }
    menu_panel_->setEnabled(view.menuEnabled);
    updateMenu();
    placeTexts();
}

void ProfileTab::renderState() {
    bool const lit = !view_.lamp.empty();
    stateLabel_->setVisible(view_.stateText.has_value());
    stateLamp_->setVisible(lit);
    stateLabel_->setText(view_.stateText ? GetTrMsg(*view_.stateText) : QString());
    stateLabel_->setProperty("state", QLatin1String(view_.stateName.data()));
    stateLabel_->style()->polish(stateLabel_);
    if (lit) {
        stateLamp_->setPixmap(LoadImage(
            QStringLiteral(":/assets/images/%1.png").arg(QLatin1String(view_.lamp.data()))));
    }
    setAccessibleDescription(stateLabel_->text());
}

void ProfileTab::renderButton() {
    bool const primary = view_.action == CardAction::kConnect;
    conn_button_->setText(GetTrMsg(view_.buttonText));
    conn_button_->setAccessibleName(
        QStringLiteral("%1 %2").arg(conn_button_->text(), QString::fromStdString(profile->name)));
    if (conn_button_->property("primary").toBool() != primary) {
        conn_button_->setProperty("primary", primary);
        conn_button_->style()->polish(conn_button_);
    }
    ConnectButtonEnable(view_.buttonEnabled);
}

void ProfileTab::SetPages(std::vector<SessionPage> const& pages) {
    if (pages == pages_) {
        return;
    }
    pages_ = pages;
    for (QToolButton* const button : std::exchange(pageButtons_, {})) {
        button->deleteLater();  // it may be the one that was pressed
        button->hide();
    }
    for (SessionPage const& page : pages_) {
        pageButtons_.push_back(addPageButton(page));
    }
    placeTexts();
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
