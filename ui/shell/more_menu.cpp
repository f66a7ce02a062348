#include "ui/shell/more_menu.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QShortcut>
#include <QTimer>
#include <QUrl>

#include "app/environment/globals.h"
#include "app/environment/paths.h"
#include "components/logger/logger.h"
#include "components/version/version.h"
#include "core/clmsg_json.h"
#include "ui/session/start_message.h"
#include "ui/settings/settings_dialog.h"
#include "ui/text/texts.h"
#include "ui/widgets/style.h"
#include "ui/widgets/zvl_message_box.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using components::logger::LOG_LEVEL;

constexpr int kUpdateCheckPauseMs = 5000;
constexpr int kGap = 2;  // pixels between the button and its menu
constexpr int kCopyrightYear = 2026;

// By level.
QStringList levelTexts() {
    return {Translate(QT_TRANSLATE_NOOP("ui", "Verbose")),
            Translate(QT_TRANSLATE_NOOP("ui", "Debug")),
            Translate(QT_TRANSLATE_NOOP("ui", "Information")), GetTrMsg(MsgCode::UI_WARNING),
            GetTrMsg(MsgCode::UI_ERROR)};
}

}  // namespace

MoreMenu::MoreMenu(Services services)
    : button_(services.button),
      config_(services.config),
      prompts_(services.prompts),
      send_(std::move(services.send)),
      levels_(nullptr) {
    InitMoreMenu();
    connect(&button_, &QToolButton::clicked, this, &MoreMenu::onButtonMoreClicked);
    for (QKeySequence const& keys :
         {QKeySequence(Qt::Key_F10), QKeySequence(QStringLiteral("Alt+M"))}) {
        connect(new QShortcut(keys, button_.window()), &QShortcut::activated, &button_,
                &QToolButton::click);
    }
}

void MoreMenu::InitMoreMenu() {
    QString const style = LoadStyle(QStringLiteral("menu"));
    menu_.setStyleSheet(style);
    menu_.setAccessibleName(button_.accessibleName());
    button_.setStyleSheet(QStringLiteral("QToolButton::menu-indicator{image: none}"));
    button_.setIcon(LoadImage(QStringLiteral(":/assets/images/more.png")));

    levelMenu_.setTitle(GetTrMsg(MsgCode::UI_TR_LOG_LEVEL));
    levelMenu_.setStyleSheet(style);
    addLogLevels();
    menu_.addMenu(&levelMenu_);
    updateCheck_ = addAction("more_update_", GetTrMsg(MsgCode::UI_TR_UPDATE_CHECK),
                             &MoreMenu::onUpdateCheckItem);
    updateCheck_->setVisible(!AppCtrl::Instance().msiVersion);
    addAction("more_settings_", GetTrMsg(MsgCode::UI_INFO_SETTING),
              &MoreMenu::onActionSettingsTriggered);
    addAction("more_about_", GetTrMsg(MsgCode::UI_LABEL_ABOUT), &MoreMenu::onActionAboutTriggered);
    addAction("more_help_", GetTrMsg(MsgCode::UI_INFO_HELP), &MoreMenu::onActionHelpTriggered);
    menu_.addSeparator();
    QAction* const quit = addAction("more_quit_", GetTrMsg(MsgCode::UI_INFO_QUIT), &MoreMenu::Quit);
    quit->setShortcut(QKeySequence(QStringLiteral("Ctrl+Q")));
    quit->setShortcutVisibleInContextMenu(true);
    button_.window()->addAction(quit);  // while the menu is closed as well
}

QAction* MoreMenu::addAction(char const* name, QString const& text, void (MoreMenu::*slot)()) {
    auto* const action = new QAction(text, button_.window());
    action->setObjectName(QLatin1String(name));
    menu_.addAction(action);
    // Queued: a box runs an event loop, and the menu is to be gone by then.
    connect(action, &QAction::triggered, this, slot, Qt::QueuedConnection);
    return action;
}

void MoreMenu::addLogLevels() {
    int level = 0;
    for (QString const& text : levelTexts()) {
        QAction* const action = levelMenu_.addAction(text);
        action->setCheckable(true);
        action->setData(level++);
        levels_.addAction(action);
    }
    connect(&levelMenu_, &QMenu::aboutToShow, this, &MoreMenu::markLogLevel);
    connect(&levels_, &QActionGroup::triggered, this, &MoreMenu::onLogLevelChosen);
}

