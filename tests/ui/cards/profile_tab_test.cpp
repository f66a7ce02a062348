#include "ui/cards/profile_tab.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QtTest/QTest>

#include "app/environment/app_ctrl.h"
#include "app/environment/globals.h"
#include "tests/support/qt_helpers.h"
#include "ui/cards/connection_list.h"
#include "ui/cards/start_list_widget.h"

using namespace zorvanelink;
using namespace zorvanelink::ui;
using test::Find;
using test::WaitFor;

namespace {

class ProfileTabTest : public testing::Test {
  protected:
    ProfileTabTest() {
        AppCtrl::Instance().language = SysLang::kEnglish;
        g_running_client = 0;
        profile->name = "Head office";
        profile->server = "vpn.example.com";
        profile->userName = "alice";
        profile->authType = SupportedAuthType::kPwd;
        tab = std::make_unique<ProfileTab>(profile);
        tab->SetMenu({.modify = true, .remove = true, .forgotPassword = true});
        tab->resize(kCardWidth, kCardHeight);
        tab->show();
    }
    ~ProfileTabTest() override { g_running_client = 0; }

    QPushButton& button() { return Find<QPushButton>(*tab, "conn_button_"); }
    QWidget& menu() { return Find<QWidget>(*tab, "menu_panel_"); }
    bool menuInside() { return tab->rect().contains(menu().geometry().center()); }
    void notify(ConnectStatus status, char const* name = "Head office") {
        tab->NotifyConnectStatusTriggered(QLatin1String(name), status);
    }

    std::shared_ptr<Profile> profile = std::make_shared<Profile>();
    std::unique_ptr<ProfileTab> tab;
};

}  // namespace

TEST_F(ProfileTabTest, AClickStartsAndGreysTheButtonUntilAStatus) {
    QSignalSpy starts(tab.get(), &ProfileTab::StartConnect);
    profile->keepAuthType = false;
    button().click();
    ASSERT_EQ(starts.count(), 1);
    EXPECT_EQ(starts[0][0].toString(), QStringLiteral("Head office"));
    EXPECT_TRUE(starts[0][1].toBool());
    EXPECT_EQ(g_running_client, 1);
    EXPECT_FALSE(button().isEnabled());
    EXPECT_FALSE(menuInside());
    notify(ConnectStatus::Connecting);
    EXPECT_TRUE(button().isEnabled());
    EXPECT_EQ(button().text(), QStringLiteral("Disconnect"));
    EXPECT_FALSE(tab->findChild<QTimer*>()->isActive());
}

TEST_F(ProfileTabTest, WithoutAStatusTheButtonComesBack) {
    QSignalSpy pending(tab.get(), &ProfileTab::Pending);
    tab->SetConnButtonDisableTime(std::chrono::milliseconds(1));
    button().click();
    EXPECT_FALSE(button().isEnabled());
    ASSERT_TRUE(WaitFor([this] { return button().isEnabled(); }));
    ASSERT_EQ(pending.count(), 2);
    EXPECT_TRUE(pending[0][1].toBool());
    EXPECT_FALSE(pending[1][1].toBool());
}

TEST_F(ProfileTabTest, ARefusalGivesTheButtonBackAtOnce) {
    QObject::connect(tab.get(), &ProfileTab::StartConnect, tab.get(),
                     [this] { notify(ConnectStatus::Disconnected); });
    button().click();
    EXPECT_TRUE(button().isEnabled());
    EXPECT_EQ(button().text(), QStringLiteral("Connect"));
    EXPECT_EQ(g_running_client, 0);
}

TEST_F(ProfileTabTest, TheButtonOfARunningConnectionStopsIt) {
    QSignalSpy stops(tab.get(), &ProfileTab::StopConnect);
    notify(ConnectStatus::Connected);
    EXPECT_EQ(Find<QLabel>(*tab, "state_label_").text(), QStringLiteral("Online"));
    EXPECT_TRUE(Find<QLabel>(*tab, "state_lamp_").isVisible());
    button().click();
    ASSERT_EQ(stops.count(), 1);
    EXPECT_TRUE(stops[0][1].toBool());
    EXPECT_EQ(g_running_client, 0);
    notify(ConnectStatus::Disconnected);
    EXPECT_FALSE(Find<QLabel>(*tab, "state_lamp_").isVisible());
    EXPECT_TRUE(Find<QLabel>(*tab, "state_label_").text().isEmpty());
}

TEST_F(ProfileTabTest, OtherConnectionsAndTheAdapterBlockOnlyTheWayUp) {
    for (auto status : {ConnectStatus::Connecting, ConnectStatus::PrepareReconnecting,
                        ConnectStatus::Reconnecting, ConnectStatus::Connected}) {
        notify(status, "Other");
        EXPECT_FALSE(button().isEnabled());
        EXPECT_EQ(button().text(), QStringLiteral("Connect"));
        notify(ConnectStatus::Disconnected, "Other");
        EXPECT_TRUE(button().isEnabled());
    }
    tab->SetOtherPending(true);
    EXPECT_FALSE(button().isEnabled());
    tab->SetOtherPending(false);
    tab->SetAdapterUsable(false);
    EXPECT_FALSE(button().isEnabled());
    notify(ConnectStatus::Disconnected, "Other");
    EXPECT_FALSE(button().isEnabled());
    notify(ConnectStatus::Connected);
    EXPECT_TRUE(button().isEnabled());
    EXPECT_EQ(g_running_client, 1);
}

