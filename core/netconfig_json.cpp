#include "core/clmsg_reply_json.h"
#include "core/reply_json.h"

namespace zorvanelink::core::sslvpn {
namespace {

using json::Join;
using json::Outcome;
using json::Value;
using Net = CLMsgReplyNetConfigData;
using Row = json::Rows<Net>;
using RouteRow = json::Rows<NetConfigRoute>;

constexpr std::array kRouteFields{
    RouteRow::Required<&NetConfigRoute::prefix>("prefix"),
    RouteRow::Required<&NetConfigRoute::metric>("metric"),
};

// Codec: a route is a flat object whose destination is the name of a member without meaning. Its
// two numbers may also stand in an object that is that member's value.
struct Routes {
    static Outcome Read(Value const& value, std::vector<NetConfigRoute>& out) {
        return json::ReadObjects(value, out, [](Value const& object, auto& read) {
            return readRoute(object, read.emplace_back());
        });
    }

    static void Write(json::Output& out, std::vector<NetConfigRoute> const& routes) {
        out.StartArray();
        for (NetConfigRoute const& route : routes) {
            out.StartObject();
            out.Key(route.destination);
            out.Text("");
            json::WriteFields(out, kRouteFields, route);
            out.EndObject();
        }
        out.EndArray();
    }

  private:
    static bool isNumberKey(Value const& name) {
        std::string_view const key(name.GetString(), name.GetStringLength());
        return std::ranges::any_of(kRouteFields, [key](auto const& row) { return row.key == key; });
    }

    static Outcome readRoute(Value const& object, NetConfigRoute& route) {
        auto const destination =
            std::find_if(object.MemberBegin(), object.MemberEnd(),
                         [](auto const& member) { return !isNumberKey(member.name); });
        if (destination == object.MemberEnd()) {
            json::NoteMissing("destination", json::Need::kRequired);
            return {Outcome::kFailed};
        }
        json::Address::Read(destination->name, route.destination);
        Value const& numbers = destination->value.IsObject() ? destination->value : object;
        return json::ReadFields(numbers, kRouteFields, route) ? json::kStored
                                                              : Outcome{Outcome::kFailed};
    }
};

constexpr std::array kNetConfig{
    Row::Required<&Net::isIPv6Channel>("isIPv6Channel"),
    Row::Required<&Net::tunnelIsTCP>("tunnelIsTCP"),
    Row::Required<&Net::serverType>("serverType"),
    Row::Required<&Net::vnicName>("vnicName"),
    Row::Required<&Net::clientPrivateIP, json::Address>("clientPrivateIP"),
    Row::Required<&Net::clientPrivateIPv6, json::Address>("clientPrivateIPv6"),
    Row::Required<&Net::clientPublicIP, json::Address>("clientPublicIP"),
    Row::Required<&Net::vnicGatewayIP, json::Address>("vnicGatewayIP"),
    Row::Required<&Net::vnicGatewayIPv6, json::Address>("vnicGatewayIPv6"),
    Row::Required<&Net::serverPublicIP, json::Address>("serverPublicIP"),
    Row::Required<&Net::optimalGatewayIP, json::Address>("optimalGatewayIP"),
    Row::Required<&Net::optimalGatewayName>("optimalGatewayName"),
    Row::Required<&Net::prefix>("prefix"),
    Row::Required<&Net::prefixIPv6>("prefixIPv6"),
    Row::Required<&Net::serviceType>("serviceType"),
    Row::Required<&Net::dedicatedTunnel>("dedicatedTunnel"),
    Row::Required<&Net::isDefaultRoute>("isDefaultRoute"),
    Row::Required<&Net::isDefaultIPv6Route>("isDefaultIPv6Route"),
    Row::Required<&Net::routeList, Routes>("routeList"),
    Row::Required<&Net::ipv6RouteList, Routes>("ipv6RouteList"),
    Row::Required<&Net::dnsList>("dnsList"),
    Row::Required<&Net::ipv6DnsList>("ipv6DnsList"),
    Row::Required<&Net::winsList>("winsList"),
    Row::Required<&Net::bypassIpList>("bypassIpList"),
};

}  // namespace

template <>
inline constexpr auto kFields<Net> = Join(HeadRows<Net>("netconfig"), kNetConfig);
template struct Reply<Net>;

}  // namespace zorvanelink::core::sslvpn
