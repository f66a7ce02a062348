#include "ui/tunnel/tunnel_controller.h"

#include "components/logger/logger.h"
#include "components/utils/address.h"
#include "ui/text/texts.h"
#include "ui/tunnel/format.h"
#include "ui/widgets/style.h"

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

QString joined(std::vector<std::string> const& items) {
    QStringList list;
    for (std::string const& item : items) {
        list += QString::fromStdString(item);
    }
    return list.join(QStringLiteral("; "));
}

std::vector<RouteRow> routeRows(std::vector<NetConfigRoute> const& routes, QString const& gateway,
                                QString const& interface, bool ipv4) {
    std::vector<RouteRow> rows;
    rows.reserve(routes.size());
    for (NetConfigRoute const& route : routes) {
        rows.push_back({QString::fromStdString(route.destination),
                        ipv4 ? netmaskText(route.prefix) : QString::number(route.prefix), gateway,
                        interface, QString::number(route.metric)});
    }
    return rows;
}

}  // namespace

TunnelController::TunnelController(TunnelView& view, Context const& session)
    : view_(view), session_(session) {
    statisticsTimer_.setInterval(kStatisticsPeriod);
    connect(&statisticsTimer_, &QTimer::timeout, this,
            &TunnelController::onUpdateTunnelStatisticsInfo);
}

void TunnelController::onNotifyConnectStatus(QString const& /*name*/, ConnectStatus status) {
    bool const up = status == ConnectStatus::Connected;
    ClearDisplayInfo(status == ConnectStatus::Disconnected || status > ConnectStatus::Connected);
    if (up) {
        statisticsTimer_.start();
        onUpdateTunnelStatisticsInfo();
        AddNetconfigInfo();
    }
}

void TunnelController::AddNetconfigInfo() {
    CLMsgReplyNetConfigData const& data = session_.netConfig;
    shown_ = data;
    QString const gateway = addressText(data.vnicGatewayIP);
    QString const address = addressText(data.clientPrivateIP);
    Log().info("client public ip: {}", data.clientPublicIP);
    Log().info("Add Net config Info[gateway: {}, iface_ip: {}]", gateway.toStdString(),
               address.toStdString());
    showInterface();
    view_.SetRoutes(routeRows(data.routeList, gateway, address, true),
                    routeRows(data.ipv6RouteList, addressText(data.vnicGatewayIPv6),
                              addressText(data.clientPrivateIPv6), false));
}

void TunnelController::showInterface() {
    CLMsgReplyNetConfigData const& data = shown_;
    QString const ipv4 = addressText(data.clientPrivateIP);
    QString const ipv6 = addressText(data.clientPrivateIPv6);
    view_.SetInterface({
        {GetTrMsg(MsgCode::UI_TR_IPV4_NETWORK_ADDRESS), ipv4},
        {GetTrMsg(MsgCode::UI_TR_IPV4_SUBNET_MASK),
         ipv4.isEmpty() ? QString() : netmaskText(data.prefix)},
        {GetTrMsg(MsgCode::UI_TR_IPV4_DEFAULT_GATEWAY),
         ipv4.isEmpty() ? QString() : addressText(data.vnicGatewayIP)},
        {GetTrMsg(MsgCode::UI_TR_IPV4_DNS_SERVER_ADDRESS), joined(data.dnsList)},
        {GetTrMsg(MsgCode::UI_TR_IPV4_WINS), joined(data.winsList)},
        {GetTrMsg(MsgCode::UI_TR_IPV6_NETWORK_ADDRESS), ipv6},
        {GetTrMsg(MsgCode::UI_TR_IPV6_SUBNET_MASK),
         ipv6.isEmpty() ? QString() : QString::number(data.prefixIPv6, 10)},
        {GetTrMsg(MsgCode::UI_TR_IPV6_DEFAULT_GATEWAY),
         ipv6.isEmpty() ? QString() : addressText(data.vnicGatewayIPv6)},
        {GetTrMsg(MsgCode::UI_TR_IPV6_DNS_SERVER_ADDRESS), joined(data.ipv6DnsList)},
        {Translate(QT_TRANSLATE_NOOP("ui", "Public address:")), addressText(data.clientPublicIP)},
        {Translate(QT_TRANSLATE_NOOP("ui", "Server address:")), addressText(data.serverPublicIP)},
        {Translate(QT_TRANSLATE_NOOP("ui", "Optimal gateway:")),
         QString::fromStdString(data.optimalGatewayName)},
        {Translate(QT_TRANSLATE_NOOP("ui", "Optimal gateway address:")),
         addressText(data.optimalGatewayIP)},
    });
}

void TunnelController::HandleDomainAddRoute(core::sslvpn::DomainRouteAddRouteData const& route) {
    bool const ipv4 = route.destination.find(':') == std::string::npos;
    auto rows = routeRows({{route.destination, route.perfix, route.metric}},
                          addressText(route.gateway), addressText(route.iface_ip), ipv4);
    ipv4 ? view_.AddRoutes(rows, {}) : view_.AddRoutes({}, rows);
}

void TunnelController::SetClientAddress(QString const& address) {
    shown_.clientPublicIP = address.toStdString();
    showInterface();
}

void TunnelController::onUpdateTunnelStatisticsInfo() {
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
        shown_ = {};
        view_.ClearInterfaceInfo();
        view_.ClearRouteInfo();
    }
}

}  // namespace zorvanelink::ui
