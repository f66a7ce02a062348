#include "ui/tunnel/tunnel_view.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QtTest/QTest>

#include "app/environment/app_ctrl.h"
#include "tests/support/qt_helpers.h"

using namespace zorvanelink;
using namespace zorvanelink::ui;
using test::Find;

namespace {

class TunnelViewTest : public testing::Test {
  protected:
    TunnelViewTest() {
        AppCtrl::Instance().language = SysLang::kEnglish;
        view.resize(592, 564);
        view.show();
    }
    void online() {
        view.SetState(ConnectStatus::Connected, QStringLiteral("Connected"),
                      QStringLiteral("Head office"));
    }
    QString label(char const* name) { return Find<QLabel>(view, name).text(); }

    TunnelView view;
};

}  // namespace

TEST_F(TunnelViewTest, ShowsTheShieldUntilThereIsAConnectionToTellOf) {
    EXPECT_TRUE(Find<QLabel>(view, "hero_title_").isVisible());
    EXPECT_EQ(label("hero_title_"), QStringLiteral("Disconnected"));
    view.SetState(ConnectStatus::Connecting, QStringLiteral("Connecting"), QStringLiteral("Lab"));
    EXPECT_TRUE(Find<QLabel>(view, "state_title_").isVisible());
    EXPECT_FALSE(Find<QWidget>(view, "tab_statistics_").isVisible());
    online();
    view.SetDuration(QStringLiteral("00:12:34"));
    EXPECT_TRUE(Find<QWidget>(view, "tab_statistics_").isVisible());
    EXPECT_TRUE(label("state_detail_").startsWith(QStringLiteral("Head office")));
    EXPECT_TRUE(label("state_detail_").endsWith(QStringLiteral("Connection duration 00:12:34")));
}

TEST_F(TunnelViewTest, CountersAreWrittenAndEmptied) {
    online();
    view.SetStatistics({1536, 1572864, 12345, 1, 0.5, 1.255});
    EXPECT_EQ(label("received_value_"), QStringLiteral("1.50 KB"));
    EXPECT_EQ(label("sent_value_"), QStringLiteral("1.50 MB"));
    EXPECT_EQ(label("ratio_in_value_"), QStringLiteral("0.50%"));
    view.ClearStaticsInfo();
    EXPECT_TRUE(label("received_value_").isEmpty());
    EXPECT_TRUE(label("ratio_out_value_").isEmpty());
}

TEST_F(TunnelViewTest, InterfaceRowsWithoutAValueAreLeftOut) {
    online();
    view.SetInterface(
        {{QStringLiteral("IPv4: "), QStringLiteral("10.8.0.7")}, {QStringLiteral("IPv6: "), {}}});
    auto const shown = [this] {
        QStringList texts;
        auto const* panel = view.findChild<QWidget*>(QStringLiteral("interface_panel_"));
        for (auto const* text :
             panel == nullptr ? QList<QLabel*>() : panel->findChildren<QLabel*>()) {
            texts << text->text();
        }
        return texts;
    };
    EXPECT_EQ(shown(), QStringList({QStringLiteral("IPv4:"), QStringLiteral("10.8.0.7")}));
    view.ClearInterfaceInfo();
    EXPECT_TRUE(shown().isEmpty());
}

TEST_F(TunnelViewTest, AWarningStandsUntilItIsTakenBack) {
    online();
    auto& strip = Find<WarningStrip>(view, "warning_strip_");
    EXPECT_FALSE(strip.isVisible());
    view.SetWarning(QStringLiteral("No address"));
    EXPECT_TRUE(strip.isVisible());
    view.SetWarning({});
    EXPECT_FALSE(strip.isVisible());
}

TEST_F(TunnelViewTest, RoutesSwitchFamilySortAndFilter) {
    online();
    view.ShowTab(TunnelView::kRoute);
    auto const route = [](char const* address) {
        return RouteRow{QLatin1String(address), QStringLiteral("8"), {}, {}, {}};
    };
    view.SetRoutes({route("2.0.0.0"), route("1.0.0.0")}, {route("2001:db8::")});
    auto& ipv4 = Find<QTableView>(view, "route_table_ipv4_");
    auto& ipv6 = Find<QTableView>(view, "route_table_ipv6_");
    EXPECT_TRUE(ipv4.isVisible());
    view.Routes().onRouteItemClicked(0);
    EXPECT_EQ(ipv4.model()->index(0, 0).data().toString(), QStringLiteral("1.0.0.0"));
    EXPECT_TRUE(ipv4.model()->headerData(0, Qt::Horizontal).toString().endsWith(u'↑'));
    view.Routes().onRouteItemClicked(0);
    EXPECT_EQ(ipv4.model()->index(0, 0).data().toString(), QStringLiteral("2.0.0.0"));
    QTest::keyClicks(&Find<QLineEdit>(view, "route_search_"), QStringLiteral("1.0"));
    EXPECT_EQ(ipv4.model()->rowCount(), 1);
    Find<QAbstractButton>(view, "tab_ipv6_route_").click();
    EXPECT_TRUE(ipv6.isVisible());
    EXPECT_FALSE(ipv4.isVisible());
    view.ClearRouteInfo();
    EXPECT_EQ(view.Routes().Ipv6().rowCount(), 0);
}

TEST(TabWidgetPlus, HiddenTabsAreSkippedAndComeBack) {
    TabWidgetPlus tabs;
    tabs.show();
    for (auto const* name : {"a", "b", "c"}) {
        tabs.addTab(new QWidget(&tabs), QLatin1String(name), name);
    }
    tabs.hideTab(0);
    EXPECT_EQ(tabs.getRealIndex(0), 1);
    EXPECT_EQ(tabs.getRealIndex(2), -1);
    EXPECT_EQ(tabs.currentIndex(), 1);
    tabs.hideTab(1);
    EXPECT_EQ(tabs.currentIndex(), 2);
    tabs.showTab(0);
    EXPECT_EQ(tabs.getRealIndex(0), 0);
    EXPECT_EQ(tabs.currentIndex(), 2);
}

TEST(TabBar, ArrowKeysMoveBetweenShownTabs) {
    TabBar bar(TabBar::Kind::kUnderlined, 24);
    for (auto const* name : {"a", "b", "c"}) {
        bar.AddTab(QLatin1String(name), name);
    }
    bar.SetTabVisible(1, false);
    bar.show();
    QSignalSpy changes(&bar, &TabBar::CurrentChanged);
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_EQ(bar.Current(), 2);
    QTest::keyClick(&bar, Qt::Key_Right);
    EXPECT_EQ(bar.Current(), 2);
    QTest::keyClick(&bar, Qt::Key_Left);
    EXPECT_EQ(bar.Current(), 0);
    EXPECT_EQ(changes.count(), 2);
}
