// What the service says: one plain record a message. Texts are UTF-8 (readers and writers replace
// what is not). `profileName` is the connection that a message concerns. Key names on the link are
// the member names unless a comment says otherwise.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "common/message_catalogue.h"

namespace zorvanelink::core::sslvpn {

using common::MsgCode;

struct NetConfigRoute {
    std::string destination;
    std::int32_t prefix = 0;
    std::int32_t metric = 0;
    bool operator==(NetConfigRoute const&) const = default;
};

// "netconfig": what the tunnel looks like.
struct CLMsgReplyNetConfigData {
    std::string profileName;
    bool isIPv6Channel = false;
    bool tunnelIsTCP = false;
    std::int32_t serverType = 0;
    std::string vnicName;
    std::string clientPrivateIP;
    std::string clientPrivateIPv6;
    std::string clientPublicIP;
    std::string vnicGatewayIP;
    std::string vnicGatewayIPv6;
    std::string serverPublicIP;
    std::string optimalGatewayIP;
    std::string optimalGatewayName;
    std::int32_t prefix = 0;
    std::int32_t prefixIPv6 = 0;
    std::int32_t serviceType = 0;  // the tunnel's mode; 3: routes have a gateway
    bool dedicatedTunnel = false;
    bool isDefaultRoute = false;
    bool isDefaultIPv6Route = false;
    std::vector<NetConfigRoute> routeList;
    std::vector<NetConfigRoute> ipv6RouteList;
    std::vector<std::string> dnsList;
    std::vector<std::string> ipv6DnsList;
    std::vector<std::string> winsList;
    std::vector<std::string> bypassIpList;
};

// "tunnelDisconnect". The text of the reason is written for logs only.
struct CLMsgReplyTunnelDisconnectData {
    std::string profileName;
    std::int32_t reason = 0;
};

// The catalogue's English text of a gateway's disconnect reason, "Unkown" for a number without a
// name.
std::string DisconnectReasonText(std::int32_t reason);

// "connectStatus"
struct CLMsgReplyStatusData {
    std::string profileName;
    MsgCode statusCode{};
    std::uint64_t sessionTranceID = 0;  // written, not read
};

// "tunnelStatistics": totals since the tunnel came up.
struct CLMsgReplyTunnelStatisticsData {
    std::string profileName;
    std::uint64_t inbound_bytes = 0;
    std::uint64_t outbound_bytes = 0;
    std::uint64_t inbound_packets = 0;
    std::uint64_t outbound_packets = 0;
    float inbound_comp_ratio = 0;  // per cent
    float outbound_comp_ratio = 0;
};

// "pushStatus"
struct CLMsgSessionStatus {
    std::string profileName;
    std::int32_t status = 0;
    std::string connecttingIP;
    std::int32_t subCode = 0;
};

struct Gateway {
    std::string addr;
    std::string detectPort;  // a number as text
    std::string sslPort;
    bool operator==(Gateway const&) const = default;
};

struct Server {
    std::string addr;
    std::int32_t port = 0;
    bool operator==(Server const&) const = default;
};

// "gatewayList"; by name, the first of two with one name.
struct CLMsgGatewayListData {
    std::string profileName;
    std::map<std::string, Gateway> gatewayList;
};

// "cluster"; by address (key `server` of an element), the first of two with one address.
struct CLMsgClusterData {
    std::string profileName;
    std::map<std::string, Server> clusterList;
};

// "gatewayDetectStop"
struct CLMsgGatewayDetectStopData {
    std::string profileName;
    std::string reason;
};

// "appResource"
struct CLMsgZtnaAppResourceData {
    std::string profileName;
    std::string portalPath;
};

// Has no subtype of its own.
struct CLMsgOAuthServerInfoData {
    std::string profileName;
    std::string oauthPath;
};

// "execscript" as written...
struct CLMsgZtnaScriptInfoData {
    std::string profileName;
    std::string script_full_path;
    std::string raw_data_full_path;
    std::uint64_t process_id = 0;
};

// ...and as read.
struct CLMsgExecScriptData {
    std::string profileName;
    std::string script_full_path;
    std::string raw_data_full_path;
};

// "addRoute": a route that joins later, for a domain name.
struct DomainRouteAddRouteData {
    std::string profileName;
    std::string destination;
    std::string iface_ip;
    std::int32_t perfix = 0;
    std::int32_t metric = 0;
    std::string gateway;
};

// "vnicState"; of no profile.
struct CLMsgVINCState {
    bool state = false;
};

// "errmsgbyServer"
struct CLMsgNotifyErrorMsgData {
    std::string profileName;
    MsgCode statusCode{};
    std::string errorMsgChinese;
    std::string errorMsgEnglish;
};
using CLMsgNotifyErrorMsg = CLMsgNotifyErrorMsgData;

// "update". `state` is what the service reports: 0 available, 1 none, 2 progress, 3 download
// failed, 4 finished, 5 installer runs, 6 install failed, 7 repeated request, 8 configuration
// error.
struct CLMsgUpdate {
    std::int32_t state = 0;
    std::string profileName;
    std::string version;
    std::int32_t progress = 0;
    std::int32_t offset = 0;  // what `progress` counts up to; 0: `progress` is per cent
    std::int32_t policy = 0;
    std::string path;
};

// The server's rules for passwords; part of three records.
struct UserPasswordComplexity {
    bool enableComplexity = false;
    std::int32_t minLength = 0;
    std::int32_t capitalLetters = 0;
    std::int32_t smallLetters = 0;
    std::int32_t nonAlphanumericLetters = 0;
    std::int32_t numericCharacters = 0;
    bool noIncludeUserName = false;
};

// "changePWD"
struct CLMsgChangePWDData : UserPasswordComplexity {
    std::string profileName;
    MsgCode statusCode{};
    std::int32_t changePWDType = 0;  // written, not read
};

// "auth"
struct CLMsgAuthData : UserPasswordComplexity {
    std::string profileName;
    std::string changePasswordUrl;
    std::string forgotPasswordUrl;
    bool allowLocalChangePassword = false;
};

// "certRespond": Base64 of DER each (key `cert` of an element).
struct ALMsgCertRespondData {
    std::string profileName;
    std::vector<std::string> certList;
};

struct GmContainer {
    std::string containerName;
    std::string signCert;  // Base64
    std::string encCert;   // Base64
    bool operator==(GmContainer const&) const = default;
};

struct GmAppInstance {
    std::string appName;
    std::vector<GmContainer> containerList;
    bool operator==(GmAppInstance const&) const = default;
};

struct GmDevice {
    std::string deviceName;
    std::vector<GmAppInstance> appList;
    bool operator==(GmDevice const&) const = default;
};

// "gmCertRespond": the tree of the USB keys.
struct ALMsgGMCertRespondData {
    std::string profileName;
    std::vector<GmDevice> deviceList;
};

// Every other reply. `statusCode` says what it means and which keys are written; the reader takes
// whatever is there.
struct CLMsgCommonReplyData : UserPasswordComplexity {
    std::string profileName;
    MsgCode statusCode{};
    bool allowLocalChangePassword = false;
    std::string changePasswordUrl;
    std::string forgotPasswordUrl;
    std::string redirectUrl;
    std::string redirectUrlTitle;
    std::int32_t changePWDType = 0;  // 1 expired, 2 first login, 100 asked for by the user
    std::string tokenPromptMsg;
    std::string emailAuthAccount;
    std::int32_t passwordExpiredDays = 0;
    std::int32_t accountExpiredDays = 0;
    std::int32_t accountLockSenconds = 0;
    std::string resourceListPagePath;
    std::string errMsgInEn;  // read, not written
    std::string errMsgInCn;  // read, not written
    bool needClearWebCacheWhenOffline = false;
    std::string hostCheckDownloadUrl;
    std::string cipherAlg;
    std::string ipCompAlg;
    std::string sslVersion;
    std::string certRequestStr;
    std::vector<std::string> supportedAuthType;  // texts of the types (key `authTypeStr`)
    std::string oauthPagePath;
    std::string receivedUserName;
    std::vector<std::int32_t> warningCode;  // key `code` of an element
    std::string updateClientPublicIP;
    std::string AppResourcePortalStaticFilePath;
};

}  // namespace zorvanelink::core::sslvpn
