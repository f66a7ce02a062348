#include "ui/tunnel/tunnel_controller.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QHeaderView>
#include <QMenu>
#include <QSignalSpy>
#include <QToolTip>
#include <QtTest/QTest>

#include "app/environment/app_ctrl.h"
#include "tests/support/qt_helpers.h"

namespace zorvanelink::ui {
namespace {

using test::Find;
using testing::ElementsAre;
using testing::IsEmpty;

class TunnelControllerTest : public testing::Test {
  protected:
    TunnelControllerTest() { AppCtrl::Instance().language = SysLang::kEnglish; }

    std::vector<std::string> textsIn(char const* parent) {
        std::vector<std::string> texts;
        auto const* const panel = view.findChild<QWidget*>(QLatin1String(parent));
        for (auto const* text :
             panel == nullptr ? QList<QLabel*>() : panel->findChildren<QLabel*>()) {
            texts.push_back(text->text().toStdString());
        }
        return texts;
    }
    std::vector<std::string> counters() {
        std::vector<std::string> texts;
        for (auto const* card : {"received_value_", "sent_value_", "ratio_in_value_",
                                 "ratio_out_value_", "state_detail_"}) {
            texts.push_back(Find<QLabel>(view, card).text().toStdString());
        }
        for (auto const* detail : view.findChildren<QLabel*>(QStringLiteral("card_detail_"))) {
            texts.push_back(detail->text().toStdString());
        }
        return texts;
    }

    void go(ConnectStatus status) { controller.onNotifyConnectStatus({}, status); }

    Context session;
    TunnelView view;
    // Ticks whenever events are processed.
    TunnelController controller{view, session, std::chrono::milliseconds(0)};
};

TEST_F(TunnelControllerTest, ShowsWhatTheServiceToldAndKeepsItOverAnInterruption) {
    core::sslvpn::CLMsgReplyNetConfigData& data = session.netConfig;
    data.clientPrivateIP = "10.8.0.2";
    data.prefix = 20;
    data.vnicGatewayIP = "10.8.0.1";
    data.dnsList = {"10.0.0.53", "", "0.0.0.0", "10.0.0.54"};
    data.winsList = {"0.0.0.0", ""};
    data.clientPrivateIPv6 = "FD00:0::2";
    data.prefixIPv6 = 64;
    data.vnicGatewayIPv6 = "::";
    data.ipv6DnsList = std::vector<std::string>(70, "fd00::53");
    data.serverPublicIP = "203.0.113.7";
    data.optimalGatewayName = "Frankfurt";
    data.routeList = {{"10.1.0.0", 16, 7}};
    data.ipv6RouteList = {{"fd01::", 48, 8}};
    go(ConnectStatus::Connected);
    controller.SetClientAddress(QStringLiteral("198.51.100.4"));
    controller.HandleDomainAddRoute({"p", "10.2.0.0", "10.8.0.2", 24, 9, "10.8.0.9"});
    controller.HandleDomainAddRoute({"p", "fd02::", "fd00::2", 32, 10, "fd00::9"});

    std::string dns;
    for (int i = 0; i < 64; ++i) {
        dns += i == 0 ? "fd00::53" : "; fd00::53";
    }
    auto const shown = ElementsAre(
        "IPv4 Network Address:", "10.8.0.2", "IPv4 Subnet Mask:", "255.255.240.0",
        "IPv4 Default Gateway:", "10.8.0.1", "IPv4 DNS Server Address:", "10.0.0.53; 10.0.0.54",
        "IPv6 Network Address:", "fd00::2", "IPv6 Subnet Mask:", "64",
        "IPv6 DNS Server Address:", dns + "\nand 6 more", "Public Address:", "198.51.100.4",
        "Server Address:", "203.0.113.7", "Optimal Gateway:", "Frankfurt");
    auto const routes = [this] {
        std::string cells;
        for (RouteModel const* model : {&view.Routes().Ipv4(), &view.Routes().Ipv6()}) {
            for (int i = 0; i < model->rowCount() * model->columnCount(); ++i) {
                cells += model->index(i / 5, i % 5).data().toString().toStdString() + " ";
            }
        }
        return cells;
    };
    std::string const filled =
        "10.1.0.0 255.255.0.0 10.8.0.1 10.8.0.2 7 10.2.0.0 255.255.255.0 10.8.0.9 10.8.0.2 9 "
        "fd01:: 48  fd00::2 8 fd02:: 32 fd00::9 fd00::2 10 ";
    EXPECT_THAT(textsIn("interface_panel_"), shown);
    EXPECT_EQ(routes(), filled);
    go(ConnectStatus::PrepareReconnecting);
    EXPECT_THAT(textsIn("interface_panel_"), shown);
    EXPECT_EQ(routes(), filled);
    Find<QPushButton>(view, "copy_all_").click();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(
        QLatin1String("IPv4 Network Address: 10.8.0.2\nIPv4 Subnet Mask: 255.255.240.0\n")));
    data.clientPrivateIPv6.clear();
    controller.AddNetconfigInfo();
    EXPECT_THAT(textsIn("interface_panel_"),
                testing::Not(testing::Contains(testing::StartsWith("IPv6"))));
    go(ConnectStatus::Disconnected);
    EXPECT_THAT(textsIn("interface_panel_"), IsEmpty());
    EXPECT_EQ(routes(), "");
}

TEST_F(TunnelControllerTest, CountersFollowTheRecordUntilTheSessionPauses) {
    view.SetState(Look::kConnected, QStringLiteral("Connected"), QStringLiteral("Lab"), true);
    view.resize(592, 564);
    view.show();
    go(ConnectStatus::Connected);
    session.connectTime = QDateTime::currentDateTime().addDays(-2);
    auto& record = session.statistics;
    record.inbound_bytes = 1536;
    record.outbound_bytes = 1572864;
    record.inbound_packets = 12345;
    record.outbound_packets = 6;
    record.inbound_comp_ratio = 0.5;
    record.outbound_comp_ratio = 1.256;
    QApplication::processEvents();
    EXPECT_THAT(counters(),
                ElementsAre("1.50 KB", "1.50 MB", "0.50%", "1.26%",
                            testing::StartsWith("Lab  •  Connection duration 2 days 00:00:0"),
                            "12,345 packets", "6 packets"));
    record.inbound_packets = 7;
    controller.onTunnelStatistics();
    EXPECT_EQ(counters()[5], "7 packets") << "what arrives is the tick";
    go(ConnectStatus::Reconnecting);
    controller.onTunnelStatistics();
    QApplication::processEvents();
    EXPECT_THAT(counters(), ElementsAre("", "", "", "", "Lab", "", ""));
}

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
    EXPECT_EQ(ipv4.model()->rowCount(), 1);
    auto& clear = Find<QToolButton>(view, "clear_search_");
    clear.click();
    EXPECT_FALSE(clear.isVisible());
    EXPECT_EQ(ipv4.model()->rowCount(), 2);
    Find<QAbstractButton>(view, "tab_ipv6_route_").click();
    EXPECT_TRUE(ipv6.isVisible());
    EXPECT_EQ(ipv6.columnWidth(1), view.Routes().width() * 13 / 100) << "an address needs more";
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

}  // namespace
}  // namespace zorvanelink::ui
