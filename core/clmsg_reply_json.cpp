// Records with a subtype of their own; see netconfig_json.cpp and common_reply_json.cpp for the two
// large ones.
#include "core/clmsg_reply_json.h"

#include "core/json_lists.h"
#include "core/reply_json.h"

namespace zorvanelink::core::sslvpn {
namespace {

using components::logger::Log;
using json::Join;
using json::Need;
using json::Outcome;
using json::Rows;
using json::Value;

using Disconnect = CLMsgReplyTunnelDisconnectData;
constexpr auto kTunnelDisconnect =
    Join(HeadRows<Disconnect>("tunnelDisconnect"),
         std::array{
             Rows<Disconnect>::Required<&Disconnect::reason>("reason"),
             Rows<Disconnect>::Computed("reasonDes",
                                        [](json::Output& out, Disconnect const& data) {
                                            out.Text(DisconnectReasonText(data.reason));
                                        }),
         });

using Status = CLMsgReplyStatusData;
constexpr auto kStatus =
    Join(HeadRows<Status>("connectStatus"), StatusRows<Status>(),
         std::array{Rows<Status>::Written<&Status::sessionTranceID>("sessionTranceID")});

using Statistics = CLMsgReplyTunnelStatisticsData;
using StatisticsRow = Rows<Statistics>;
constexpr auto kStatistics =
    Join(HeadRows<Statistics>("tunnelStatistics"),
         std::array{
             StatisticsRow::Required<&Statistics::inbound_bytes>("inbound_bytes"),
             StatisticsRow::Required<&Statistics::outbound_bytes>("outbound_bytes"),
             StatisticsRow::Required<&Statistics::inbound_packets>("inbound_packets"),
             StatisticsRow::Required<&Statistics::outbound_packets>("outbound_packets"),
             StatisticsRow::Required<&Statistics::inbound_comp_ratio>("inbound_comp_ratio"),
             StatisticsRow::Required<&Statistics::outbound_comp_ratio>("outbound_comp_ratio"),
         });

using Session = CLMsgSessionStatus;
using SessionRow = Rows<Session>;
constexpr auto kSessionStatus = SessionRow::Required<&Session::status>("status");
constexpr auto kSessionIP = SessionRow::Required<&Session::connecttingIP>("connecttingIP");
constexpr auto kSessionSubCode = SessionRow::Required<&Session::subCode>("subCode");
constexpr auto kSessionWrite =
    Join(TypeRows<Session>("pushStatus"),
         std::array{ProfileRow<Session>(), kSessionStatus, kSessionIP, kSessionSubCode});
constexpr std::array kSessionRead{ProfileRow<Session>(), kSessionStatus, kSessionSubCode,
                                  kSessionIP};

using GatewayList = CLMsgGatewayListData;
constexpr auto kGatewayList = Join(
    HeadRows<GatewayList>("gatewayList"),
    std::array{Rows<GatewayList>::Required<&GatewayList::gatewayList,
                                           EntryMap<GatewayEntry, kGatewayFields>>("gatewayList")});

// In a reply the address goes by another name than in the start message.
constexpr std::array kClusterServer{
    Rows<Server>::Required<&Server::addr>("server"),
    Rows<Server>::Required<&Server::port>("port"),
};
using Cluster = CLMsgClusterData;
constexpr auto kCluster = Join(
    HeadRows<Cluster>("cluster"),
    std::array{Rows<Cluster>::Required<&Cluster::clusterList, EntryMap<Server, kClusterServer>>(
        "clusterList")});

using DetectStop = CLMsgGatewayDetectStopData;
constexpr auto kDetectStop =
    Join(HeadRows<DetectStop>("gatewayDetectStop"),
         std::array{Rows<DetectStop>::Required<&DetectStop::reason>("reason")});

using AppResource = CLMsgZtnaAppResourceData;
constexpr auto kAppResource =
    Join(HeadRows<AppResource>("appResource"),
         std::array{Rows<AppResource>::Required<&AppResource::portalPath>("portalPath")});

using OAuth = CLMsgOAuthServerInfoData;
constexpr std::array kOAuth{
    ProfileRow<OAuth>(),
    TypeRow<OAuth>(),
    Rows<OAuth>::Required<&OAuth::oauthPath>("oauthPath"),
};

template <class Script>
constexpr auto ScriptRows() {
    return Join(
        HeadRows<Script>("execscript"),
        std::array{
            Rows<Script>::template Required<&Script::script_full_path>("script_full_path"),
            Rows<Script>::template Required<&Script::raw_data_full_path>("raw_data_full_path"),
        });
}
using ScriptInfo = CLMsgZtnaScriptInfoData;
constexpr auto kScriptWrite =
    Join(ScriptRows<ScriptInfo>(),
         std::array{Rows<ScriptInfo>::Written<&ScriptInfo::process_id>("process_id")});
constexpr auto kScriptRead = ScriptRows<CLMsgExecScriptData>();

using AddRoute = DomainRouteAddRouteData;
constexpr auto kAddRoute = Join(HeadRows<AddRoute>("addRoute"),
                                std::array{
                                    Rows<AddRoute>::Required<&AddRoute::destination>("destination"),
                                    Rows<AddRoute>::Required<&AddRoute::iface_ip>("iface_ip"),
                                    Rows<AddRoute>::Required<&AddRoute::perfix>("perfix"),
                                    Rows<AddRoute>::Required<&AddRoute::metric>("metric"),
                                    Rows<AddRoute>::Required<&AddRoute::gateway>("gateway"),
                                });

using VnicState = CLMsgVINCState;
constexpr auto kVnicState = Join(TypeRows<VnicState>("vnicState"),
                                 std::array{Rows<VnicState>::Required<&VnicState::state>("state")});

using ErrorMsg = CLMsgNotifyErrorMsgData;
constexpr auto kErrorMsg =
    Join(std::array{ProfileRow<ErrorMsg>(), TypeRow<ErrorMsg>()}, StatusRows<ErrorMsg>(),
         std::array{
             Rows<ErrorMsg>::Constant("subtype", "errmsgbyServer"),
             Rows<ErrorMsg>::Optional<&ErrorMsg::errorMsgChinese>("errorMsgChinese"),
             Rows<ErrorMsg>::Optional<&ErrorMsg::errorMsgEnglish>("errorMsgEnglish"),
         });

using Update = CLMsgUpdate;
constexpr auto kUpdate =
    Join(TypeRows<Update>("update"), std::array{
                                         Rows<Update>::Required<&Update::state>("state"),
                                         ProfileRow<Update>(),
                                         Rows<Update>::Required<&Update::version>("version"),
                                         Rows<Update>::Required<&Update::progress>("progress"),
                                         Rows<Update>::Required<&Update::offset>("offset"),
                                         Rows<Update>::Required<&Update::policy>("policy"),
                                         Rows<Update>::Required<&Update::path>("path"),
                                     });

using ChangePWD = CLMsgChangePWDData;
constexpr auto kChangePWD =
    Join(HeadRows<ChangePWD>("changePWD"), StatusRows<ChangePWD>(),
         std::array{Rows<ChangePWD>::Written<&ChangePWD::changePWDType>("changePWDType"),
                    ComplexityRow<ChangePWD>()},
         PolicyRows<ChangePWD>());

using Auth = CLMsgAuthData;
constexpr std::array kAuthUrls{
    Rows<Auth>::Optional<&Auth::changePasswordUrl>("changePasswordUrl"),
    Rows<Auth>::Optional<&Auth::forgotPasswordUrl>("forgotPasswordUrl"),
};
constexpr std::array kAuthLocal{
    Rows<Auth>::Optional<&Auth::allowLocalChangePassword>("allowLocalChangePassword")};
constexpr auto kAuthPolicy = Join(std::array{ComplexityRow<Auth>()}, PolicyRows<Auth>());
constexpr auto kAuthWrite = Join(HeadRows<Auth>("auth"), kAuthUrls, kAuthLocal, kAuthPolicy);
constexpr auto kAuthRead = Join(std::array{ProfileRow<Auth>()}, kAuthLocal, kAuthUrls, kAuthPolicy);

using CertRespond = ALMsgCertRespondData;
constexpr auto kCertRespond =
    Join(HeadRows<CertRespond>("certRespond"),
         std::array{
             Rows<CertRespond>::Required<&CertRespond::certList,
                                         json::KeyedValues<"cert", Need::kRequired>>("certList")});

constexpr std::array kContainer{
    Rows<GmContainer>::Required<&GmContainer::containerName>("containerName"),
    Rows<GmContainer>::Optional<&GmContainer::signCert>("signCert"),
    Rows<GmContainer>::Optional<&GmContainer::encCert>("encCert"),
};
constexpr std::array kApp{
    Rows<GmAppInstance>::Required<&GmAppInstance::appName>("appName"),
    Rows<GmAppInstance>::Required<&GmAppInstance::containerList, json::Records<kContainer>>(
        "containerList"),
};
constexpr std::array kDevice{
    Rows<GmDevice>::Required<&GmDevice::deviceName>("deviceName"),
    Rows<GmDevice>::Required<&GmDevice::appList, json::Records<kApp>>("appList"),
};
using GMCertRespond = ALMsgGMCertRespondData;
constexpr auto kGMCertRespond = Join(
    HeadRows<GMCertRespond>("gmCertRespond"),
    std::array{Rows<GMCertRespond>::Required<&GMCertRespond::deviceList, json::Records<kDevice>>(
        "deviceList")});

}  // namespace

std::string CLMsgReplyJson::Build(CLMsgReplyTunnelDisconnectData const& data) {
    return BuildReply(kTunnelDisconnect, data);
}
std::string CLMsgReplyJson::Build(CLMsgReplyStatusData const& data) {
    return BuildReply(kStatus, data);
}
std::string CLMsgReplyJson::Build(CLMsgReplyTunnelStatisticsData const& data) {
    return BuildReply(kStatistics, data);
}
std::string CLMsgReplyJson::Build(CLMsgSessionStatus const& data) {
    return BuildReply(kSessionWrite, data);
}
std::string CLMsgReplyJson::Build(CLMsgGatewayListData const& data) {
    return BuildReply(kGatewayList, data);
}
std::string CLMsgReplyJson::Build(CLMsgClusterData const& data) {
    return BuildReply(kCluster, data);
}
std::string CLMsgReplyJson::Build(CLMsgGatewayDetectStopData const& data) {
    return BuildReply(kDetectStop, data);
}
std::string CLMsgReplyJson::Build(CLMsgZtnaAppResourceData const& data) {
    return BuildReply(kAppResource, data);
}
std::string CLMsgReplyJson::Build(CLMsgOAuthServerInfoData const& data) {
    return BuildReply(kOAuth, data);
}
std::string CLMsgReplyJson::Build(CLMsgZtnaScriptInfoData const& data) {
    return BuildReply(kScriptWrite, data);
}
std::string CLMsgReplyJson::Build(DomainRouteAddRouteData const& data) {
    return BuildReply(kAddRoute, data);
}
std::string CLMsgReplyJson::Build(CLMsgVINCState const& data) {
    return BuildReply(kVnicState, data);
}
std::string CLMsgReplyJson::Build(CLMsgNotifyErrorMsgData const& data) {
    return BuildReply(kErrorMsg, data);
}
std::string CLMsgReplyJson::Build(CLMsgUpdate const& data) {
    return BuildReply(kUpdate, data);
}
std::string CLMsgReplyJson::Build(CLMsgChangePWDData const& data) {
    return BuildReply(kChangePWD, data);
}
std::string CLMsgReplyJson::Build(CLMsgAuthData const& data) {
    return BuildReply(kAuthWrite, data);
}
std::string CLMsgReplyJson::Build(ALMsgCertRespondData const& data) {
    return BuildReply(kCertRespond, data);
}
std::string CLMsgReplyJson::Build(ALMsgGMCertRespondData const& data) {
    return BuildReply(kGMCertRespond, data);
}

bool CLMsgReplyJson::Parse(std::string const& json, CLMsgReplyTunnelDisconnectData* data) {
    return json::ParseMessage(json, kTunnelDisconnect, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgReplyStatusData* data) {
    return json::ParseMessage(json, kStatus, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgReplyTunnelStatisticsData* data) {
    return json::ParseMessage(json, kStatistics, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgSessionStatus* data) {
    return json::ParseMessage(json, kSessionRead, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgGatewayListData* data) {
    if (!json::ParseMessage(json, kGatewayList, data)) {
        return false;
    }
    for (auto const& [name, gateway] : data->gatewayList) {
        Log().debug("Sus to parse json, gate [{}: {}, detect port: {}, ssl port: {}]\n", name,
                    gateway.addr, gateway.detectPort, gateway.sslPort);
    }
    return true;
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgClusterData* data) {
    return json::ParseMessage(json, kCluster, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgGatewayDetectStopData* data) {
    return json::ParseMessage(json, kDetectStop, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgZtnaAppResourceData* data) {
    return json::ParseMessage(json, kAppResource, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgOAuthServerInfoData* data) {
    return json::ParseMessage(json, kOAuth, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgExecScriptData* data) {
    return json::ParseMessage(json, kScriptRead, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, DomainRouteAddRouteData* data) {
    return json::ParseMessage(json, kAddRoute, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgVINCState* data) {
    return json::ParseMessage(json, kVnicState, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgNotifyErrorMsgData* data) {
    return json::ParseMessage(json, kErrorMsg, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgUpdate* data) {
    return json::ParseMessage(json, kUpdate, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgChangePWDData* data) {
    return json::ParseMessage(json, kChangePWD, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, CLMsgAuthData* data) {
    return json::ParseMessage(json, kAuthRead, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, ALMsgCertRespondData* data) {
    return json::ParseMessage(json, kCertRespond, data);
}
bool CLMsgReplyJson::Parse(std::string const& json, ALMsgGMCertRespondData* data) {
    return json::ParseMessage(json, kGMCertRespond, data);
}

}  // namespace zorvanelink::core::sslvpn
