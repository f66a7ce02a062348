#include "ui/session/message_dispatcher.h"

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "core/clmsg_reply_json.h"
#include "core/message_log.h"
#include "ui/cert/client_certs.h"
#include "ui/session/gateway_lists.h"
#include "ui/text/texts.h"

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

MessageDispatcher::MessageDispatcher(ConnectionState& state, StatusHandler& statuses,
                                     FailurePresenter& failures, Config& config, QObject* parent)
    : QObject(parent), statuses_(statuses), failures_(failures), state_(state), config_(config) {
}

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

bool MessageDispatcher::onNetConfig(std::string const& json) {
    auto const data = read<CLMsgReplyNetConfigData>(json);
    if (!data) {
        return false;
    }
    if (auto const profile = statuses_.Addressee(data->profileName)) {
        Log().info("Get network configuration from service");
        profile->context.netConfig = *data;
        state_.lastNetConfigHasGateway = data->serviceType == kServiceTypeWithGateway;
        Q_EMIT NetConfigArrived(profile);
    }
    return true;
}

bool MessageDispatcher::onTunnelDisconnect(std::string const& json) {
    auto const data = read<CLMsgReplyTunnelDisconnectData>(json);
    if (!data) {
        return false;
    }
    if (statuses_.Addressee(data->profileName)) {
        failures_.HandleTunnelDisconnect(*data);
        Log().info("Disconnect Reason: {}", DisconnectReasonText(data->reason));
    }
    return true;
}

bool MessageDispatcher::onTunnelStatistics(std::string const& json) {
    auto const data = read<CLMsgReplyTunnelStatisticsData>(json);
    if (!data) {
        return false;
    }
    if (auto const profile = statuses_.Addressee(data->profileName)) {
        profile->context.statistics = *data;
        Q_EMIT StatisticsArrived(profile);
    }
    return true;
}

bool MessageDispatcher::onGatewayList(std::string const& json) {
    auto const data = read<CLMsgGatewayListData>(json);
    if (data) {
        HandleGatewayList(config_, *data);
    }
    return data.has_value();
}

bool MessageDispatcher::onCluster(std::string const& json) {
    auto const data = read<CLMsgClusterData>(json);
    if (data) {
        HandleClusterList(config_, *data);
    }
    return data.has_value();
}

bool MessageDispatcher::onGatewayDetectStop(std::string const& json) {
    auto const data = read<CLMsgGatewayDetectStopData>(json);
    if (data && statuses_.Addressee(data->profileName)) {
        failures_.ShowPopMsgBox(BoxKind::kWarning, GetErrMsg(MsgCode::UI_WARNING),
                                QString::fromStdString(data->reason),
                                GetErrMsg(MsgCode::UI_INFO_OK));
    }
    return data.has_value();
}

bool MessageDispatcher::onAddRoute(std::string const& json) {
    auto const data = read<DomainRouteAddRouteData>(json);
    if (data && statuses_.Addressee(data->profileName)) {
        Q_EMIT DomainRouteArrived(*data);
    }
    return data.has_value();
}

bool MessageDispatcher::onErrMsgByServer(std::string const& json) {
    auto const data = read<CLMsgNotifyErrorMsgData>(json);
    if (data && statuses_.Addressee(data->profileName)) {
        failures_.HandleErrMsgByServer(*data);
    }
    return data.has_value();
}

// A report only: the state follows the common replies.
bool MessageDispatcher::onPushStatus(std::string const& json) {
    auto const data = read<CLMsgSessionStatus>(json);
    if (data && statuses_.Addressee(data->profileName)) {
        statuses_.HandlePushReportData(*data);
    }
    return data.has_value();
}

bool MessageDispatcher::onVnicState(std::string const& json) {
    auto const data = read<CLMsgVINCState>(json);
    if (data) {
        g_vnic_state = data->state;
        state_.adapterUsable = data->state;
        Q_EMIT AdapterStateChanged(data->state);
    }
    return data.has_value();
}

bool MessageDispatcher::readFor(std::string const& json, char const* logLine,
                                void (StatusHandler::*handle)(StatusHandler::Data const&,
                                                              Profile&)) {
    auto const data = read<CLMsgCommonReplyData>(json);
    if (!data) {
        return false;
    }
    Log().info("{}", logLine);
    if (auto const profile = statuses_.Addressee(data->profileName)) {
        (statuses_.*handle)(*data, *profile);
    }
    return true;
}

bool MessageDispatcher::onChangePwd(std::string const& json) {
    return readFor(json, "Get change pwd from service", &StatusHandler::HandleChangePWD);
}

bool MessageDispatcher::onAuth(std::string const& json) {
    return readFor(json, "Get auth data from service", &StatusHandler::HandleAuthData);
}

bool MessageDispatcher::onCertRequest(std::string const& json) {
    return readFor(json, "Get sign request from service", &StatusHandler::HandleSignRequest);
}

bool MessageDispatcher::onAppResource(std::string const& json) {
    auto const data = read<CLMsgZtnaAppResourceData>(json);
    if (data && statuses_.Addressee(data->profileName)) {
        Q_EMIT AppResourceArrived(*data);
    }
    return data.has_value();
}

bool MessageDispatcher::HandleGMCertRespond(std::string const& json) {
    Log().info("Handle GM certificate respond");
    auto const data = read<ALMsgGMCertRespondData>(json);
    if (data) {
        Q_EMIT RecvGMCertInfo(data->deviceList);
    } else {
        Log().error("Failed to handle GM certificate respond");
    }
    return data.has_value();
}

bool MessageDispatcher::onUpdate(std::string const& json) {
    auto const data = read<CLMsgUpdate>(json);
    if (data) {
        Q_EMIT UpdateMsgArrived(*data);
    }
    return data.has_value();
}

bool MessageDispatcher::HandleCertRespond(std::string const& json) {
    auto const certs = ReadCertRespond(json);
    if (certs) {
        Q_EMIT RecvCertInfo(*certs);
    }
    return certs.has_value();
}

bool MessageDispatcher::onDisconnectReason(std::string const& json) {
    auto const data = read<CLMsgCommonReplyData>(json);
    if (data && statuses_.Addressee(data->profileName)) {
        failures_.HandleDisconnectReason(*data);
    }
    return data.has_value();
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
