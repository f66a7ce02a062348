// What is built of a record must equal its file, and what is read from the file must build to the
// same bytes again. In every record each field differs from its default and from its neighbours.
#include "tests/core/golden.h"
#include "core/clmsg.h"
#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"

namespace zorvanelink::test {
namespace {

using namespace core::sslvpn;
using common::MsgCode;
using common::SupportedAuthType;

UserPasswordComplexity const kPolicy{true, 8, 1, 2, 3, 4, true};
std::map<std::string, Gateway> const kGateways{{"north", {"192.0.2.1", "8001", "443"}},
                                               {"south", {"192.0.2.2", "8002", "444"}}};
std::map<std::string, Server> const kCluster{{"192.0.2.9", {"192.0.2.9", 4430}}};

template <class Record>
void expectReply(std::string const& name, Record const& record) {
    SCOPED_TRACE(name);
    std::string const expected = Golden(name);
    EXPECT_EQ(CLMsgReplyJson::Build(record), expected);
    Record read;
    ASSERT_TRUE(CLMsgReplyJson::Parse(expected, &read));
    EXPECT_EQ(CLMsgReplyJson::Build(read), expected);
}

TEST(Golden, StartWithEveryFieldAndWithNone) {
    CLMsgStartData full;
    full.userDataPath = "/home/ada/.local/share/zlink";
    full.profileName = "Büro 北京";
    full.needQueryAuthType = full.UIAdmin = full.gatewayDetect = full.enableAutoReconnect = true;
    full.lastTimeSupportedAuthType = {"pwd", "pwdWithCert"};
    full.uiUUID = "0b9f";
    full.server = "vpn.example.net";
    full.port = 8443;
    full.authType = SupportedAuthType::kPwdWithCert;
    full.user = "ada";
    full.encryptedPassword = "WlZMQQ==";
    full.pkcs12CertFileData = "UEtDUw==";
    full.encryptedPinCode = "UElO";
    full.certData = "REVS";
    full.isSupportCNG = false;
    full.certName = "Ada";
    full.certFingerprint = "QUJD";
    full.enableSPA = true;
    full.spaPort = 62201;
    full.commOptimMode = 2;
    full.logLevel = "info";
    full.concurrentTestNum = 3;
    full.heartbeatTimeout = 181;
    full.perferredGatewayName = "north";
    full.hasPromotedUpdate = true;
    full.gatewayList = kGateways;
    full.clusterList = kCluster;
    CLMsgStartData bare;
    bare.keepAuthType = bare.enableGMSSL = bare.optimalChannel = true;
    bare.enableVerifyServerCert = bare.enableAutoReconnect = bare.enableAutoUpdate = true;
    bare.enableSPA = true;  // and no port of it
    for (auto const& [name, start] : {std::pair{"start_full", full}, {"start_bare", bare}}) {
        SCOPED_TRACE(name);
        std::string const expected = Golden(name);
        EXPECT_EQ(CLMsgJson::BuildStart(start), expected);
        CLMsgStartData read;
        read.uiUUID = start.uiUUID;  // sent, but not for the reader
        ASSERT_TRUE(CLMsgJson::Parse(expected, &read));
        EXPECT_EQ(CLMsgJson::BuildStart(read), expected);
    }
    EXPECT_EQ(CLMsgJson::BuildStop(full), Golden("stop"));
    EXPECT_EQ(CLMsgJson::BuildProfileSet(full, "ztnaappresource"), Golden("set_appresource"));
}

// Everything set, so that the code alone decides what is written.
CLMsgCommonReplyData commonReply(MsgCode code) {
    return {kPolicy,
            "office",
            code,
            true,
            "https://gw/change",
            "https://gw/forgot",
            "https://gw/portal",
            "Portal",
            100,
            "Token?",
            "a***@example.net",
            5,
            6,
            300,
            "/data/list.html",
            "",
            "",
            true,
            "https://gw/check",
            "AES256",
            "LZ4",
            "TLSv1.3",
            "2\r4",
            {"pwd", "oauth"},
            "/data/oauth.html",
            "ada",
            {41047, 41046},
            "198.51.100.9",
            "/data/portal.zip"};
}

TEST(Golden, CommonReplyByCode) {
    for (auto const& [name, code] :
         {std::pair{"common_cert_request", MsgCode::CERT_REQUEST},
          {"common_online", MsgCode::ONLINE},
          {"common_need_change_pwd", MsgCode::NEED_CHANGE_PWD},
          {"common_auth_data", MsgCode::AUTH_DATA},
          {"common_update_client_ip", MsgCode::UPDATE_CLIENT_IP},
          {"common_disconnect_reason", MsgCode::DISCONNECT_REASON_FORCE_RECONNECT},
          {"common_account_lock", MsgCode::ERR_AUTH_USER_ACCOUNT_LOCK},
          {"common_other", MsgCode::CONNECTING}}) {
        expectReply(name, commonReply(code));
    }
    for (auto const& [name, code] : {std::pair{"common_cert_request_empty", MsgCode::CERT_REQUEST},
                                     {"common_online_empty", MsgCode::ONLINE},
                                     {"common_auth_data_empty", MsgCode::AUTH_DATA}}) {
        CLMsgCommonReplyData bare;
        bare.profileName = "office";
        bare.statusCode = code;
        expectReply(name, bare);
    }
}

TEST(Golden, RepliesOfTheirOwn) {
    expectReply("netconfig", CLMsgReplyNetConfigData{"office",
                                                     true,
                                                     false,
                                                     1,
                                                     "zl0",
                                                     "10.1.0.7",
                                                     "fd00::7",
                                                     "198.51.100.4",
                                                     "10.1.0.1",
                                                     "fd00::1",
                                                     "203.0.113.5",
                                                     "203.0.113.6",
                                                     "north",
                                                     24,
                                                     64,
                                                     3,
                                                     true,
                                                     false,
                                                     true,
                                                     {{"10.2.0.0", 16, 5}, {"10.3.0.0", 17, 6}},
                                                     {{"fd01::", 48, 7}},
                                                     {"10.1.0.53", "10.1.0.54"},
                                                     {"fd00::53"},
                                                     {},
                                                     {"203.0.113.5"}});
    expectReply("tunnelStatistics",
                CLMsgReplyTunnelStatisticsData{"office", 18446744073709551615U, 2, 3, 4, 0, 12.5F});
    expectReply("gatewayList", CLMsgGatewayListData{"office", kGateways});
    expectReply("cluster", CLMsgClusterData{"office", kCluster});
    expectReply("certRespond", ALMsgCertRespondData{"office", {"Zmlyc3Q=", "c2Vjb25k"}});
    expectReply(
        "gmCertRespond",
        ALMsgGMCertRespondData{
            "office",
            {{"key one", {{"app", {{"container", "c2lnbg==", "ZW5j"}, {"second", "c2ln", ""}}}}},
             {"key two", {}}}});
    expectReply("connectStatus", CLMsgReplyStatusData{"office", MsgCode::OFFLINE, 0});
    expectReply("pushStatus", CLMsgSessionStatus{"office", 1, "192.0.2.1", 2});
    expectReply("changePWD", CLMsgChangePWDData{kPolicy, "office", MsgCode::NEED_CHANGE_PWD, 0});
    expectReply("auth",
                CLMsgAuthData{kPolicy, "office", "https://gw/change", "https://gw/forgot", true});
    expectReply("errmsgbyServer", CLMsgNotifyErrorMsgData{"office", MsgCode::ERR_MSG_BY_SERVER,
                                                          "维护中", "Maintenance\n"});
    for (std::int32_t const reason : {2, 222, 99}) {
        expectReply("tunnelDisconnect_" + std::to_string(reason),
                    CLMsgReplyTunnelDisconnectData{"office", reason});
    }
    expectReply("gatewayDetectStop", CLMsgGatewayDetectStopData{"office", "no gateway"});
    expectReply("appResource", CLMsgZtnaAppResourceData{"office", "/data/portal.html"});
    expectReply("oauth", CLMsgOAuthServerInfoData{"office", "/data/oauth.html"});
    expectReply("addRoute",
                DomainRouteAddRouteData{"office", "10.9.0.0", "10.1.0.7", 16, 3, "10.1.0.1"});
    expectReply("update", CLMsgUpdate{2, kUpdateProfileName, "5.1.2", 7, 9, 1, "/tmp/new.deb"});
    expectReply("vnicState", CLMsgVINCState{true});
    EXPECT_EQ(core::CLMsgJsonParse::BuildVnicStateReply(true), Golden("vnicState"));

    CLMsgZtnaScriptInfoData const script{"office", "/data/check.sh", "/data/raw.dat", 4711};
    EXPECT_EQ(CLMsgReplyJson::Build(script), Golden("execscript"));
    CLMsgExecScriptData read;
    ASSERT_TRUE(CLMsgReplyJson::Parse(Golden("execscript"), &read));
    EXPECT_EQ(read.script_full_path + read.raw_data_full_path, "/data/check.sh/data/raw.dat");
}

}  // namespace
}  // namespace zorvanelink::test
