// "start" and what begins like it. The sender and the reader have each their own order and keys.
#include "core/clmsg_json.h"
#include "core/json_lists.h"
#include "core/secret_fields.h"

namespace zorvanelink::core::sslvpn {
namespace {

using json::Join;
using json::Need;
using Start = CLMsgStartData;
using Row = json::Rows<Start>;

constexpr std::array kReadGateway{
    json::Rows<GatewayEntry>::Required<&GatewayEntry::addr>("addr"),
    json::Rows<GatewayEntry>::Required<&GatewayEntry::name>("name"),
    json::Rows<GatewayEntry>::Required<&GatewayEntry::detectPort>("detectPort"),
    json::Rows<GatewayEntry>::Required<&GatewayEntry::sslPort>("sslPort"),
};

constexpr std::array kServer{
    json::Rows<Server>::Required<&Server::addr>("addr"),
    json::Rows<Server>::Required<&Server::port>("port"),
};

using Gateways = EntryMap<GatewayEntry, kReadGateway, kGatewayFields>;
using Cluster = EntryMap<Server, kServer>;
using AuthTypes = AuthTypeTexts<Need::kOptional>;

// What "start", "stop" and the "set" of a profile share.
constexpr std::array kHead{
    Row::Written<&Start::userDataPath>("userDataPath"),
    Row::Written<&Start::systemTextCode>("systemTextCode"),
    Row::Constant("clientType", "zlvpn"),
    Row::Written<&Start::profileName>("profileName"),
    Row::Written<&Start::needQueryAuthType>("needQueryAuthType"),
    Row::Written<&Start::keepAuthType>("keepAuthType"),
    Row::Written<&Start::lastTimeSupportedAuthType, AuthTypes>("lastTimeSupportedAuthType"),
};

constexpr std::array kTail{
    Row::Written<&Start::uiUUID>("uiUUID"),
    Row::Written<&Start::UIAdmin>("UIAdmin"),
    Row::Written<&Start::server>("server"),
    Row::Written<&Start::port>("port"),
    Row::Written<&Start::enableGMSSL>("enableGMSSL"),
    Row::Written<&Start::authType>("authType"),
    Row::Written<&Start::user>("user"),
    Row::Written<&Start::encryptedPassword>("encryptedPassword").Secret(),
    Row::Written<&Start::pkcs12CertFileData>("pkcs12CertFileData").Secret(),
    Row::Written<&Start::encryptedPinCode>("encryptedPinCode").Secret(),
    Row::Written<&Start::certData>("certData").Secret(),
    Row::Written<&Start::isSupportCNG>("isSupportCNG"),
    Row::Written<&Start::certName>("certName"),
    Row::Written<&Start::certFingerprint>("certFingerprint"),
    Row::Written<&Start::enableSPA>("enableSPA"),
    Row::Written<&Start::spaPort>("spaPort"),
    Row::Written<&Start::commOptimMode>("commOptimMode"),
    Row::Written<&Start::logLevel>("logLevel"),
    Row::Written<&Start::concurrentTestNum>("concurrentTestNum"),
    Row::Written<&Start::heartbeatTimeout>("heartbeatTimeout"),
    Row::Written<&Start::optimalChannel>("optimalChannel"),
    Row::Written<&Start::gatewayDetect>("gatewayDetect"),
    Row::Written<&Start::perferredGatewayName>("perferredGatewayName"),
    Row::Written<&Start::enableVerifyServerCert>("enableVerifyServerCert"),
    Row::Written<&Start::enableAutoReconnect>("enableAutoReconnect"),
    Row::Written<&Start::enableAutoUpdate>("enableAutoUpdate"),
    Row::Written<&Start::hasPromotedUpdate>("hasPromotedUpdate"),
    Row::Written<&Start::gatewayList, Gateways>("gatewayList"),
    Row::Written<&Start::clusterList, Cluster>("clusterList"),
};

constexpr auto kStart = Join(std::array{Row::Constant("type", "start")}, kHead, kTail);
constexpr auto kStop = Join(std::array{Row::Constant("type", "stop")}, kHead);

constexpr std::array kRead{
    Row::Optional<&Start::UIAdmin>("UIAdmin"),
    Row::Required<&Start::profileName>("profileName"),
    Row::Optional<&Start::needQueryAuthType>("needQueryAuthType"),
    Row::Optional<&Start::processID>("processID"),
    Row::Optional<&Start::desc>("desc"),
    Row::Required<&Start::server>("server"),
    Row::Required<&Start::port>("port"),
    Row::Optional<&Start::userDataPath>("userDataPath"),
    Row::Required<&Start::authType>("authType"),
    Row::Optional<&Start::certType>("certType"),
    Row::Optional<&Start::certInfo>("certInfo"),
    Row::Optional<&Start::encryptedPinCode>("encryptedPinCode"),
    Row::Optional<&Start::certData>("certData"),
    Row::Optional<&Start::pkcs12CertFileData>("pkcs12CertFileData"),
    Row::Optional<&Start::isSupportCNG>("isSupportCNG"),
    Row::Optional<&Start::certName>("certName"),
    Row::Optional<&Start::certFingerprint>("certFingerprint"),
    Row::Optional<&Start::certPath>("certPath"),
    Row::Optional<&Start::certAlias>("certAlias"),
    Row::Optional<&Start::enableGMSSL>("enableGMSSL"),
    Row::Optional<&Start::gmDeviceName>("gmDeviceName"),
    Row::Optional<&Start::gmAppName>("gmAppName"),
    Row::Optional<&Start::gmContainerName>("gmContainerName"),
    Row::Optional<&Start::gmSignCert>("gmSignCert"),
    Row::Optional<&Start::gmEncCert>("gmEncCert"),
    Row::Optional<&Start::enableAutoReconnect>("enableAutoReconnect"),
    Row::Optional<&Start::enableAutoUpdate>("enableAutoUpdate"),
    Row::Optional<&Start::hasPromotedUpdate>("hasPromotedUpdate"),
    Row::Optional<&Start::enableLinkSelect>("enableLinkSelect"),
    Row::Optional<&Start::commOptimMode>("commOptimMode"),
    Row::Optional<&Start::user>("user"),
    Row::Optional<&Start::encryptedPassword>("encryptedPassword"),
    Row::Optional<&Start::logLevel>("logLevel"),
    Row::Optional<&Start::concurrentTestNum>("concurrentTestNum"),
    Row::Optional<&Start::concurrentTestNumBeg>("concurrentTestNumBeg"),
    Row::Optional<&Start::concurrentTestNumBase>("concurrentTestNumBase"),
    Row::Optional<&Start::enableConcurrentTestSameUser>("enableConcurrentTestSameUser"),
    Row::Optional<&Start::heartbeatTimeout>("heartbeatTimeout"),
    Row::Optional<&Start::enableSPA>("enableSPA"),
    Row::Optional<&Start::spaPort>("spaPort"),
    Row::Optional<&Start::optimalChannel>("optimalChannel"),
    Row::Optional<&Start::gatewayDetect>("gatewayDetect"),
    Row::Optional<&Start::perferredGatewayName>("perferredGatewayName"),
    Row::Optional<&Start::enableVerifyServerCert>("enableVerifyServerCert"),
    Row::Optional<&Start::gatewayList, Gateways>("gatewayList"),
    Row::Optional<&Start::clusterList, Cluster>("clusterList"),
    Row::Optional<&Start::deviceType>("deviceType"),
    Row::Optional<&Start::hostName>("hostName"),
    Row::Optional<&Start::hostID>("hostID"),
    Row::Optional<&Start::sysVersion>("sysVersion"),
    Row::Optional<&Start::clientVersion>("clientVersion"),
    Row::Optional<&Start::devMac>("devMac"),
    Row::Optional<&Start::systemTextCode>("systemTextCode"),
    Row::Optional<&Start::lastTimeSupportedAuthType, AuthTypes>("lastTimeSupportedAuthType"),
    Row::Optional<&Start::keepAuthType>("keepAuthType"),
};

}  // namespace

void AddStartSecrets(std::vector<std::string_view>& keys) {
    json::AddSecrets<Start>(kStart, keys);
}

bool CLMsgJson::Parse(std::string const& json, CLMsgStartData* data) {
    return json::ParseMessage(json, kRead, data);
}

std::string CLMsgJson::BuildStart(CLMsgStartData const& data) {
    return json::BuildMessage(json::Style::kCompact, kStart, data);
}

std::string CLMsgJson::BuildStop(CLMsgStartData const& data) {
    return json::BuildMessage(json::Style::kCompact, kStop, data);
}

std::string CLMsgJson::BuildProfileSet(CLMsgStartData const& data, std::string const& subtype) {
    json::Output out(json::Style::kCompact);
    out.StartObject();
    out.Key("type");
    out.Text("set");
    json::WriteFields(out, std::span<json::Field<Start> const>(kHead), data);
    if (!subtype.empty()) {
        out.Key("subtype");
        out.Text(subtype);
    }
    out.EndObject();
    return out.Take();
}

}  // namespace zorvanelink::core::sslvpn
