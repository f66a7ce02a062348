#include "ui/tunnel/tunnel_controller.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>

#include "app/environment/app_ctrl.h"
#include "tests/support/qt_helpers.h"

namespace zorvanelink::ui {
namespace {

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
            texts.push_back(test::Find<QLabel>(view, card).text().toStdString());
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
    test::Find<QPushButton>(view, "copy_all_").click();
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

}  // namespace
}  // namespace zorvanelink::ui
