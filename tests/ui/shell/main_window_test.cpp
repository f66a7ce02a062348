#include "ui/shell/main_window.h"

#include <gtest/gtest.h>

#include <QtTest/qtestspontaneevent.h>
#include <QRegularExpression>
#include <QtTest/QTest>

#include "app/environment/globals.h"
#include "app/environment/paths.h"
#include "core/clmsg_reply_json.h"
#include "tests/support/log_capture.h"
#include "tests/support/qt_helpers.h"
#include "tests/support/scripted_prompts.h"
#include "tests/support/stored_login.h"
#include "tools/support/fake_ipc.h"
#include "ui/editor/create_connect_dialog.h"
#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using test::Find;
using test::WaitFor;

class Shell : public testing::Test {
  protected:
    Shell() { QFile::remove(GetAppConfigFilePath()); }
    ~Shell() override { AppCtrl::Instance() = AppCtrl(); }

    void Add(char const* name) {
        config.AddProfile(test::StoredLogin(name), false);
        config.SetDefaultProfile(name);
    }
    MainWindow& Open() {
        Begin();
        EXPECT_TRUE(WaitFor([this] { return window->findChild<WaitForm*>()->isHidden(); }));
        return *window;
    }
    void Begin() {
        window.reset();
        g_quit = false;
        g_running_client = 0;
        config.Save();
        window = std::make_unique<MainWindow>(MainWindow::Environment{
            .config = config,
            .prompts = prompts,
            .link = [this] { return there ? service : std::make_shared<test::FakeIpc>(false); },
            .trayAvailable = [this] { return tray; },
            .patience = patience});
        window->show();
    }
    void Say(MsgCode code) {
        core::sslvpn::CLMsgCommonReplyData data;
        data.profileName = "Head office";
        data.statusCode = code;
        service->Deliver(core::sslvpn::CLMsgReplyJson::Build(data));
    }
    void GoOnline() {
        window->findChild<ProfileTab*>()->Press();
        EXPECT_TRUE(WaitFor([this] { return Sent("start") == 1; }));
        Say(MsgCode::CONNECTING);
        Say(MsgCode::ONLINE);
        EXPECT_TRUE(WaitFor([this] { return window->State().online; }));
    }
    int Sent(char const* type) const { return service->Count(type); }
    bool CloseFromOutside() {
        QCloseEvent event;
        QSpontaneKeyEvent::setSpontaneous(&event);
        // The application clears the mark of an event that it is handed.
        qApp->notify(window.get(), &event);
        return event.isAccepted();
    }

    bool tray = true;
    std::atomic<bool> there{true};
    std::chrono::milliseconds patience{10000};
    std::shared_ptr<test::FakeIpc> service = std::make_shared<test::FakeIpc>();
    test::ScriptedPrompts prompts;
    Config config;
    std::unique_ptr<MainWindow> window;
};

TEST_F(Shell, ClosingHidesToTheTrayAndKeepsTheConnection) {
    Add("Head office");
    config.autoMinimize = false;
    Open();
    GoOnline();
    Find<QToolButton>(*window, "btn_main_close_").click();
    EXPECT_TRUE(window->isHidden());
    window->BringUp();
    EXPECT_FALSE(CloseFromOutside());
    EXPECT_TRUE(window->isHidden());
    EXPECT_TRUE(window->State().online);
    EXPECT_EQ(Sent("stop"), 0);

    Find<QAction>(*window, "tray_show_").trigger();
    EXPECT_TRUE(WaitFor([this] { return window->isVisible(); }));
    Find<QAction>(*window, "tray_disconnect_").trigger();
    EXPECT_TRUE(WaitFor([this] { return Sent("stop") == 1; }));
}