TEST_F(ProfileTabTest, APasswordForOneAttemptIsAskedForAgain) {
    struct Row {
        bool retry, temporary, remember, kept;
    };
    for (auto const& row : {Row{false, true, false, false}, Row{false, true, true, true},
                            Row{false, false, false, true}, Row{true, true, false, true}}) {
        profile->password = "encoded";
        profile->tempCredential = row.temporary;
        profile->rememberPassword = row.remember;
        QSignalSpy starts(tab.get(), &ProfileTab::StartConnect);
        tab->Start(row.retry);
        EXPECT_EQ(!profile->password.empty(), row.kept) << row.retry << row.temporary;
        EXPECT_EQ(profile->tempCredential, !row.remember);
        EXPECT_FALSE(starts[0][1].toBool());
    }
}

TEST_F(ProfileTabTest, AutomaticLoginPressesOnlyItsOwnButton) {
    QSignalSpy starts(tab.get(), &ProfileTab::StartConnect);
    tab->onAutoLogin(QStringLiteral("Other"));
    tab->SetAdapterUsable(false);
    tab->onAutoLogin(QStringLiteral("Head office"));
    EXPECT_EQ(starts.count(), 0);
    tab->SetAdapterUsable(true);
    tab->onAutoLogin(QStringLiteral("Head office"));
    EXPECT_EQ(starts.count(), 1);
}

TEST_F(ProfileTabTest, TheMenuComesInForSelectionAndItsButtonsAct) {
    EXPECT_FALSE(menuInside());
    tab->SetSelected(true);
    EXPECT_TRUE(menuInside());
    EXPECT_FALSE(Find<QToolButton>(*tab, "forgot_pwd_button_").isVisible());
    profile->forgotPwdUrl = "https://vpn.example.com/forgot";
    tab->RefreshProfile();

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

    notify(ConnectStatus::Connecting);
    EXPECT_FALSE(menu().isEnabled());
    EXPECT_FALSE(menuInside());
}

TEST_F(ProfileTabTest, LongTextsAreCutAndToldInFull) {
    profile->userName = std::string(80, 'u');
    notify(ConnectStatus::Disconnected);
    auto& user = Find<QLabel>(*tab, "user_");
    EXPECT_LE(user.width(), 190);
    EXPECT_LT(user.text().size(), 80);
    EXPECT_EQ(user.toolTip().size(), 80);
    EXPECT_LT(user.geometry().bottom(), button().geometry().top());
}

TEST(StartListWidget, SortsCardsByName) {
    StartListWidget list;
    for (auto const* name : {"b", "c", "a"}) {
        auto profile = std::make_shared<Profile>();
        profile->name = name;
        list.AddCard(new ProfileTab(profile));
    }
    list.sortItems(Qt::AscendingOrder);
    EXPECT_EQ(list.CardAt(0)->GetProfile()->name, "a");
    EXPECT_EQ(list.CardAt(2)->GetProfile()->name, "c");
}

TEST(ConnectionList, ARefusedStartLeavesTheRunningCardAsItIs) {
    Config config;
    for (auto const* name : {"a", "b", "c"}) {
        auto profile = std::make_shared<Profile>();
        profile->name = name;
        config.AddProfile(profile, false);
    }
    StartListWidget list;
    ConnectionList cards(list, config);
    cards.RefreshConnList();
    auto const button = [&cards](char const* name) -> QPushButton& {
        return Find<QPushButton>(*cards.GetProfileTab(name), "conn_button_");
    };
    cards.SetPending("a");
    EXPECT_FALSE(button("a").isEnabled()) << "no second start of a start on its way";
    cards.SetRunning("a", ConnectStatus::Connected);
    cards.SetRunning("b", ConnectStatus::Disconnected);
    EXPECT_EQ(button("a").text(), QStringLiteral("Disconnect"));
    EXPECT_TRUE(button("a").isEnabled());
    EXPECT_FALSE(button("b").isEnabled());
    EXPECT_FALSE(button("c").isEnabled());
    EXPECT_EQ(g_running_client, 1);

    // Its stop is on the way and answers to nobody yet.
    ProfileTab const* const running = cards.GetProfileTab("a");
    g_running_client = 0;
    cards.RefreshConnList();
    EXPECT_EQ(cards.GetProfileTab("a"), running);
    cards.SetRunning("a", ConnectStatus::Disconnected);
    cards.RefreshIfDue();
    EXPECT_TRUE(button("b").isEnabled());
}
