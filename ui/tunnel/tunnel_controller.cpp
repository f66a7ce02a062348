#include "ui/tunnel/tunnel_controller.h"

#include <algorithm>

#include "components/logger/logger.h"
#include "components/utils/address.h"
#include "ui/text/texts.h"
#include "ui/tunnel/format.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using core::sslvpn::CLMsgReplyNetConfigData;
using core::sslvpn::NetConfigRoute;

namespace utils = components::utils;

// Empty for an address that is absent, no address at all, or the wildcard.
QString addressText(std::string const& text) {
    return utils::IsWildcardAddr(text) ? QString()
                                       : QString::fromStdString(utils::NormalizeAddr(text));
}

QString netmaskText(int prefix) {
    return QString::fromStdString(utils::GetStrFromIpv4(utils::NetmaskFromPrefix(prefix)));
}

// Addresses that are some, on one line; what is above the limit is counted on a second one.
QString joined(std::vector<std::string> const& items) {
    constexpr int kMost = 64;
    QStringList list;
    std::size_t more = 0;
    for (std::string const& item : items) {
        if (more > 0 || list.size() == kMost) {
            ++more;
        } else if (QString const address = addressText(item); !address.isEmpty()) {
            list += address;
        }
    }
    QString const shown = list.join(QStringLiteral("; "));
    return more == 0 ? shown : shown + QLatin1Char('\n') + AndMore(more);
}

RouteTable routeTable(std::vector<NetConfigRoute> const& routes, QString const& gateway,
                      QString const& interface, bool ipv4) {
    auto const shown = std::min(routes.size(), RouteModel::kMaxRows);
    std::vector<RouteRow> rows;
    rows.reserve(shown);
    for (std::size_t i = 0; i < shown; ++i) {
        NetConfigRoute const& route = routes[i];
        rows.push_back({QString::fromStdString(route.destination),
                        ipv4 ? netmaskText(route.prefix) : QString::number(route.prefix), gateway,
                        interface, QString::number(route.metric)});
    }
    return {std::move(rows), routes.size() - shown};
}

QString publicAddressLabel() {
    return Translate(QT_TRANSLATE_NOOP("ui", "Public Address:"));
}

InterfaceRows interfaceRows(CLMsgReplyNetConfigData const& data) {
    QString const ipv4 = addressText(data.clientPrivateIP);
    QString const ipv6 = addressText(data.clientPrivateIPv6);
    return {
        {GetTrMsg(MsgCode::UI_TR_IPV4_NETWORK_ADDRESS), ipv4},
        {GetTrMsg(MsgCode::UI_TR_IPV4_SUBNET_MASK),
         ipv4.isEmpty() ? QString() : netmaskText(data.prefix)},
        {GetTrMsg(MsgCode::UI_TR_IPV4_DEFAULT_GATEWAY),
         ipv4.isEmpty() ? QString() : addressText(data.vnicGatewayIP)},
        {GetTrMsg(MsgCode::UI_TR_IPV4_DNS_SERVER_ADDRESS),
         ipv4.isEmpty() ? QString() : joined(data.dnsList)},
        {GetTrMsg(MsgCode::UI_TR_IPV4_WINS), ipv4.isEmpty() ? QString() : joined(data.winsList)},
        {GetTrMsg(MsgCode::UI_TR_IPV6_NETWORK_ADDRESS), ipv6},
        {GetTrMsg(MsgCode::UI_TR_IPV6_SUBNET_MASK),
         ipv6.isEmpty() ? QString() : QString::number(data.prefixIPv6, 10)},
        {GetTrMsg(MsgCode::UI_TR_IPV6_DEFAULT_GATEWAY),
         ipv6.isEmpty() ? QString() : addressText(data.vnicGatewayIPv6)},
        {GetTrMsg(MsgCode::UI_TR_IPV6_DNS_SERVER_ADDRESS),
         ipv6.isEmpty() ? QString() : joined(data.ipv6DnsList)},
        {publicAddressLabel(), addressText(data.clientPublicIP)},
        {Translate(QT_TRANSLATE_NOOP("ui", "Server Address:")), addressText(data.serverPublicIP)},
        {Translate(QT_TRANSLATE_NOOP("ui", "Optimal Gateway:")),
         QString::fromStdString(data.optimalGatewayName)},
        {Translate(QT_TRANSLATE_NOOP("ui", "Optimal Gateway Address:")),
         addressText(data.optimalGatewayIP)},
    };
}

}  // namespace

