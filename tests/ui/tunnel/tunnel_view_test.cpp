#include "ui/tunnel/tunnel_view.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QSignalSpy>
#include <QToolTip>
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
        view.SetState(Look::kConnected, QStringLiteral("Connected"), QStringLiteral("Head office"),
                      true);
    }
    QString label(char const* name) { return Find<QLabel>(view, name).text(); }

    TunnelView view;
};

}  // namespace

TEST_F(TunnelViewTest, ShowsTheShieldUntilThereIsAConnectionToTellOf) {
    EXPECT_TRUE(Find<QLabel>(view, "hero_title_").isVisible());
    EXPECT_EQ(label("hero_title_"), QStringLiteral("Disconnected"));
    view.SetState(Look::kConnecting, QStringLiteral("Connecting"), QStringLiteral("Lab"), false);
    EXPECT_TRUE(Find<QLabel>(view, "state_title_").isVisible());
    EXPECT_FALSE(Find<QWidget>(view, "tab_statistics_").isVisible());
    online();
    view.SetDuration(QStringLiteral("00:12:34"));
    EXPECT_TRUE(Find<QWidget>(view, "tab_statistics_").isVisible());
    EXPECT_EQ(label("state_detail_"),
              QStringLiteral("Head office  •  Connection duration 00:12:34"));
    view.SetState(Look::kConnected, {}, QStringLiteral("A long name ").repeated(20), true);
    view.SetDuration(QStringLiteral("00:12:34"));
    auto const& detail = Find<QLabel>(view, "state_detail_");
    EXPECT_TRUE(detail.text().endsWith(QStringLiteral("…  •  Connection duration 00:12:34")));
    EXPECT_LE(detail.fontMetrics().horizontalAdvance(detail.text()), detail.width());
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
    view.SetRoutes(std::vector{route("2.0.0.0"), route("1.0.0.0")},
                   std::vector{route("2001:db8::")});
    auto& ipv4 = Find<QTableView>(view, "route_table_ipv4_");
    auto& ipv6 = Find<QTableView>(view, "route_table_ipv6_");
    EXPECT_TRUE(ipv4.isVisible());
    view.Routes().onRouteItemClicked(0);
    EXPECT_EQ(ipv4.model()->index(0, 0).data().toString(), QStringLiteral("1.0.0.0"));
    EXPECT_TRUE(ipv4.model()->headerData(0, Qt::Horizontal).toString().endsWith(u'↑'));
    view.Routes().onRouteItemClicked(0);
    EXPECT_EQ(ipv4.model()->index(0, 0).data().toString(), QStringLiteral("2.0.0.0"));
    auto& search = Find<QLineEdit>(view, "route_search_");
    QTest::keyClicks(&search, QStringLiteral("1.0"));
    // The button that empties the field fades in by an animation that outlives the field.
    auto const* clear = search.findChild<QToolButton*>();
    EXPECT_TRUE(test::WaitFor([clear] { return clear->property("opacity").toReal() >= 1.0; }));
    EXPECT_EQ(ipv4.model()->rowCount(), 1);
    Find<QAbstractButton>(view, "tab_ipv6_route_").click();
    EXPECT_TRUE(ipv6.isVisible());
    EXPECT_FALSE(ipv4.isVisible());
    view.ClearRouteInfo();
    EXPECT_EQ(view.Routes().Ipv6().rowCount(), 0);
}

TEST_F(TunnelViewTest, RoutesAreSortedAndReadByKeyboard) {
    online();
    view.ShowTab(TunnelView::kRoute);
    QString const cut = QStringLiteral("fd00:1111:2222:3333:4444:5555:6666:7777");
    std::vector<RouteRow> rows{{cut, QStringLiteral("16"), {}, {}, {}},
                               {QStringLiteral("10.0.0.0"), QStringLiteral("8"), {}, {}, {}}};
    view.SetRoutes({rows, 7}, {});
    EXPECT_EQ(label("route_note_"), QStringLiteral("and 7 more"));
    auto& table = Find<QTableView>(view, "route_table_ipv4_");
    view.activateWindow();
    auto& head = *table.horizontalHeader();
    head.setFocus();
    QTest::keyClick(&head, Qt::Key_Right);
    QTest::keyClick(&head, Qt::Key_Space);
    EXPECT_EQ(table.model()->index(0, 1).data().toString(), QStringLiteral("8"));
    EXPECT_EQ(head.accessibleName(), table.model()->headerData(1, Qt::Horizontal).toString());
    EXPECT_TRUE(head.accessibleName().endsWith(u'↑'));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    table.setFocus();
    table.setCurrentIndex(table.model()->index(0, 0));
    EXPECT_TRUE(QToolTip::text().isEmpty());
    QTest::keyClick(&table, Qt::Key_Down);
    EXPECT_EQ(QToolTip::text(), cut);
    EXPECT_EQ(label("route_whole_"), cut + QStringLiteral("  •  16  •    •    •  "));
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), cut + QStringLiteral("\t16\t\t\t"));
    EXPECT_EQ(table.textElideMode(), Qt::ElideMiddle);
    Q_EMIT table.customContextMenuRequested({});
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->actions().front()->text(), QStringLiteral("Copy"));
    menu->close();
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