TEST_F(Shell, ALoginSaysItsTimeAndAnEndWhyItCame) {
    Add("Head office");
    Open();
    QLabel const& detail = Find<QLabel>(*window, "state_detail_");
    QLabel const& hint = Find<QLabel>(*window, "hero_hint_");
    StatusBarWidget const& bar = *window->findChild<StatusBarWidget*>();
    EXPECT_EQ(hint.text(), QStringLiteral("Press Connect to connect to Head office."));
    window->findChild<ProfileTab*>()->Press();
    EXPECT_TRUE(WaitFor([this] { return Sent("start") == 1; }));
    Say(MsgCode::CONNECTING);
    EXPECT_TRUE(WaitFor([&] { return detail.isVisible(); }));
    window->CurrentSession().state.since = QDateTime::currentDateTime().addSecs(-70);
    EXPECT_TRUE(WaitFor([&] { return detail.text().contains(QLatin1String("Logging in, 7")); }));
    EXPECT_EQ(bar.CountText(), QStringLiteral("1 Connections in Total"));
    Say(MsgCode::ONLINE);
    EXPECT_TRUE(WaitFor([this] { return window->State().online; }));
    EXPECT_FALSE(detail.text().contains(QLatin1String("Logging")));
    Say(MsgCode::PREPARE_RECONNECTING);
    EXPECT_TRUE(WaitFor([&] { return Find<QWidget>(*window, "warning_strip_").isVisible(); }));
    EXPECT_EQ(bar.CountText(), QStringLiteral("1 Connections in Total"));
    EXPECT_TRUE(Find<QWidget>(*window, "statistics_note_").isVisible());

    window->CurrentSession().context.connectTime = QDateTime::currentDateTime().addSecs(-4354);
    core::sslvpn::CLMsgReplyTunnelDisconnectData record;
    record.profileName = "Head office";
    record.reason = 10;
    service->Deliver(core::sslvpn::CLMsgReplyJson::Build(record));
    EXPECT_TRUE(WaitFor([&] { return hint.isVisible(); }));
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^Head office ended at \\d\\d:\\d\\d after "
                                                  "01:12:3[45]: Ctrl Timeout$"))
                    .match(hint.text())
                    .hasMatch())
        << hint.text().toStdString();
    Say(MsgCode::OFFLINE);
    Find<QPushButton>(*window, "hero_button_").click();
    EXPECT_TRUE(WaitFor([this] { return Sent("start") == 2; }));
}

TEST_F(Shell, WhileTheServiceStaysAwayTheLogIsOffered) {
    Add("Head office");
    there = false;
    patience = std::chrono::milliseconds(50);
    Begin();
    auto& first = Find<QPushButton>(*window, "wait_log_button_");
    EXPECT_FALSE(first.isVisible());
    EXPECT_TRUE(WaitFor([&first] { return first.hasFocus(); }));
    EXPECT_TRUE(Find<QLabel>(*window, "wait_hint_").isVisible());
    QTest::keyClick(&first, Qt::Key_Tab);
    EXPECT_TRUE(first.hasFocus()) << "what is covered stays out of reach";
    first.click();
    there = true;
    EXPECT_TRUE(WaitFor([this] { return window->findChild<WaitForm*>()->isHidden(); }));

    there = false;
    service->FailRead(2);
    auto& again = Find<QPushButton>(*window, "hero_button_");
    EXPECT_TRUE(WaitFor([&again] { return again.isVisible(); }));
    EXPECT_EQ(Find<QLabel>(*window, "hero_title_").text(),
              GetTrMsg(MsgCode::UI_INFO_CONNECTING_SERVICE));
    again.click();
    EXPECT_TRUE(WaitFor([this] { return prompts.Opened().size() == 2; }));
    EXPECT_EQ(prompts.Opened().back(), QUrl::fromLocalFile(GetAppLogDirPath()));
    there = true;
    EXPECT_TRUE(WaitFor([&again] { return !again.isVisible(); }));
}

