#include <gmock/gmock.h>

#include <QFile>
#include <QSignalSpy>
#include <set>

#include "tests/support/qt_helpers.h"
#include "ui/cards/card_view.h"
#include "ui/session/view_state.h"
#include "ui/shell/tray_controller.h"
#include "ui/text/texts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr auto kDisconnected = ConnectStatus::Disconnected;
constexpr auto kConnecting = ConnectStatus::Connecting;
constexpr auto kPrepare = ConnectStatus::PrepareReconnecting;
constexpr auto kReconnecting = ConnectStatus::Reconnecting;
constexpr auto kConnected = ConnectStatus::Connected;

std::vector<std::string> textsOf(QMenu const& menu) {
    std::vector<std::string> texts;
    for (QAction const* action : menu.actions()) {
        texts.push_back(action->isSeparator() ? "-" : action->text().toStdString());
    }
    return texts;
}

class Tray : public testing::Test {
  protected:
    Tray() {
        InitAssets();
        SystemTrayMsgCountCtrl::GetInstance() = SystemTrayMsgCountCtrl();
    }

    void Go(ConnectStatus status) {
        state.status = status;
        state.link = LinkState::kLinked;
        state.currentProfileName = "Head office";
        tray.Render(trayViewFor(state, true), QStringLiteral("R&D"));
    }

    QWidget window;
    Config config;
    ConnectionState state;
    bool there = true;
    TrayController tray{window, config, [this] { return there; }};
};

TEST_F(Tray, TellsEachStatusAsOftenAsItsLimitAllows) {
    std::vector<ConnectStatus> flapping;
    for (int i = 0; i < 25; ++i) {
        flapping.insert(flapping.end(), {kConnected, kPrepare});
    }
    struct Case {
        char const* name;
        std::vector<ConnectStatus> road;
        std::vector<ConnectStatus> told;
    } const cases[] = {
        {"one session", {kConnecting, kConnected, kDisconnected}, {kConnected, kDisconnected}},
        {"each end of a connection is told",
         {kConnected, kDisconnected, kConnecting, kConnected, kDisconnected},
         {kConnected, kDisconnected, kConnected, kDisconnected}},
        {"failed logins are told once",
         {kConnecting, kDisconnected, kConnecting, kDisconnected},
         {kDisconnected}},
        {"also one that was lost for good",
         {kConnecting, kDisconnected, kConnected, kPrepare, kReconnecting, kDisconnected},
         {kDisconnected, kConnected, kReconnecting, kDisconnected}},
        {"a connection that comes and goes", flapping, std::vector<ConnectStatus>(20, kConnected)},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        SystemTrayMsgCountCtrl::GetInstance() = SystemTrayMsgCountCtrl();
        state = {};
        TrayController one(window, config, [] { return true; });
        ASSERT_TRUE(one.HasTray());
        std::vector<std::string> told;
        QObject::connect(one.Icon(), &AntiDupQSystemTrayIcon::MessageShown,
                         [&told](QString const& text) { told.push_back(text.toStdString()); });
        for (ConnectStatus const status : c.road) {
            state.status = status;
            one.Render(trayViewFor(state, true), {});
        }
        std::vector<std::string> expected;
        for (ConnectStatus const status : c.told) {
            ConnectionState reached;
            reached.status = status;
            expected.push_back(GetTrMsg(trayViewFor(reached, true).message).toStdString());
        }
        EXPECT_THAT(told, ElementsAreArray(expected));
    }
}

TEST_F(Tray, RepeatedAndSilencedMessagesAreNotShown) {
    ASSERT_TRUE(tray.HasTray());
    QSignalSpy const shown(tray.Icon(), &AntiDupQSystemTrayIcon::MessageShown);
    QString const title = QStringLiteral("Zorvane Link");
    for (int i = 0; i < 2; ++i) {
        tray.Icon()->showMessage(title, QStringLiteral("Connected"), QIcon(), 3000, kConnected);
    }
    EXPECT_EQ(shown.count(), 1);
    config.statusNotify = false;
    Go(kConnecting);
    Go(kConnected);
    EXPECT_EQ(shown.count(), 1);
    for (int demands = 1; demands < 3; ++demands) {
        tray.TellDemand(QStringLiteral("Authentication"));
        EXPECT_EQ(shown.count(), 1 + demands) << "what the service asks for is always shown";
    }
    config.statusNotify = true;
    state.lastEnd = SessionEnd{"Head office", {}, {}, "Ctrl Timeout"};
    Go(kDisconnected);  // the silent ones were counted
    EXPECT_EQ(shown.count(), 4);
    EXPECT_EQ(shown.last().at(0).toString(),
              QStringLiteral("Head office: Disconnected\nCtrl Timeout"));
    for (int i = 0; i < 2; ++i) {
        tray.TellWhereTheWindowWent();
    }
    EXPECT_EQ(shown.count(), 5);
}

