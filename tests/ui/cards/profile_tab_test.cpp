#include "ui/cards/profile_tab.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QtTest/QTest>

#include "app/environment/app_ctrl.h"
#include "tests/support/qt_helpers.h"
#include "ui/cards/connection_list.h"
#include "ui/cards/start_list_widget.h"

using namespace zorvanelink;
using namespace zorvanelink::ui;
using test::Find;

namespace {

class ProfileTabTest : public testing::Test {
  protected:
    ProfileTabTest() {
        AppCtrl::Instance().language = SysLang::kEnglish;
        profile->name = "Head office";
        profile->server = "vpn.example.com";
        profile->userName = "alice";
        tab = std::make_unique<ProfileTab>(profile);
        tab->SetMenu({.modify = true, .remove = true, .forgotPassword = true});
        tab->resize(kCardWidth, kCardHeight);
        tab->show();
        state.currentProfileName = "Head office";
        render();
    }

    QPushButton& button() { return Find<QPushButton>(*tab, "conn_button_"); }
    QWidget& menu() { return Find<QWidget>(*tab, "menu_panel_"); }
    bool menuInside() { return tab->rect().contains(menu().geometry().center()); }
    void render(ConnectStatus status = ConnectStatus::Disconnected) {
        state.status = status;
        tab->Render(cardViewFor(state, "Head office"));
    }

    ConnectionState state;
    std::shared_ptr<Profile> profile = std::make_shared<Profile>();
    std::unique_ptr<ProfileTab> tab;
};

}  // namespace

TEST_F(ProfileTabTest, TheButtonDoesWhatItSays) {
    QSignalSpy starts(tab.get(), &ProfileTab::StartConnect);
    QSignalSpy stops(tab.get(), &ProfileTab::StopConnect);
    struct Case {
        ConnectStatus status;
        char const* starting;
        char const* stopping;
        char const* text;
        char const* stateText;
        bool enabled;
        bool menu;
    };
    char const* const own = "Head office";
    for (Case const& c : {
             Case{ConnectStatus::Disconnected, "", "", "Connect", "", true, true},
             Case{ConnectStatus::Disconnected, own, "", "Connect", "Connecting", false, false},
             Case{ConnectStatus::Disconnected, "Lab", "", "Connect", "", false, true},
             Case{ConnectStatus::Disconnected, "", own, "Connect", "", true, true},
             Case{ConnectStatus::Connecting, "", "", "Disconnect", "Connecting", true, false},
             Case{ConnectStatus::Connecting, own, "", "Disconnect", "Connecting", false, false},
             Case{ConnectStatus::PrepareReconnecting, "", "", "Disconnect", "ReConnecting", true,
                  false},
             Case{ConnectStatus::Reconnecting, "", "", "Disconnect", "ReConnecting", true, false},
             Case{ConnectStatus::Connected, "", "", "Disconnect", "Online", true, false},
             Case{ConnectStatus::Connected, "", own, "Disconnect", "Online", false, false},
         }) {
        SCOPED_TRACE(std::to_string(static_cast<int>(c.status)) + c.starting + c.stopping);
        state.startingProfileName = c.starting;
        state.stop.reset();
        if (*c.stopping != '\0') {
            state.stop = UnansweredStop{c.stopping};
        }
        render(c.status);
        EXPECT_EQ(button().text(), QLatin1String(c.text));
        EXPECT_EQ(Find<QLabel>(*tab, "state_label_").text(), QLatin1String(c.stateText));
        EXPECT_EQ(Find<QLabel>(*tab, "state_lamp_").isVisible(), *c.stateText != '\0');
        EXPECT_EQ(button().isEnabled(), c.enabled);
        EXPECT_EQ(menu().isEnabled(), c.menu);
        bool const connects = button().text() == QLatin1String("Connect");
        tab->Press();
        EXPECT_EQ(starts.count(), connects && c.enabled ? 1 : 0);
        EXPECT_EQ(stops.count(), !connects && c.enabled ? 1 : 0);
        starts.clear();
        stops.clear();
    }
}