TEST_F(Shell, PagesOfTheSessionStandInTheTrayUntilItEnds) {
    Add("Head office");
    Open();
    auto const page = [this] { return window->findChild<QAction*>(QStringLiteral("tray_page_")); };
    auto const offered = [&page] { return page() != nullptr; };
    GoOnline();
    core::sslvpn::CLMsgCommonReplyData data;
    data.profileName = "Head office";
    data.statusCode = MsgCode::KEY_EXCHANGE_DATA;
    data.redirectUrl = "https://portal.example.com/";
    data.redirectUrlTitle = "Portal";
    service->Deliver(core::sslvpn::CLMsgReplyJson::Build(data));
    EXPECT_TRUE(WaitFor(offered));
    EXPECT_EQ(page()->text(), QStringLiteral("Portal"));
    page()->trigger();
    EXPECT_TRUE(WaitFor([this] { return prompts.Opened().size() == 1; }));
    EXPECT_EQ(prompts.Opened().front(), QUrl(QStringLiteral("https://portal.example.com/")));
    Say(MsgCode::PREPARE_RECONNECTING);
    EXPECT_TRUE(WaitFor([&] { return !offered(); }));
    Say(MsgCode::ONLINE);
    EXPECT_TRUE(WaitFor(offered));
    Say(MsgCode::OFFLINE);
    EXPECT_TRUE(WaitFor([&] { return !offered(); }));
    Q_EMIT window->findChild<ProfileTab*>()->ForgotPassword(QStringLiteral("https://a.example/"));
    EXPECT_TRUE(WaitFor([this] { return prompts.Opened().size() == 2; }));
}

TEST_F(Shell, WhatTheServiceAsksForIsFoundAgainByTheTray) {
    Add("Head office");
    Open();
    window->findChild<ProfileTab*>()->Press();
    EXPECT_TRUE(WaitFor([this] { return Sent("start") == 1; }));
    window->hide();
    Say(MsgCode::CONNECTING);
    Say(MsgCode::NEED_SMS_AUTH_CODE);
    EXPECT_TRUE(WaitFor([] { return QApplication::activeModalWidget() != nullptr; }));
    QWidget* const dialog = QApplication::activeModalWidget();
    for (char const* const action : {"tray_show_", "tray_connect_"}) {
        window->showMinimized();
        Find<QAction>(*window, action).trigger();
        EXPECT_TRUE(WaitFor([this] { return window->isVisible() && !window->isMinimized(); }));
        EXPECT_EQ(QApplication::activeWindow(), dialog);
    }
    EXPECT_EQ(Sent("start"), 1);
    window->CurrentSession().Stop(QStringLiteral("Head office"));
    EXPECT_TRUE(WaitFor([] { return QApplication::activeModalWidget() == nullptr; }));
}

