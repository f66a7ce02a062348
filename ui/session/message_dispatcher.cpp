#include "ui/session/message_dispatcher.h"

#include "components/logger/logger.h"
#include "core/clmsg_reply_json.h"
#include "core/message_log.h"
#include "ui/session/gateway_lists.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using core::CLMsg;
using core::CLMsgJsonParse;
using namespace core::sslvpn;  // the records

constexpr std::int32_t kServiceTypeWithGateway = 3;

template <class Record>
std::optional<Record> read(std::string const& json) {
    Record record;
    if (!CLMsgReplyJson::Parse(json, &record)) {
        return std::nullopt;
    }
    return record;
}

}  // namespace

MessageDispatcher::Row const MessageDispatcher::kRows[] = {
    {SubType::kNetConfig, &MessageDispatcher::onNetConfig},
    {SubType::kTunnelDisconnect, &MessageDispatcher::onTunnelDisconnect},
    {SubType::kTunnelStatistics, &MessageDispatcher::onTunnelStatistics},
    {SubType::kGatewayList, &MessageDispatcher::onGatewayList},
    {SubType::kGatewayDetectStop, &MessageDispatcher::onGatewayDetectStop},
    {SubType::kCluster, &MessageDispatcher::onCluster},
    {SubType::kChangePwd, &MessageDispatcher::onChangePwd},
    {SubType::kAuth, &MessageDispatcher::onAuth},
    {SubType::kAppResource, &MessageDispatcher::onAppResource},
    {SubType::kCertRequest, &MessageDispatcher::onCertRequest},
    {SubType::kGmCertRequest, &MessageDispatcher::onCertRequest},
    {SubType::kCertRespond, &MessageDispatcher::HandleCertRespond},
    {SubType::kGmCertRespond, &MessageDispatcher::HandleGMCertRespond},
    {SubType::kUpdate, &MessageDispatcher::onUpdate},
    {SubType::kAddRoute, &MessageDispatcher::onAddRoute},
    {SubType::kErrMsgByServer, &MessageDispatcher::onErrMsgByServer},
    {SubType::kPushStatus, &MessageDispatcher::onPushStatus},
    {SubType::kVnicState, &MessageDispatcher::onVnicState},
    {SubType::kDisconnectReason, &MessageDispatcher::onDisconnectReason},
    {SubType::kExecScript, &MessageDispatcher::onExecScript},
};

std::vector<CLMsg::SubType> MessageDispatcher::SubTypes() {
    std::vector<CLMsg::SubType> subtypes;
    for (Row const& row : kRows) {
        subtypes.push_back(row.subtype);
    }
    return subtypes;
}

bool MessageDispatcher::ProcessServiceMsg(std::string const& json) {
    CLMsg::Type type{};
    SubType subtype = SubType::kUnknown;
    MsgCode status{};
    bool const understood = CLMsgJsonParse::Parse(json, &type, &subtype, &status);
    Log().debug("recv {} from service", CLMsg::SubTypeToString(subtype));
    if (!understood || type != CLMsg::Type::kReply) {
        Log().error("Not supported type, json: {}", core::RefusedMessage(json));
        return false;
    }
    auto const* const row = std::find_if(std::begin(kRows), std::end(kRows),
                                         [subtype](Row const& r) { return r.subtype == subtype; });
    bool const ok = row != std::end(kRows) ? (this->*row->handle)(json) : onCommonReply(json);
    Log().debug("handle msg with ret {} ", ok);
    if (!ok) {
        Log().error("Failed to handle json string: {}, data: {}", CLMsg::SubTypeToString(subtype),
                    core::RefusedMessage(json));
    }
    return ok;
}

template <class Record, class Handler>
bool MessageDispatcher::readFor(std::string const& json, Handler&& handle) {
    auto const data = read<Record>(json);
    if (data) {
        if (auto const profile = core_.Addressee(data->profileName)) {
            handle(*data, *profile);
        }
    }
    return data.has_value();
}

template <class Handler>
bool MessageDispatcher::readForSession(std::string const& json, char const* logLine,
                                       Handler&& handle) {
    Log().info("{}", logLine);
    return readFor<CLMsgCommonReplyData>(json, [&](auto const& data, Profile& profile) {
        if (core_.state.SessionStands()) {
            handle(data, profile);
        } else {
            Log().debug("The session is over, ignore status {}", static_cast<int>(data.statusCode));
        }
    });
}

bool MessageDispatcher::onNetConfig(std::string const& json) {
    return readFor<CLMsgReplyNetConfigData>(json, [this](auto const& data, Profile&) {
        Log().info("Get network configuration from service");
        core_.context.netConfig = data;
        core_.state.lastNetConfigHasGateway = data.serviceType == kServiceTypeWithGateway;
        if (core_.state.online) {
            Q_EMIT core_.NetConfigArrived();
        }
    });
}