TEST_F(Tray, EveryStateHasOneLookEverywhere) {
    struct Case {
        char const* name;
        ConnectStatus status;
        void (*change)(ConnectionState& state);
        Look look;
        MsgCode label;
        MsgCode bar;
    } const cases[] = {
        {"ready", kDisconnected, [](auto&) {}, Look::kDisconnected, MsgCode::UI_INFO_DISCONNECT,
         MsgCode::UI_TR_STATE_NORMAL},
        {"ended", kDisconnected, [](auto& s) { s.sessionEnded = true; }, Look::kDisconnected,
         MsgCode::UI_INFO_DISCONNECT, MsgCode::UI_TR_STATE_DISCONNECT},
        {"started", kDisconnected, [](auto& s) { s.startingProfileName = "Head office"; },
         Look::kConnecting, MsgCode::UI_INFO_CONNECTING, MsgCode::CONNECTING},
        {"asking", kConnecting, [](auto& s) { s.queryingAuthType = true; }, Look::kConnecting,
         MsgCode::UI_INFO_CONNECTING, MsgCode::UI_TR_CHECK_AUTH_TYPE},
        {"prepare", kPrepare, [](auto& s) { s.online = true; }, Look::kReconnecting,
         MsgCode::UI_INFO_RECONNECTING, MsgCode::UI_INFO_RECONNECTING},
        {"reconnecting", kReconnecting, [](auto&) {}, Look::kReconnecting,
         MsgCode::UI_INFO_RECONNECTING, MsgCode::UI_INFO_RECONNECTING},
        {"connected", kConnected, [](auto&) {}, Look::kConnected, MsgCode::UI_INFO_CONNECTED,
         MsgCode::UI_TR_STATE_CONNECTTED},
        {"silent", kConnected, [](auto& s) { s.silentSince = QDateTime(); }, Look::kWarning,
         MsgCode::UI_INFO_CONNECTED, MsgCode::UI_TR_STATE_CONNECTTED},
        {"service gone", kDisconnected, [](auto& s) { s.link = LinkState::kReconnecting; },
         Look::kWarning, MsgCode::UI_INFO_CONNECTING_SERVICE, MsgCode::UI_INFO_CONNECTING_SERVICE},
        {"no adapter", kDisconnected, [](auto& s) { s.adapterUsable = false; }, Look::kFailed,
         MsgCode::UI_TR_STATE_VNIC_ERROR, MsgCode::UI_TR_STATE_VNIC_ERROR},
    };
    std::set<std::string> icons;
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        ConnectionState now;
        now.link = LinkState::kLinked;
        now.currentProfileName = "Head office";
        now.status = c.status;
        c.change(now);
        ViewState const view = viewStateFor(now);
        TrayView const in_tray = trayViewFor(now, true);
        CardView const card = cardViewFor(now, "Head office");
        EXPECT_EQ(view.look, c.look);
        EXPECT_EQ(in_tray.silent, now.silentSince.has_value());
        EXPECT_EQ(view.stateLabel, c.label);
        EXPECT_EQ(in_tray.stateLabel, c.label);
        EXPECT_EQ(view.statusText, c.bar);
        EXPECT_EQ(QLatin1String(view.statusIcon).endsWith(QLatin1String(".gif")),
                  c.look == Look::kConnecting);
        EXPECT_TRUE(c.look == Look::kConnecting || view.statusIcon == DotImage(c.look));
        EXPECT_EQ(in_tray.icon, TrayImage(c.look));
        icons.insert(in_tray.icon);
        EXPECT_EQ(card.buttonEnabled, in_tray.canConnect || in_tray.canDisconnect);
        EXPECT_EQ(card.lamp, view.status == kDisconnected ? "" : LampName(c.look));
        for (QString const& image : {ShieldImage(c.look, false), ShieldImage(c.look, true),
                                     QString::fromLatin1(in_tray.icon)}) {
            EXPECT_TRUE(QFile::exists(image)) << image.toStdString();
        }
    }
    EXPECT_EQ(icons.size(), 6U) << "no two looks share one";
    EXPECT_FALSE(viewStateFor({}).hasStatusText) << "the wait form speaks";
}

