#include "tests/core/sample_records.h"

namespace zorvanelink::test {

using namespace core::sslvpn;

CLMsgStartData SampleStart() {
    CLMsgStartData start;
    start.userDataPath = "/home/ada/.local/share/zlink";
    start.profileName = "Büro 北京";
    start.needQueryAuthType = true;
    start.lastTimeSupportedAuthType = {"pwd", "pwdWithCert"};
    start.uiUUID = "0b9f";
    start.server = "vpn.example.net";
    start.port = 8443;
    start.authType = common::SupportedAuthType::kPwd;
    start.user = "ada";
    start.encryptedPassword = "WlZMQQ==";
    start.enableSPA = true;
    start.commOptimMode = 2;
    start.logLevel = "info";
    start.gatewayDetect = true;
    start.perferredGatewayName = "north";
    start.enableVerifyServerCert = true;
    start.enableAutoReconnect = true;
    start.gatewayList = {{"north", {"192.0.2.1", "8001", "443"}},
                         {"south", {"192.0.2.2", "8002", "444"}}};
    start.clusterList = {{"192.0.2.9", {"192.0.2.9", 4430}}};
    return start;
}

CLMsgReplyNetConfigData SampleNetConfig() {
    CLMsgReplyNetConfigData net;
    net.profileName = "office";
    net.isIPv6Channel = true;
    net.serverType = 1;
    net.vnicName = "zl0";
    net.clientPrivateIP = "10.1.0.7";
    net.clientPrivateIPv6 = "fd00::7";
    net.clientPublicIP = "198.51.100.4";
    net.vnicGatewayIP = "10.1.0.1";
    net.vnicGatewayIPv6 = "fd00::1";
    net.serverPublicIP = "203.0.113.5";
    net.optimalGatewayIP = "203.0.113.6";
    net.optimalGatewayName = "north";
    net.prefix = 24;
    net.prefixIPv6 = 64;
    net.serviceType = 3;
    net.dedicatedTunnel = true;
    net.isDefaultIPv6Route = true;
    net.routeList = {{"10.2.0.0", 16, 5}, {"10.3.0.0", 17, 6}};
    net.ipv6RouteList = {{"fd01::", 48, 7}};
    net.dnsList = {"10.1.0.53", "10.1.0.54"};
    net.ipv6DnsList = {"fd00::53"};
    net.bypassIpList = {"203.0.113.5"};
    return net;
}

CLMsgReplyTunnelStatisticsData SampleStatistics() {
    CLMsgReplyTunnelStatisticsData statistics;
    statistics.profileName = "office";
    statistics.inbound_bytes = 18446744073709551615U;
    statistics.outbound_bytes = 2;
    statistics.inbound_packets = 3;
    statistics.outbound_packets = 4;
    statistics.outbound_comp_ratio = 12.5F;  // the other one stays 0, a double all the same
    return statistics;
}

CLMsgGatewayListData SampleGatewayList() {
    CLMsgGatewayListData list;
    list.profileName = "office";
    list.gatewayList = SampleStart().gatewayList;
    return list;
}

ALMsgGMCertRespondData SampleGmTree() {
    ALMsgGMCertRespondData tree;
    tree.profileName = "office";
    tree.deviceList = {
        {"key one", {{"app", {{"container", "c2lnbg==", "ZW5j"}, {"second", "c2ln", ""}}}}},
        {"key two", {}}};
    return tree;
}

UserPasswordComplexity SamplePolicy() {
    UserPasswordComplexity policy;
    policy.enableComplexity = true;
    policy.minLength = 8;
    policy.capitalLetters = 1;
    policy.smallLetters = 2;
    policy.nonAlphanumericLetters = 3;
    policy.numericCharacters = 4;
    policy.noIncludeUserName = true;
    return policy;
}

CLMsgCommonReplyData SampleCommon(common::MsgCode code) {
    CLMsgCommonReplyData common;
    static_cast<UserPasswordComplexity&>(common) = SamplePolicy();
    common.profileName = "office";
    common.statusCode = code;
    common.allowLocalChangePassword = true;
    common.changePasswordUrl = "https://gw/change";
    common.forgotPasswordUrl = "https://gw/forgot";
    common.redirectUrl = "https://gw/portal";
    common.redirectUrlTitle = "Portal";
    common.changePWDType = 100;
    common.tokenPromptMsg = "Token?";
    common.emailAuthAccount = "a***@example.net";
    common.passwordExpiredDays = 5;
    common.accountExpiredDays = 6;
    common.accountLockSenconds = 300;
    common.resourceListPagePath = "/data/list.html";
    common.needClearWebCacheWhenOffline = true;
    common.hostCheckDownloadUrl = "https://gw/check";
    common.cipherAlg = "AES256";
    common.ipCompAlg = "LZ4";
    common.sslVersion = "TLSv1.3";
    common.certRequestStr = "2\r4";
    common.supportedAuthType = {"pwd", "oauth"};
    common.oauthPagePath = "/data/oauth.html";
    common.receivedUserName = "ada";
    common.warningCode = {41047, 41046};
    common.updateClientPublicIP = "198.51.100.9";
    common.AppResourcePortalStaticFilePath = "/data/portal.zip";
    return common;
}

}  // namespace zorvanelink::test
