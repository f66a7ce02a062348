// Records with a subtype of their own; see netconfig_json.cpp and common_reply_json.cpp for the two
// large ones.
#include "core/clmsg_reply_json.h"

#include "core/json_lists.h"
#include "core/reply_json.h"

namespace zorvanelink::core::sslvpn {

using components::logger::Log;
using json::Join;
using json::Need;
using json::Rows;

using Disconnect = CLMsgReplyTunnelDisconnectData;
template <>
inline constexpr auto kFields<Disconnect> =
    Join(HeadRows<Disconnect>("tunnelDisconnect"),
         std::array{
             Rows<Disconnect>::Required<&Disconnect::reason>("reason"),
             Rows<Disconnect>::Computed("reasonDes",
                                        [](json::Output& out, Disconnect const& data) {
                                            out.Text(DisconnectReasonText(data.reason));
                                        }),
         });

using Status = CLMsgReplyStatusData;
template <>
inline constexpr auto kFields<Status> =
    Join(HeadRows<Status>("connectStatus"), StatusRows<Status>(),
         std::array{Rows<Status>::Written<&Status::sessionTranceID>("sessionTranceID")});

using Statistics = CLMsgReplyTunnelStatisticsData;
using StatisticsRow = Rows<Statistics>;
template <>
inline constexpr auto kFields<Statistics> =
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
constexpr auto kSessionIP =
    SessionRow::Required<&Session::connecttingIP, json::Address>("connecttingIP");
constexpr auto kSessionSubCode = SessionRow::Required<&Session::subCode>("subCode");
template <>
inline constexpr auto kFields<Session> = Join(TypeRows<Session>("pushStatus"),
                                              std::array{ProfileRow<Session>(), kSessionStatus,
                                                         kSessionIP, kSessionSubCode});
template <>
inline constexpr auto kReadFields<Session> =
    std::array{ProfileRow<Session>(), kSessionStatus, kSessionSubCode, kSessionIP};

// Codec: the gateways, each of which leaves a line in the log.
struct LoggedGateways : EntryMap<GatewayEntry, kGatewayFields> {
    static json::Outcome Read(json::Value const& value, std::map<std::string, Gateway>& out) {
        json::Outcome const outcome = EntryMap::Read(value, out);
        for (auto const& [name, gateway] : out) {
            Log().debug("Sus to parse json, gate [{}: {}, detect port: {}, ssl port: {}]\n", name,
                        gateway.addr, gateway.detectPort, gateway.sslPort);
        }
        return outcome;
    }
};
using GatewayList = CLMsgGatewayListData;
template <>
inline constexpr auto kFields<GatewayList> = Join(
    HeadRows<GatewayList>("gatewayList"),
    std::array{
        Rows<GatewayList>::Required<&GatewayList::gatewayList, LoggedGateways>("gatewayList")});

// In a reply the address goes by another name than in the start message.
constexpr std::array kClusterServer{
    Rows<Server>::Required<&Server::addr>("server"),
    Rows<Server>::Required<&Server::port>("port"),
};
using Cluster = CLMsgClusterData;
template <>
inline constexpr auto kFields<Cluster> = Join(
    HeadRows<Cluster>("cluster"),
    std::array{Rows<Cluster>::Required<&Cluster::clusterList, EntryMap<Server, kClusterServer>>(
        "clusterList")});

using DetectStop = CLMsgGatewayDetectStopData;
template <>
inline constexpr auto kFields<DetectStop> =
    Join(HeadRows<DetectStop>("gatewayDetectStop"),
         std::array{Rows<DetectStop>::Required<&DetectStop::reason>("reason")});

using AppResource = CLMsgZtnaAppResourceData;
template <>
inline constexpr auto kFields<AppResource> = Join(
    HeadRows<AppResource>("appResource"),
    std::array{Rows<AppResource>::Required<&AppResource::portalPath, json::Address>("portalPath")});

using OAuth = CLMsgOAuthServerInfoData;
template <>
inline constexpr auto kFields<OAuth> = std::array{
    ProfileRow<OAuth>(),
    TypeRow<OAuth>(),
    Rows<OAuth>::Required<&OAuth::oauthPath, json::Address>("oauthPath"),
};

template <class Script>
static constexpr auto ScriptRows() {
    return Join(
        HeadRows<Script>("execscript"),
        std::array{
            Rows<Script>::template Required<&Script::script_full_path>("script_full_path"),
            Rows<Script>::template Required<&Script::raw_data_full_path>("raw_data_full_path"),
        });
}
using ScriptInfo = CLMsgZtnaScriptInfoData;
template <>
inline constexpr auto kFields<ScriptInfo> =
    Join(ScriptRows<ScriptInfo>(),
         std::array{Rows<ScriptInfo>::Written<&ScriptInfo::process_id>("process_id")});
template <>
inline constexpr auto kFields<CLMsgExecScriptData> = ScriptRows<CLMsgExecScriptData>();

using AddRoute = DomainRouteAddRouteData;
template <>
inline constexpr auto kFields<AddRoute> =
    Join(HeadRows<AddRoute>("addRoute"),
         std::array{
             Rows<AddRoute>::Required<&AddRoute::destination, json::Address>("destination"),
             Rows<AddRoute>::Required<&AddRoute::iface_ip, json::Address>("iface_ip"),
             Rows<AddRoute>::Required<&AddRoute::perfix>("perfix"),
             Rows<AddRoute>::Required<&AddRoute::metric>("metric"),
             Rows<AddRoute>::Required<&AddRoute::gateway, json::Address>("gateway"),
         });

using VnicState = CLMsgVINCState;
template <>
inline constexpr auto kFields<VnicState> =
    Join(TypeRows<VnicState>("vnicState"),
         std::array{Rows<VnicState>::Required<&VnicState::state>("state")});

using ErrorMsg = CLMsgNotifyErrorMsgData;
template <>
inline constexpr auto kFields<ErrorMsg> =
    Join(std::array{ProfileRow<ErrorMsg>(), TypeRow<ErrorMsg>()}, StatusRows<ErrorMsg>(),
         std::array{
             Rows<ErrorMsg>::Constant("subtype", "errmsgbyServer"),
             Rows<ErrorMsg>::Optional<&ErrorMsg::errorMsgChinese>("errorMsgChinese"),
             Rows<ErrorMsg>::Optional<&ErrorMsg::errorMsgEnglish>("errorMsgEnglish"),
         });

using Update = CLMsgUpdate;
template <>
inline constexpr auto kFields<Update> =
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
template <>
inline constexpr auto kFields<ChangePWD> =
    Join(HeadRows<ChangePWD>("changePWD"), StatusRows<ChangePWD>(),
         std::array{Rows<ChangePWD>::Written<&ChangePWD::changePWDType>("changePWDType"),
                    ComplexityRow<ChangePWD>()},
         PolicyRows<ChangePWD>());

using Auth = CLMsgAuthData;
constexpr std::array kAuthUrls{
    Rows<Auth>::Optional<&Auth::changePasswordUrl, json::Address>("changePasswordUrl"),
    Rows<Auth>::Optional<&Auth::forgotPasswordUrl, json::Address>("forgotPasswordUrl"),
};
constexpr std::array kAuthLocal{
    Rows<Auth>::Optional<&Auth::allowLocalChangePassword>("allowLocalChangePassword")};
constexpr auto kAuthPolicy = Join(std::array{ComplexityRow<Auth>()}, PolicyRows<Auth>());
template <>
inline constexpr auto kFields<Auth> = Join(HeadRows<Auth>("auth"), kAuthUrls, kAuthLocal,
                                           kAuthPolicy);
template <>
inline constexpr auto kReadFields<Auth> = Join(std::array{ProfileRow<Auth>()}, kAuthLocal,
                                               kAuthUrls, kAuthPolicy);

using CertRespond = ALMsgCertRespondData;
template <>
inline constexpr auto kFields<CertRespond> =
    Join(HeadRows<CertRespond>("certRespond"),
         std::array{Rows<CertRespond>::Required<
             &CertRespond::certList, json::KeyedValues<"cert", Need::kRequired, json::Certificate>>(
             "certList")});

constexpr std::array kContainer{
    Rows<GmContainer>::Required<&GmContainer::containerName>("containerName"),
    Rows<GmContainer>::Optional<&GmContainer::signCert, json::Certificate>("signCert"),
    Rows<GmContainer>::Optional<&GmContainer::encCert, json::Certificate>("encCert"),
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
template <>
inline constexpr auto kFields<GMCertRespond> = Join(
    HeadRows<GMCertRespond>("gmCertRespond"),
    std::array{Rows<GMCertRespond>::Required<&GMCertRespond::deviceList, json::Records<kDevice>>(
        "deviceList")});

template struct Reply<Disconnect>;
template struct Reply<Status>;
template struct Reply<Statistics>;
template struct Reply<Session>;
template struct Reply<GatewayList>;
template struct Reply<Cluster>;
template struct Reply<DetectStop>;
template struct Reply<AppResource>;
template struct Reply<OAuth>;
template struct Reply<ScriptInfo>;
template struct Reply<CLMsgExecScriptData>;
template struct Reply<AddRoute>;
template struct Reply<VnicState>;
template struct Reply<ErrorMsg>;
template struct Reply<Update>;
template struct Reply<ChangePWD>;
template struct Reply<Auth>;
template struct Reply<CertRespond>;
template struct Reply<GMCertRespond>;

}  // namespace zorvanelink::core::sslvpn