void MoreMenu::markLogLevel() {
    for (QAction* const action : levels_.actions()) {
        action->setChecked(action->data().toInt() == g_log_level);
    }
}

void MoreMenu::onLogLevelChosen(QAction const* action) {
    g_log_level = action->data().toInt();
    Log().setLogLevel(static_cast<LOG_LEVEL>(g_log_level));
    config_.logFilter = g_log_level;
    config_.logLevel = QString::fromStdString(Int2LogString(g_log_level));
    config_.Save();
    SendLogLevelToService(Int2LogString(g_log_level));
}

void MoreMenu::SendLogLevelToService(std::string const& level) {
    bool const sent = send_(QString::fromStdString(core::sslvpn::CLMsgJson::BuildLogLevel(level)));
    Log().info("Log level {}, service told: {}", level, sent);
}

void MoreMenu::onButtonMoreClicked() {
    Log().info("More...");
    // Under the button, and inside the window at its right.
    QPoint const corner = button_.mapToGlobal(button_.rect().bottomRight());
    menu_.popup({corner.x() - menu_.sizeHint().width() + 1, corner.y() + kGap});
}

void MoreMenu::onUpdateCheckItem() {
    Log().info("Check for updates: this build has no inquiry yet");
    onUpdateCheckTimer();
}

void MoreMenu::onUpdateCheckTimer() {
    updateCheck_->setEnabled(false);
    QTimer::singleShot(kUpdateCheckPauseMs, Qt::CoarseTimer, this,
                       &MoreMenu::onUpdateCheckItemTimerOut);
}

void MoreMenu::onUpdateCheckItemTimerOut() {
    updateCheck_->setEnabled(true);
}

void MoreMenu::onActionSettingsTriggered() {
    SettingsDialog(config_, prompts_, button_.window()).exec();
}

void MoreMenu::onActionAboutTriggered() {
    Log().info("About...");
    QString const version = Translate(QT_TRANSLATE_NOOP("ui", "Version: %1\nBuildID: %2"))
                                .arg(QString::fromStdString(components::version::GetVersion()),
                                     QString::fromStdString(components::version::GetBuildId()));
    QString const name = GetTrMsg(MsgCode::UI_INFO_ZORVANE_LINK);
    BoxRequest request;
    request.parent = button_.window();
    request.title = GetTrMsg(MsgCode::UI_LABEL_ABOUT);
    QString const details =
        QStringList{version, GetTrMsg(MsgCode::UI_TR_COPYRIGHT).arg(kCopyrightYear),
                    GetTrMsg(MsgCode::UI_TR_QT_LGPL_DESP).arg(QLatin1String(qVersion()))}
            .join(QLatin1Char('\n'));
    request.text = name + QLatin1String(kMessageSeparator) + details;
    request.buttons = {GetTrMsg(MsgCode::UI_INFO_OK), Translate(QT_TRANSLATE_NOOP("ui", "Copy"))};
    constexpr int kCopy = 1;
    if (prompts_.Box(request) == kCopy) {
        QGuiApplication::clipboard()->setText(name + QLatin1Char('\n') + details);
    }
}

void MoreMenu::onActionHelpTriggered() {
    Log().info("Help...");
    BoxRequest request;
    request.parent = button_.window();
    request.title = GetTrMsg(MsgCode::UI_INFO_HELP);
    request.text =
        Translate(
            QT_TRANSLATE_NOOP("ui",
                              "Your administrator can tell you the gateway, your account and "
                              "the certificate to use.#@@#Support may ask for the log files:\n%1"))
            .arg(GetAppLogDirPath());
    request.buttons = {GetTrMsg(MsgCode::UI_INFO_OK),
                       Translate(QT_TRANSLATE_NOOP("ui", "Open Log Folder"))};
    constexpr int kOpenFolder = 1;
    if (prompts_.Box(request) == kOpenFolder) {
        prompts_.OpenUrl(QUrl::fromLocalFile(GetAppLogDirPath()));
    }
}

}  // namespace zorvanelink::ui
