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

template <class Record>
std::optional<Record> read(core::CLMsgDocument const& message) {
    Record record;
    if (!CLMsgReplyJson::Parse(message, &record)) {
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
    {SubType::kCertRequest, &MessageDispatcher::onCommonReply},
    {SubType::kGmCertRequest, &MessageDispatcher::onCommonReply},
    {SubType::kCertRespond, &MessageDispatcher::HandleCertRespond},
    {SubType::kGmCertRespond, &MessageDispatcher::HandleGMCertRespond},
    {SubType::kUpdate, &MessageDispatcher::onUpdate},
    {SubType::kAddRoute, &MessageDispatcher::onAddRoute},
    {SubType::kErrMsgByServer, &MessageDispatcher::onErrMsgByServer},
    {SubType::kPushStatus, &MessageDispatcher::onPushStatus},
    {SubType::kVnicState, &MessageDispatcher::onVnicState},
    {SubType::kDisconnectReason, &MessageDispatcher::onCommonReply},
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
    Message message;
    bool const understood = CLMsgJsonParse::Parse(json, &type, &subtype, &status, &message);
    Log().debug("recv {} from service", CLMsg::SubTypeToString(subtype));
    if (!understood || type != CLMsg::Type::kReply) {
        if (message.Get() != nullptr) {  // else it has been logged as no message at all
            Log().error("Not supported type, json: {}", core::RefusedMessage(json));
        }
        return false;
    }
    auto const* const row = std::find_if(std::begin(kRows), std::end(kRows),
                                         [subtype](Row const& r) { return r.subtype == subtype; });
    bool const ok = row != std::end(kRows) ? (this->*row->handle)(message) : onCommonReply(message);
    Log().debug("handle msg with ret {} ", ok);
    if (!ok) {
        Log().error("Failed to handle json string: {}, data: {}", CLMsg::SubTypeToString(subtype),
                    core::RefusedMessage(json));
    }
    return ok;
}

template <class Record, class Handler>
bool MessageDispatcher::readFor(Message const& message, Handler&& handle) {
    auto const data = read<Record>(message);
    if (data) {
        auto const profile = core_.Addressee(data->profileName);
        if (profile && core_.state.OfAttemptBefore()) {
            Log().info("That was of the attempt before");
        } else if (profile) {
            handle(*data, *profile);
        }
    }
    return data.has_value();
}

bool MessageDispatcher::onNetConfig(Message const& message) {
    return readFor<CLMsgReplyNetConfigData>(message, [this](auto const& data, Profile&) {
        Log().info("Get network configuration from service");
        core_.context.netConfig = data;
        if (core_.state.online) {
            Q_EMIT core_.NetConfigArrived();
        }
    });
}

bool MessageDispatcher::onTunnelDisconnect(Message const& message) {
    return readFor<CLMsgReplyTunnelDisconnectData>(message, [this](auto const& data, Profile&) {
        Log().info("Disconnect Reason: {}", DisconnectReasonText(data.reason));
        failures_.HandleTunnelDisconnect(data);
    });
}

bool MessageDispatcher::onTunnelStatistics(Message const& message) {
    return readFor<CLMsgReplyTunnelStatisticsData>(message, [this](auto const& data, Profile&) {
        core_.context.statistics = data;
        core_.link.NotePeriodic();
        Q_EMIT core_.StatisticsArrived();
    });
}

bool MessageDispatcher::onGatewayList(Message const& message) {
    auto const data = read<CLMsgGatewayListData>(message);
    if (data) {
        HandleGatewayList(core_.config, *data);
    }
    return data.has_value();
}

bool MessageDispatcher::onCluster(Message const& message) {
    auto const data = read<CLMsgClusterData>(message);
    if (data) {
        HandleClusterList(core_.config, *data);
    }
    return data.has_value();
}

bool MessageDispatcher::onGatewayDetectStop(Message const& message) {
    return readFor<CLMsgGatewayDetectStopData>(
        message, [this](auto const& data, Profile&) { failures_.HandleGatewayDetectStop(data); });
}

bool MessageDispatcher::onAddRoute(Message const& message) {
    return readFor<DomainRouteAddRouteData>(
        message, [this](auto const& data, Profile&) { Q_EMIT core_.RecvDomianRoute(data); });
}

bool MessageDispatcher::onErrMsgByServer(Message const& message) {
    return readFor<CLMsgNotifyErrorMsgData>(
        message, [this](auto const& data, Profile&) { failures_.HandleErrMsgByServer(data); });
}

bool MessageDispatcher::onPushStatus(Message const& message) {
    return readFor<CLMsgSessionStatus>(message, [this](auto const& data, Profile&) {
        handlers_.connection.HandlePushReportData(data);
    });
}

bool MessageDispatcher::onVnicState(Message const& message) {
    auto const data = read<CLMsgVINCState>(message);
    if (data) {
        core_.state.adapterUsable = data->state;
        core_.Announce();
    }
    return data.has_value();
}

bool MessageDispatcher::onChangePwd(Message const& message) {
    Log().info("Get change pwd from service");
    return readFor<CLMsgCommonReplyData>(message, [this](auto const& data, Profile& profile) {
        LogStatus(data.statusCode);
        if (core_.state.SessionStands()) {
            handlers_.login.HandleChangePWD(data, profile);
        } else {
            Log().debug("The session is over");
        }
    });
}

bool MessageDispatcher::onAuth(Message const& message) {
    Log().info("Get auth data from service");
    return onCommonReply(message);
}

bool MessageDispatcher::onAppResource(Message const& message) {
    return read<CLMsgZtnaAppResourceData>(message).has_value();
}

bool MessageDispatcher::HandleCertRespond(Message const& message) {
    auto const certs = ReadCertRespond(message);
    if (certs) {
        Q_EMIT certs_.RecvCertInfo(*certs);
    }
    return certs.has_value();
}

bool MessageDispatcher::HandleGMCertRespond(Message const& message) {
    Log().info("Handle GM certificate respond");
    bool const understood = read<ALMsgGMCertRespondData>(message).has_value();
    if (!understood) {
        Log().error("Failed to handle GM certificate respond");
    }
    return understood;
}

bool MessageDispatcher::onUpdate(Message const& message) {
    return read<CLMsgUpdate>(message).has_value();
}

// Scripts are the service's own business.
bool MessageDispatcher::onExecScript(Message const& /*message*/) {
    return true;
}

bool MessageDispatcher::onCommonReply(Message const& message) {
    auto const data = read<CLMsgCommonReplyData>(message);
    if (!data) {
        Log().error("Failed to parse common reply data from service");
        return false;
    }
    Log().info("Get common reply status from service");
    statuses_.HandleCommonReplyData(*data);
    return true;
}

}  // namespace zorvanelink::ui