TEST_F(Shell, TheFirstConnectionIsAddedAndStarted) {
    Open();
    EXPECT_EQ(window->findChild<StatusBarWidget*>()->CountText(), QString());
    test::WhenModal<CreateConnectDialog>([](CreateConnectDialog& dialog) {
        Find<QLineEdit>(dialog, "profile_name_").setText(QStringLiteral("Lab"));
        Find<QLineEdit>(dialog, "server_").setText(QStringLiteral("lab.example"));
        Find<QPushButton>(dialog, "add_connect_button_").click();
    });
    EXPECT_EQ(window->focusWidget(), &Find<QPushButton>(*window, "guide_button_"));
    QTest::keyClick(window->focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(Find<QPushButton>(*window, "add_button_").isVisible());
    EXPECT_TRUE(WaitFor([this] { return Sent("start") == 1; }));
    // Its card is busy: the list waits, and the way to modify it is closed.
    prompts.ExpectBox(GetTrMsg(MsgCode::UI_TR_STOP_CONNECTION_FIRST), 0);
    Q_EMIT window->findChild<ProfileTab*>()->ModifyConnectionInfo(QStringLiteral("Lab"));
    EXPECT_TRUE(WaitFor([this] { return prompts.Finished(); }));
}

TEST_F(Shell, ClosingAsksWithoutATray) {
    tray = false;
    Open();
    for (int const answer : {1, -1, 0}) {
        prompts.ExpectBox(GetTrMsg(MsgCode::UI_INFO_CLOSE_MAIN_WINDOW_TEXT), answer);
        Find<QToolButton>(*window, "btn_main_close_").click();
        EXPECT_EQ(window->isVisible(), answer != 0);
    }
    tray = true;  // but the administrator wants none
    AppCtrl::Instance().disableTray = true;
    Open();
    prompts.ExpectBox(GetTrMsg(MsgCode::UI_INFO_CLOSE_MAIN_WINDOW_TEXT), 1);
    Find<QToolButton>(*window, "btn_main_close_").click();
    EXPECT_TRUE(window->isVisible());
}

TEST_F(Shell, LeavesAtTheEndOfTheDesktopSession) {
    Add("Head office");
    Open();
    GoOnline();
    window->onSessionEnding();
    EXPECT_TRUE(CloseFromOutside());
    EXPECT_TRUE(WaitFor([this] { return Sent("stop") == 1; }));
}

TEST_F(Shell, AutomaticLoginStartsTheDefaultConnectionUnlessOneWasChosen) {
    Add("Branch");
    Add("Head office");
    config.autoLogin = true;
    test::LogCapture const log;
    Open();
    EXPECT_EQ(window->findChild<StatusBarWidget*>()->CountText(),
              GetTrMsg(MsgCode::UI_TR_STATUS_NO_CONNECTED).arg(2));
    EXPECT_TRUE(WaitFor([this] { return Sent("start") == 1; }));
    Say(MsgCode::CONNECTING);
    EXPECT_TRUE(WaitFor([this] { return window->State().status == ConnectStatus::Connecting; }));
    EXPECT_EQ(window->State().currentProfileName, "Head office");
    EXPECT_EQ(log.Count("start connect in profile tab"), 1);

    int const before = log.Count("Auto login is on");
    window->onSignalAutoLogin();
    EXPECT_TRUE(WaitFor([&] { return log.Count("Auto login is on") > before; }));
    EXPECT_EQ(Sent("start"), 1);
}

TEST_F(Shell, MoreMenuChangesTheLogLevelAndTellsTheService) {
    Open();
    auto& more = Find<QToolButton>(*window, "btn_main_more_");
    more.click();
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QMenu* const levels = menu->actions().front()->menu();
    levels->popup({});
    EXPECT_TRUE(levels->actions().at(2)->isChecked()) << "info";
    levels->actions().at(4)->trigger();
    EXPECT_EQ(g_log_level, 4);
    EXPECT_EQ(components::logger::Log().level(), components::logger::LOG_LEVEL::error);
    EXPECT_TRUE(WaitFor([this] { return Sent("loglevel") == 1; }));
    EXPECT_NE(service->Sent().back().find("\"logLevel\":\"error\""), std::string::npos);
    menu->close();
    window.reset();
    Open();
    EXPECT_EQ(components::logger::Log().level(), components::logger::LOG_LEVEL::error)
        << "at the next start as well";
    AppCtrl::Instance().namesLogLevel = true;
    window.reset();
    Open();
    EXPECT_EQ(components::logger::Log().level(), components::logger::LOG_LEVEL::info);
    AppCtrl::Instance().namesLogLevel = false;
}

TEST_F(Shell, MoreMenuOffersNoUpdatesToAPackagedClient) {
    for (bool const packaged : {false, true}) {
        AppCtrl::Instance().msiVersion = packaged;
        Open();
        Find<QToolButton>(*window, "btn_main_more_").click();
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        QAction* const check = menu->actions().at(1);
        EXPECT_EQ(check->text(), GetTrMsg(MsgCode::UI_TR_UPDATE_CHECK));
        EXPECT_EQ(check->isVisible(), !packaged);
        menu->close();
        if (!packaged) {
            check->trigger();
            EXPECT_TRUE(WaitFor([check] { return !check->isEnabled(); }))
                << "twice in five seconds";
        }
    }
    QTest::keyClick(window.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(WaitFor([this] { return !window->isVisible(); }));
}

}  // namespace
}  // namespace zorvanelink::ui