TEST_F(ProfileTabTest, OtherConnectionsAndTheAdapterBlockOnlyTheWayUp) {
    for (auto status : {ConnectStatus::Connecting, ConnectStatus::PrepareReconnecting,
                        ConnectStatus::Reconnecting, ConnectStatus::Connected}) {
        state.currentProfileName = "Lab";
        render(status);
        EXPECT_FALSE(button().isEnabled());
        EXPECT_EQ(button().text(), QStringLiteral("Connect"));
        render();
        EXPECT_TRUE(button().isEnabled());
    }
    state.adapterUsable = false;
    render();
    EXPECT_FALSE(button().isEnabled());
    state.currentProfileName = "Head office";
    render(ConnectStatus::Connected);
    EXPECT_TRUE(button().isEnabled());
}

TEST_F(ProfileTabTest, TheMenuComesInForSelectionAndItsButtonsAct) {
    EXPECT_FALSE(menuInside());
    tab->SetSelected(true);
    EXPECT_TRUE(menuInside());
    EXPECT_FALSE(Find<QToolButton>(*tab, "forgot_pwd_button_").isVisible());
    profile->forgotPwdUrl = "https://vpn.example.com/forgot";
    render();

    QSignalSpy modify(tab.get(), &ProfileTab::ModifyConnectionInfo);
    QSignalSpy remove(tab.get(), &ProfileTab::DeleteConnectionInfo);
    QSignalSpy forgot(tab.get(), &ProfileTab::ForgotPassword);
    for (auto const* name : {"mod_config_button_", "del_config_button_", "forgot_pwd_button_"}) {
        auto& action = Find<QToolButton>(*tab, name);
        EXPECT_FALSE(action.toolTip().isEmpty());
        QTest::mouseClick(&action, Qt::LeftButton);
    }
    EXPECT_EQ(modify.count(), 1);
    EXPECT_EQ(remove.count(), 1);
    ASSERT_EQ(forgot.count(), 1);
    EXPECT_EQ(forgot[0][0].toString(), QStringLiteral("https://vpn.example.com/forgot"));

    render(ConnectStatus::Connecting);
    EXPECT_FALSE(menu().isEnabled());
    EXPECT_FALSE(menuInside());
}

TEST_F(ProfileTabTest, LongTextsAreCutAndToldInFull) {
    profile->userName = std::string(80, 'u');
    render();
    profile->server = "new.example.com";
    render();
    EXPECT_EQ(Find<QLabel>(*tab, "server_").text(), QStringLiteral("new.example.com"));
    auto& user = Find<QLabel>(*tab, "user_");
    EXPECT_LE(user.width(), 190);
    EXPECT_LT(user.text().size(), 80);
    EXPECT_EQ(user.toolTip().size(), 80);
    EXPECT_LT(user.geometry().bottom(), button().geometry().top());
}

TEST(ConnectionList, KeepsTheCardsThatStayWithTheirFocusAndWaitsForAConnectionsEnd) {
    Config config;
    auto const add = [&config](char const* name) {
        auto profile = std::make_shared<Profile>();
        profile->name = name;
        config.AddProfile(profile, true);
    };
    for (auto const* name : {"a", "b", "c"}) {
        add(name);
    }
    StartListWidget list;
    ConnectionState state;
    ConnectionList cards(list, config, state);
    cards.RefreshConnList();
    list.show();
    list.activateWindow();
    ProfileTab* const kept = cards.GetProfileTab("b");
    kept->setFocus();
    QWidget const* const focus = list.focusWidget();

    // "c" is another profile of that name, "a" goes, "aa" comes: once the connection has ended.
    state.currentProfileName = "b";
    state.status = ConnectStatus::Connected;
    config.DeleteProfile("a");
    add("c");
    add("aa");
    cards.RefreshConnList();
    EXPECT_TRUE(cards.Has("a"));
    cards.Render();
    EXPECT_TRUE(cards.Has("a"));
    state.status = ConnectStatus::Disconnected;
    cards.Render();
    EXPECT_FALSE(cards.Has("a"));
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(cards.GetProfileTab("b"), kept);
    EXPECT_EQ(list.focusWidget(), focus);
    EXPECT_NE(cards.GetProfileTab("c")->GetProfile(), nullptr);
    EXPECT_EQ(cards.GetProfileTab("c")->GetProfile(), config.GetProfile("c"));
    EXPECT_EQ(list.CardAt(0)->GetProfile()->name, "aa") << "sorted";
    EXPECT_TRUE(Find<QPushButton>(*cards.GetProfileTab("aa"), "conn_button_").isEnabled());
}