bool MessageDispatcher::onTunnelDisconnect(std::string const& json) {
    return readFor<CLMsgReplyTunnelDisconnectData>(json, [this](auto const& data, Profile&) {
        Log().info("Disconnect Reason: {}", DisconnectReasonText(data.reason));
        failures_.HandleTunnelDisconnect(data);
    });
}

bool MessageDispatcher::onTunnelStatistics(std::string const& json) {
    return readFor<CLMsgReplyTunnelStatisticsData>(json, [this](auto const& data, Profile&) {
        core_.context.statistics = data;
        core_.link.NotePeriodic();
        Q_EMIT core_.StatisticsArrived();
    });
}

bool MessageDispatcher::onGatewayList(std::string const& json) {
    auto const data = read<CLMsgGatewayListData>(json);
    if (data) {
        HandleGatewayList(core_.config, *data);
    }
    return data.has_value();
}

bool MessageDispatcher::onCluster(std::string const& json) {
    auto const data = read<CLMsgClusterData>(json);
    if (data) {
        HandleClusterList(core_.config, *data);
    }
    return data.has_value();
}

bool MessageDispatcher::onGatewayDetectStop(std::string const& json) {
    return readFor<CLMsgGatewayDetectStopData>(
        json, [this](auto const& data, Profile&) { failures_.HandleGatewayDetectStop(data); });
}

bool MessageDispatcher::onAddRoute(std::string const& json) {
    return readFor<DomainRouteAddRouteData>(
        json, [this](auto const& data, Profile&) { Q_EMIT core_.DomainRouteArrived(data); });
}

bool MessageDispatcher::onErrMsgByServer(std::string const& json) {
    return readFor<CLMsgNotifyErrorMsgData>(
        json, [this](auto const& data, Profile&) { failures_.HandleErrMsgByServer(data); });
}

bool MessageDispatcher::onPushStatus(std::string const& json) {
    return readFor<CLMsgSessionStatus>(json, [this](auto const& data, Profile&) {
        handlers_.connection.HandlePushReportData(data);
    });
}

bool MessageDispatcher::onVnicState(std::string const& json) {
    auto const data = read<CLMsgVINCState>(json);
    if (data) {
        core_.state.adapterUsable = data->state;
        core_.Announce();
    }
    return data.has_value();
}

bool MessageDispatcher::onChangePwd(std::string const& json) {
    return readForSession(
        json, "Get change pwd from service",
        [this](auto const& data, Profile& p) { handlers_.login.HandleChangePWD(data, p); });
}

bool MessageDispatcher::onAuth(std::string const& json) {
    return readForSession(json, "Get auth data from service", [this](auto const& data, Profile& p) {
        handlers_.login.HandleAuthData(data, p);
    });
}

bool MessageDispatcher::onCertRequest(std::string const& json) {
    return readForSession(
        json, "Get sign request from service",
        [this](auto const& data, Profile& p) { handlers_.signing.HandleSignRequest(data, p); });
}

bool MessageDispatcher::onAppResource(std::string const& json) {
    return read<CLMsgZtnaAppResourceData>(json).has_value();
}

bool MessageDispatcher::HandleCertRespond(std::string const& json) {
    auto const certs = ReadCertRespond(json);
    if (certs) {
        Q_EMIT certs_.RecvCertInfo(*certs);
    }
    return certs.has_value();
}

bool MessageDispatcher::HandleGMCertRespond(std::string const& json) {
    Log().info("Handle GM certificate respond");
    bool const understood = read<ALMsgGMCertRespondData>(json).has_value();
    if (!understood) {
        Log().error("Failed to handle GM certificate respond");
    }
    return understood;
}

bool MessageDispatcher::onUpdate(std::string const& json) {
    return read<CLMsgUpdate>(json).has_value();
}

bool MessageDispatcher::onDisconnectReason(std::string const& json) {
    return readFor<CLMsgCommonReplyData>(
        json, [this](auto const& data, Profile&) { failures_.HandleDisconnectReason(data); });
}

// Scripts are the service's own business.
bool MessageDispatcher::onExecScript(std::string const& /*json*/) {
    return true;
}

bool MessageDispatcher::onCommonReply(std::string const& json) {
    auto const data = read<CLMsgCommonReplyData>(json);
    if (!data) {
        Log().error("Failed to parse common reply data from service");
        return false;
    }
    Log().info("Get common reply status from service");
    statuses_.HandleCommonReplyData(*data);
    return true;
}

}  // namespace zorvanelink::ui