TunnelController::TunnelController(TunnelView& view, Context const& session,
                                   std::chrono::milliseconds period)
    : view_(view), session_(session), period_(period) {
    connect(&statisticsTimer_, &QTimer::timeout, this, [this] {
        statisticsTimer_.setInterval(period_);
        onUpdateTunnelStatisticsInfo();
    });
}

void TunnelController::onNotifyConnectStatus(QString const& /*name*/, ConnectStatus status) {
    ClearDisplayInfo(status == ConnectStatus::Disconnected || status > ConnectStatus::Connected);
    if (status == ConnectStatus::Connected) {
        statisticsTimer_.start(period_);
        onUpdateTunnelStatisticsInfo();
        AddNetconfigInfo();
    }
}

void TunnelController::AddNetconfigInfo() {
    CLMsgReplyNetConfigData const& data = session_.netConfig;
    QString const gateway = addressText(data.vnicGatewayIP);
    QString const address = addressText(data.clientPrivateIP);
    Log().info("client public ip: {}", data.clientPublicIP);
    Log().info("Add Net config Info[gateway: {}, iface_ip: {}]", gateway.toStdString(),
               address.toStdString());
    shown_ = interfaceRows(data);
    view_.SetInterface(shown_);
    view_.SetRoutes(routeTable(data.routeList, gateway, address, true),
                    routeTable(data.ipv6RouteList, addressText(data.vnicGatewayIPv6),
                               addressText(data.clientPrivateIPv6), false));
}

void TunnelController::HandleDomainAddRoute(core::sslvpn::DomainRouteAddRouteData const& route) {
    bool const ipv4 = route.destination.find(':') == std::string::npos;
    auto table = routeTable({{route.destination, route.perfix, route.metric}},
                            addressText(route.gateway), addressText(route.iface_ip), ipv4);
    ipv4 ? view_.AddRoutes(table.rows, {}) : view_.AddRoutes({}, table.rows);
}

void TunnelController::SetClientAddress(QString const& address) {
    QString const label = publicAddressLabel();
    auto row = std::find_if(shown_.begin(), shown_.end(),
                            [&](InterfaceRow const& one) { return one.label == label; });
    if (row == shown_.end()) {
        row = shown_.insert(row, {label, {}});
    }
    row->value = addressText(address.toStdString());
    view_.SetInterface(shown_);
}

void TunnelController::onTunnelStatistics() {
    if (!statisticsTimer_.isActive()) {
        return;
    }
    statisticsTimer_.start(period_ +
                           period_ / 4);  // the next record comes first, unless it is late
    if (sinceShown_.hasExpired((period_ / 2).count())) {
        onUpdateTunnelStatisticsInfo();
    }
}

void TunnelController::onUpdateTunnelStatisticsInfo() {
    sinceShown_.start();
    auto const& data = session_.statistics;
    view_.SetStatistics({data.inbound_bytes, data.outbound_bytes, data.inbound_packets,
                         data.outbound_packets, data.inbound_comp_ratio, data.outbound_comp_ratio});
    view_.SetDuration(GetDateTimeString(session_.connectTime));
}

void TunnelController::ClearDisplayInfo(bool clearAll) {
    statisticsTimer_.stop();
    view_.ClearStaticsInfo();
    view_.SetDuration(QString());
    if (clearAll) {
        shown_.clear();
        view_.ClearInterfaceInfo();
        view_.ClearRouteInfo();
    }
}

}  // namespace zorvanelink::ui
