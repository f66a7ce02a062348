#include "ui/cards/profile_tab.h"

#include <QEvent>
#include <QStyle>

#include "components/logger/logger.h"
#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {

using common::MsgCode;
using components::logger::Log;

void ProfileTab::SetSelected(bool selected, QWidget* before) {
    selected_ = selected;
    before_ = before;
    orderTabs();
    updateMenu();
    update();
}

void ProfileTab::orderTabs() {
    std::vector<QWidget*> buttons{mod_config_button_, del_config_button_, forgot_pwd_button_};
    buttons.insert(buttons.end(), pageButtons_.begin(), pageButtons_.end());
    buttons.push_back(conn_button_);
    QWidget* last = before_;
    for (QWidget* const button : buttons) {
        button->setFocusPolicy(selected_ ? Qt::TabFocus : Qt::NoFocus);
        if (selected_ && last != nullptr) {
            setTabOrder(last, button);
            last = button;
        }
    }
}

void ProfileTab::SetFocused(bool focused) {
    focused_ = focused;
    update();
}

bool ProfileTab::Matches(QString const& text) const {
    auto const& texts = {profile->name, profile->server, profile->userName};
    return std::any_of(texts.begin(), texts.end(), [&text](std::string const& shown) {
        return QString::fromStdString(shown).contains(text, Qt::CaseInsensitive);
    });
}

void ProfileTab::onConnButtonTriggered() {
    QString const name = QString::fromStdString(profile->name);
    Q_EMIT Chosen();
    // The button is about to turn grey, and would hand the focus to whatever comes next.
    setFocus();
    if (view_.action == CardAction::kConnect) {
        Q_EMIT StartConnect(name);
    } else {
        Q_EMIT StopConnect(name);
    }
}

void ProfileTab::Press() {
    conn_button_->click();
}

void ProfileTab::PressModify() {
    mod_config_button_->click();
}

void ProfileTab::PressDelete() {
    del_config_button_->click();
}

void ProfileTab::ConnectButtonEnable(bool enable) {
    if (!view_.current && conn_button_->isEnabled() != enable) {
        Log().info("conn_button_->setEnabled({})", enable);
    }
    conn_button_->setEnabled(enable);
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
    renderState();
    renderButton();
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
    nameButtons();
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
    for (QPushButtonExt* const button : std::exchange(pageButtons_, {})) {
        button->deleteLater();  // it may be the one that was pressed
        button->hide();
    }
    for (SessionPage const& page : pages_) {
        pageButtons_.push_back(addPageButton(page));
    }
    nameButtons();
    orderTabs();
    placeTexts();
}

// What stands on twenty cards says of which.
void ProfileTab::nameButtons() {
    QString const tail = QLatin1Char(' ') + accessibleName();
    conn_button_->setAccessibleName(conn_button_->text() + tail);
    std::vector<QPushButtonExt*> icons{mod_config_button_, del_config_button_, forgot_pwd_button_};
    icons.insert(icons.end(), pageButtons_.begin(), pageButtons_.end());
    for (QPushButtonExt* const icon : icons) {
        icon->setAccessibleName(icon->toolTip() + tail);
    }
}

void ProfileTab::MenuPanelBtnClicked() {
    QString const name = QString::fromStdString(profile->name);
    QString const button = sender() != nullptr ? sender()->objectName() : QString();
    Q_EMIT Chosen();
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
