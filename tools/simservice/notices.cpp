#include "tools/simservice/notices.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "core/clmsg_reply_json.h"
#include "tools/simservice/routes.h"

namespace zorvanelink::simservice {
namespace {

using core::sslvpn::CLMsgReplyJson;

std::string trimmed(std::string const& text) {
    auto const begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? ""
                                      : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

}  // namespace

std::string ReadableCode(common::MsgCode code) {
    auto const name = common::g_IPCMessageMap.Name(code);
    auto const number = static_cast<int>(code);
    return name.empty() ? fmt::format("{}", number) : fmt::format("{} {}", number, name);
}

std::string StatusNotice(std::string const& profile, common::MsgCode code,
                         std::string const& fields) {
    core::sslvpn::CLMsgCommonReplyData data;
    data.profileName = profile;
    data.statusCode = code;
    auto const json = CLMsgReplyJson::Build(data);
    if (fields.empty()) {
        return json;
    }
    auto message = nlohmann::ordered_json::parse(json);
    message.update(nlohmann::ordered_json::parse(fields));
    return message.dump();
}

std::string ServerMessage(std::string const& profile, std::string const& text) {
    auto const bar = text.find('|');
    core::sslvpn::CLMsgNotifyErrorMsgData data;
    data.profileName = profile;
    data.statusCode = common::MsgCode::ERR_MSG_BY_SERVER;
    data.errorMsgEnglish = trimmed(text.substr(0, bar));
    data.errorMsgChinese = bar == std::string::npos ? "" : trimmed(text.substr(bar + 1));
    return CLMsgReplyJson::Build(data);
}

std::string DetectStop(std::string const& profile, std::string const& reason) {
    return CLMsgReplyJson::Build(core::sslvpn::CLMsgGatewayDetectStopData{profile, reason});
}

std::string DomainRoute(core::sslvpn::CLMsgReplyNetConfigData const& config,
                        std::string const& profile, std::string const& text) {
    auto const space = text.find(' ');
    core::sslvpn::NetConfigRoute route;
    ParseRoute(std::string_view(text).substr(0, space), route);
    bool const ipv6 = route.destination.find(':') != std::string::npos;
    core::sslvpn::DomainRouteAddRouteData data;
    data.profileName = profile;
    data.destination = route.destination;
    data.perfix = route.prefix;
    data.metric = route.metric;
    data.iface_ip = ipv6 ? config.clientPrivateIPv6 : config.clientPrivateIP;
    data.gateway = space != std::string::npos ? trimmed(text.substr(space))
                   : ipv6                     ? config.vnicGatewayIPv6
                                              : config.vnicGatewayIP;
    return CLMsgReplyJson::Build(data);
}

}  // namespace zorvanelink::simservice
