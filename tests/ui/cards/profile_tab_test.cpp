#include "ui/cards/profile_tab.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QSignalSpy>
#include <QtTest/QTest>
#include <set>

#include "app/environment/app_ctrl.h"
#include "tests/support/log_capture.h"
#include "tests/support/qt_helpers.h"
#include "ui/cards/connection_list.h"
#include "ui/cards/connection_page.h"

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
        tab->show();
        state.currentProfileName = "Head office";
        render();
    }

    QPushButton& button() { return Find<QPushButton>(*tab, "conn_button_"); }
    QWidget& menu() { return Find<QWidget>(*tab, "menu_panel_"); }
    bool menuInside() { return menu().isVisible() && tab->rect().contains(menu().geometry()); }
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
        EXPECT_GE(button().width(), button().fontMetrics().horizontalAdvance(button().text()) + 28);
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
    EXPECT_FALSE(Find<QPushButton>(*tab, "forgot_pwd_button_").isVisible());
    profile->forgotPwdUrl = "https://vpn.example.com/forgot";
    render();

    QSignalSpy modify(tab.get(), &ProfileTab::ModifyConnectionInfo);
    QSignalSpy remove(tab.get(), &ProfileTab::DeleteConnectionInfo);
    QSignalSpy forgot(tab.get(), &ProfileTab::ForgotPassword);
    for (auto const* name : {"mod_config_button_", "del_config_button_", "forgot_pwd_button_"}) {
        auto& action = Find<QPushButton>(*tab, name);
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
    tab->SetCompact(true);
    EXPECT_LT(user.geometry().right(), button().geometry().left());
}

class ConnectionsTest : public testing::Test {
  protected:
    ConnectionsTest() { AppCtrl::Instance().language = SysLang::kEnglish; }

    void add(std::string const& name) {
        auto profile = std::make_shared<Profile>();
        profile->name = name;
        profile->server = "gw." + name;
        config.AddProfile(profile, true);
    }
    void show(std::initializer_list<char const*> names, char const* preset) {
        for (char const* const name : names) {
            add(name);
        }
        config.SetDefaultProfile(preset);
        cards.SetMenu({.modify = true, .remove = true, .forgotPassword = true});
        cards.RefreshConnList();
        page.resize(336, 400);
        beside.setAccessibleName(QStringLiteral("beside"));
        window.show();
        QApplication::setActiveWindow(&window);
        list.setFocus();
    }
    static void press(int key) { QTest::keyClick(QApplication::focusWidget(), Qt::Key(key)); }

    Config config;
    ConnectionState state;
    QWidget window;
    ConnectionPage page{&window};
    QLineEdit beside{&window};
    StartListWidget& list = *page.List();
    ConnectionList cards{list, config, state};
};

TEST_F(ConnectionsTest, TheListIsOneStopWhoseKeysChooseAndAct) {
    show({"a", "b", "c"}, "b");
    std::vector<std::string> stops;
    for (page.AddButton()->setFocus(); stops.size() < 6; press(Qt::Key_Tab)) {
        stops.push_back(QApplication::focusWidget()->accessibleName().toStdString());
    }
    EXPECT_EQ(stops, (std::vector<std::string>{"Add Connection", "Connect", "Modify Connection b",
                                               "Delete b", "Connect b", "beside"}));
    EXPECT_EQ(config.GetDefaultProfileName(), "b");

    list.setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(config.GetDefaultProfileName(), "c");
    EXPECT_TRUE(cards.GetProfileTab("c")->IsFocused());
    QSignalSpy starts(&cards, &ConnectionList::StartConnect);
    QSignalSpy stopped(&cards, &ConnectionList::StopConnect);
    QSignalSpy modify(&cards, &ConnectionList::ModifyConnectionInfo);
    QSignalSpy remove(&cards, &ConnectionList::DeleteConnectionInfo);
    std::pair<Qt::Key, QSignalSpy&> const keys[] = {{Qt::Key_Return, starts},
                                                    {Qt::Key_Enter, starts},
                                                    {Qt::Key_Space, starts},
                                                    {Qt::Key_F2, modify},
                                                    {Qt::Key_Delete, remove}};
    auto const expect = [](QSignalSpy& spy, char const* name) {
        EXPECT_TRUE(test::WaitFor([&spy] { return !spy.isEmpty(); }));
        EXPECT_EQ(spy.count(), 1);
        EXPECT_EQ(spy.value(0).value(0).toString(), QLatin1String(name));
        spy.clear();
    };
    for (auto const& [key, spy] : keys) {
        press(key);
        expect(spy, "c");
    }
    Find<QPushButton>(*cards.GetProfileTab("c"), "conn_button_").setFocus();
    press(Qt::Key_Return);
    expect(starts, "c");
    EXPECT_TRUE(list.hasFocus());

    // What acts on a card chooses it first.
    Find<QPushButton>(*cards.GetProfileTab("a"), "del_config_button_").click();
    EXPECT_EQ(config.GetDefaultProfileName(), "a");
    expect(remove, "a");
    cards.GetProfileTab("b")->Press();
    EXPECT_EQ(cards.SelectedName(), "b");
    expect(starts, "b");

    state.currentProfileName = "b";
    state.status = ConnectStatus::Connected;
    cards.Render();
    QSignalSpy pages(&cards, &ConnectionList::PageWanted);
    cards.SetPages({{QStringLiteral("Change Password"), QString()}});
    Find<QPushButton>(*cards.GetProfileTab("b"), "change_pwd_button_").click();
    EXPECT_TRUE(test::WaitFor([&pages] { return pages.count() == 1; }));
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(&list, &held);
    press(Qt::Key_F2);
    press(Qt::Key_Space);
    expect(stopped, "b");
    EXPECT_TRUE(stopped.isEmpty() && starts.isEmpty() && modify.isEmpty());
}

