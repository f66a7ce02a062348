#include "ui/session/gateway_lists.h"

#include <limits>

#include "components/logger/logger.h"
#include "components/utils/text.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;
using components::utils::String2Int;

// Of what a gateway may tell: entries of a list, and bytes of a name and of an address.
constexpr std::size_t kMostEntries = 512;
constexpr std::size_t kMostName = 255;
constexpr std::size_t kMostAddress = 2048;

bool isPort(std::int32_t number) {
    return number > 0 && number <= std::numeric_limits<std::uint16_t>::max();
}

// What the entry has to be skipped for; null when it is whole.
char const* faultOf(std::string const& name, core::sslvpn::Gateway const& gateway) {
    if (name.empty()) {
        return "name field is empty";
    }
    if (gateway.addr.empty()) {
        return "addr field is empty";
    }
    if (gateway.detectPort.empty() || gateway.sslPort.empty()) {
        return "port field is empty";
    }
    if (name.size() > kMostName || gateway.addr.size() > kMostAddress) {
        return "name or addr field is too long";
    }
    bool const ports =
        isPort(String2Int(gateway.detectPort)) && isPort(String2Int(gateway.sslPort));
    return ports ? nullptr : "port field is no port";
}

char const* faultOf(std::string const& address, core::sslvpn::Server const& server) {
    if (address.empty() || address.size() > kMostName) {
        return "server field is empty or too long";
    }
    return isPort(server.port) ? nullptr : "port field is no port";
}

Gateway kept(std::string const& /*name*/, core::sslvpn::Gateway const& gateway) {
    return {gateway.addr, static_cast<std::uint16_t>(String2Int(gateway.detectPort)),
            static_cast<std::uint16_t>(String2Int(gateway.sslPort))};
}

Server kept(std::string const& address, core::sslvpn::Server const& server) {
    return {address, static_cast<std::uint16_t>(server.port)};
}

// Puts what is whole in `told` into `list`. True when that changed it.
template <class List, class Told>
bool replaceList(List& list, Told const& told, char const* what) {
    List next;
    for (auto const& [key, entry] : told) {
        if (char const* const fault = faultOf(key, entry)) {
            Log().warning("{} {}, skipping it", what, fault);
        } else if (next.size() < kMostEntries) {
            next.try_emplace(key, kept(key, entry));
        }
    }
    bool const changed = next != list;
    list = std::move(next);
    return changed;
}

// Null for a list of no connection: the name of none would stand for the default one.
std::shared_ptr<Profile> ownerOf(Config& config, std::string const& name) {
    return name.empty() ? nullptr : config.GetProfile(name);
}

}  // namespace

void HandleGatewayList(Config& config, core::sslvpn::CLMsgGatewayListData const& data) {
    std::shared_ptr<Profile> const profile = ownerOf(config, data.profileName);
    if (!profile) {
        return;
    }
    Log().info("Update gatewaylist");
    bool changed = replaceList(profile->gatewayList, data.gatewayList, "gatewaylist");
    Log().info("Update preferred gatewaylist");
    if (!profile->gatewayList.contains(profile->perferredGatewayName)) {
        changed |= !profile->perferredGatewayName.empty();
        profile->perferredGatewayName.clear();
    }
    if (changed) {
        Log().info("Save profile [{}] gatewaylist", profile->name);
        config.Save();
    }
}

void HandleClusterList(Config& config, core::sslvpn::CLMsgClusterData const& data) {
    std::shared_ptr<Profile> const profile = ownerOf(config, data.profileName);
    if (profile && replaceList(profile->clusterList, data.clusterList, "cluster")) {
        Log().info("Save profile [{}] cluster", profile->name);
        config.Save();
    }
}

}  // namespace zorvanelink::ui
