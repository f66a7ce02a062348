#include "ui/session/gateway_lists.h"

#include <limits>

#include "components/logger/logger.h"
#include "components/utils/text.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;
using components::utils::String2Int;

// Null when the entry is whole.
char const* missingFieldOf(std::string const& name, core::sslvpn::Gateway const& gateway) {
    if (name.empty()) {
        return "name";
    }
    if (gateway.addr.empty()) {
        return "addr";
    }
    return gateway.detectPort.empty() || gateway.sslPort.empty() ? "port" : nullptr;
}

// A number that is no port counts as none: cut to 16 bits it would name another one.
std::uint16_t port(std::int32_t number) {
    bool const valid = number >= 0 && number <= std::numeric_limits<std::uint16_t>::max();
    return valid ? static_cast<std::uint16_t>(number) : 0;
}

}  // namespace

void HandleGatewayList(Config& config, core::sslvpn::CLMsgGatewayListData const& data) {
    std::shared_ptr<Profile> const profile = config.GetProfile(data.profileName);
    if (!profile) {
        return;
    }
    Log().info("Update gatewaylist");
    profile->gatewayList.clear();
    for (auto const& [name, gateway] : data.gatewayList) {
        if (char const* const field = missingFieldOf(name, gateway)) {
            Log().warning("gatewaylist {} field is empty, skipping it", field);
            continue;
        }
        profile->gatewayList[name] = {gateway.addr, port(String2Int(gateway.detectPort)),
                                      port(String2Int(gateway.sslPort))};
    }
    Log().info("Update preferred gatewaylist");
    if (!profile->gatewayList.contains(profile->perferredGatewayName)) {
        profile->perferredGatewayName.clear();
    }
    Log().info("Save profile [{}] gatewaylist", profile->name);
    config.Save();
}

void HandleClusterList(Config& config, core::sslvpn::CLMsgClusterData const& data) {
    std::shared_ptr<Profile> const profile = config.GetProfile(data.profileName);
    if (!profile) {
        return;
    }
    profile->clusterList.clear();
    for (auto const& [address, server] : data.clusterList) {
        profile->clusterList[address] = {address, port(server.port)};
    }
    Log().info("Save profile [{}] cluster", profile->name);
    config.Save();
}

}  // namespace zorvanelink::ui