TEST_F(Tray, OffersWhatCanBeDone) {
    struct Case {
        char const* name;
        ConnectStatus status;
        void (*change)(ConnectionState& state);
        bool can_connect;
        bool can_disconnect;
    } const cases[] = {
        {"ready", kDisconnected, [](auto&) {}, true, false},
        {"before the first status", kDisconnected,
         [](auto& s) { s.startingProfileName = "Head office"; }, false, false},
        {"no link", kDisconnected, [](auto& s) { s.link = LinkState::kReconnecting; }, false,
         false},
        {"no adapter", kDisconnected, [](auto& s) { s.adapterUsable = false; }, false, false},
        {"interrupted", kPrepare, [](auto&) {}, false, true},
        {"a stop is on its way", kConnected,
         [](auto& s) {
             s.currentProfileName = "Head office";
             s.stop = UnansweredStop{"Head office"};
         },
         false, false},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        ConnectionState now;
        now.link = LinkState::kLinked;
        now.status = c.status;
        c.change(now);
        EXPECT_EQ(trayViewFor(now, true).canConnect, c.can_connect);
        EXPECT_EQ(trayViewFor(now, true).canDisconnect, c.can_disconnect);
        EXPECT_FALSE(trayViewFor(now, false).canConnect);
    }
}

TEST_F(Tray, MenuHoldsThePagesOfTheSession) {
    Go(kConnected);
    Context session;
    session.redirectUrl = "https://portal.example.com/";
    session.redirectUrlTitle = "Staff & guests";
    session.resourceListPagePath = "/tmp/resource_list.html";
    tray.SetPages(pagesFor(state, session));
    QApplication::processEvents();
    EXPECT_THAT(textsOf(tray.Menu()),
                ElementsAre("Head office: Connected", "-", "Show Window", "-", "Connect (R&&D)",
                            "Disconnect", "-", "Staff && guests", "Resource List", "-", "Quit"));
    int opened = 0;
    QObject::connect(&tray, &TrayController::OpenPage, [&opened] { ++opened; });
    tray.Menu().actions().at(7)->trigger();
    QApplication::processEvents();
    ASSERT_EQ(opened, 1);
    Go(kPrepare);
    tray.SetPages(pagesFor(state, session));
    QApplication::processEvents();
    EXPECT_THAT(textsOf(tray.Menu()),
                ElementsAre("Head office: ReConnecting", "-", "Show Window", "-", "Connect (R&&D)",
                            "Disconnect", "-", "Quit"));
}

TEST_F(Tray, ComesAndGoesWithTheDesktopsTray) {
    there = false;
    Go(kConnected);
    EXPECT_FALSE(tray.HasTray());
    there = true;
    tray.FollowDesktop();
    ASSERT_NE(tray.Icon(), nullptr);
    EXPECT_EQ(tray.Icon()->toolTip(), QStringLiteral("Zorvane Link\nHead office: Connected"));
    state.silentSince = QDateTime::currentDateTime();
    Go(kConnected);
    QString const silent = QStringLiteral("Head office: The service does not answer");
    EXPECT_EQ(tray.Icon()->toolTip(), QStringLiteral("Zorvane Link\n") + silent);
    EXPECT_EQ(textsOf(tray.Menu()).front(), silent.toStdString());

    QSignalSpy const shown(&tray, &TrayController::ShowWindow);
    there = false;
    tray.FollowDesktop();
    EXPECT_EQ(tray.Icon(), nullptr);
    EXPECT_EQ(shown.count(), 1) << "a hidden window would be lost";
    window.show();
    tray.FollowDesktop();
    EXPECT_EQ(shown.count(), 1);
}

}  // namespace
}  // namespace zorvanelink::ui