// The names of controls in sight, as a screen reader meets them.
void collectNames(QAccessibleInterface* part, std::vector<std::string>& names) {
    QAccessible::State const state = part->state();
    if (state.invisible || state.offscreen) {
        return;
    }
    if (part->role() == QAccessible::Button || part->role() == QAccessible::ListItem) {
        names.push_back(part->text(QAccessible::Name).toStdString());
    }
    for (int i = 0; i < part->childCount(); ++i) {
        collectNames(part->child(i), names);
    }
}

TEST_F(ConnectionsTest, ManyAreLowCanBeSearchedAndEachNameIsReadOnce) {
    show({"Site 1",  "Site 2",  "Site 3",  "Site 4",  "Site 5",  "Site 6",  "Site 7",
          "Site 8",  "Site 9",  "Site 10", "Site 11", "Site 12", "Site 13", "Site 14",
          "Site 15", "Site 16", "Site 17", "Site 18", "Site 19", "Site 20"},
         "Site 20");
    auto& search = Find<QLineEdit>(page, "connection_search_");
    EXPECT_TRUE(search.isVisible());
    EXPECT_EQ(cards.GetProfileTab("Site 20")->height(), kCompactCardHeight);
    EXPECT_TRUE(Find<QFrame>(page, "list_rule_").isVisible()) << "scrolled to the selected one";
    std::vector<std::string> names;
    collectNames(QAccessible::queryAccessibleInterface(&page), names);
    EXPECT_THAT(names, testing::Contains("Delete Site 20"));
    EXPECT_THAT(names, testing::Not(testing::Contains("Connect Site 1")));
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());

    search.setFocus();
    QTest::keyClicks(&search, QStringLiteral("GW.site 1"));
    EXPECT_EQ(list.ListedCards().size(), 11U);
    press(Qt::Key_Down);
    EXPECT_TRUE(cards.GetProfileTab("Site 1")->IsFocused());
    EXPECT_EQ(config.GetDefaultProfileName(), "Site 20");
    press(Qt::Key_Space);
    EXPECT_EQ(config.GetDefaultProfileName(), "Site 1");
    search.setText(QStringLiteral("nowhere"));
    EXPECT_TRUE(Find<QLabel>(page, "connection_note_").isVisible());
    press(Qt::Key_Delete);  // of a card that is out of sight
    search.setFocus();
    press(Qt::Key_Escape);
    EXPECT_EQ(list.ListedCards().size(), 20U);
    search.setText(QStringLiteral("nowhere"));
    add("Site 21");
    cards.RefreshConnList();
    EXPECT_EQ(list.ListedCards().size(), 21U) << "the new one shows";
    for (int i = 7; i <= 21; ++i) {
        config.DeleteProfile("Site " + std::to_string(i));
    }
    cards.RefreshConnList();
    EXPECT_FALSE(search.isVisible());
    EXPECT_EQ(cards.GetProfileTab("Site 1")->height(), kCardHeight);
}

TEST_F(ConnectionsTest, KeepsTheCardsThatStayWithTheirFocusAndWaitsForAConnectionsEnd) {
    show({"a", "b", "c"}, "b");
    ProfileTab* const kept = cards.GetProfileTab("b");
    auto& button = Find<QPushButton>(*kept, "conn_button_");
    button.setFocus();

    // "c" is another profile of that name, "a" goes, "aa" comes: once the connection has ended.
    test::LogCapture const log;
    state.currentProfileName = "b";
    state.status = ConnectStatus::Connected;
    config.DeleteProfile("a");
    add("c");
    add("aa");
    cards.RefreshConnList();
    EXPECT_TRUE(cards.Has("a"));
    cards.Render();
    EXPECT_TRUE(cards.Has("a"));
    EXPECT_EQ(log.Count("conn_button_->setEnabled(false)"), 2);
    state.status = ConnectStatus::Disconnected;
    cards.Render();
    EXPECT_FALSE(cards.Has("a"));
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(cards.GetProfileTab("b"), kept);
    EXPECT_EQ(QApplication::focusWidget(), &button);
    EXPECT_NE(cards.GetProfileTab("c")->GetProfile(), nullptr);
    EXPECT_EQ(cards.GetProfileTab("c")->GetProfile(), config.GetProfile("c"));
    EXPECT_EQ(list.CardAt(0)->GetProfile()->name, "aa") << "in the order of names";
    EXPECT_TRUE(Find<QPushButton>(*cards.GetProfileTab("aa"), "conn_button_").isEnabled());
}
