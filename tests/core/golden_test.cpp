// Byte for byte what goes over the link. Each file holds one message; what is built must equal it,
// and what is read from it must build to the same bytes again.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "core/clmsg.h"
#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"
#include "tests/core/sample_records.h"

namespace zorvanelink::test {
namespace {

using namespace core::sslvpn;
using common::MsgCode;

std::string golden(std::string const& name) {
    std::ifstream file(ZVL_TEST_DATA "/messages/" + name + ".json");
    EXPECT_TRUE(file) << name;
    std::ostringstream text;
    text << file.rdbuf();
    std::string message = text.str();
    if (!message.empty() && message.back() == '\n') {
        message.pop_back();  // files end in a line break, messages do not
    }
    return message;
}

template <class Record>
void expectReply(std::string const& name, Record const& record) {
    SCOPED_TRACE(name);
    std::string const expected = golden(name);
    EXPECT_EQ(CLMsgReplyJson::Build(record), expected);
    Record read;
    ASSERT_TRUE(CLMsgReplyJson::Parse(expected, &read));
    EXPECT_EQ(CLMsgReplyJson::Build(read), expected);
}

TEST(Golden, StartAndWhatBeginsLikeIt) {
    CLMsgStartData const password = SampleStart();
    CLMsgStartData file = password;
    file.needQueryAuthType = false;
    file.keepAuthType = true;
    file.UIAdmin = true;
    file.authType = common::SupportedAuthType::kPwdWithCert;
    file.pkcs12CertFileData = "UEtDUw==";
    file.encryptedPinCode = "UElO";
    file.spaPort = 62201;
    file.optimalChannel = file.enableAutoUpdate = file.hasPromotedUpdate = true;
    CLMsgStartData system = password;
    system.enableGMSSL = true;
    system.enableSPA = false;
    system.authType = common::SupportedAuthType::kOnlyUkey;
    system.certData = "REVS";
    system.isSupportCNG = true;
    system.certName = "Ada";
    system.certFingerprint = "QUJD";
    system.gatewayList.clear();
    system.clusterList.clear();

    for (auto const& [name, start] :
         {std::pair{"start_password", password}, {"start_file", file}, {"start_system", system}}) {
        SCOPED_TRACE(name);
        std::string const expected = golden(name);
        EXPECT_EQ(CLMsgJson::BuildStart(start), expected);
        CLMsgStartData read;
        read.uiUUID = start.uiUUID;  // sent, but not for the reader
        ASSERT_TRUE(CLMsgJson::Parse(expected, &read));
        EXPECT_EQ(CLMsgJson::BuildStart(read), expected);
    }
    EXPECT_EQ(CLMsgJson::BuildStop(file), golden("stop"));
    EXPECT_EQ(CLMsgJson::BuildProfileSet(file, "ztnaappresource"), golden("set_appresource"));
}

TEST(Golden, CommonReplyByCode) {
    std::pair<char const*, MsgCode> const rows[] = {
        {"common_cert_request", MsgCode::CERT_REQUEST},
        {"common_online", MsgCode::ONLINE},
        {"common_need_change_pwd", MsgCode::NEED_CHANGE_PWD},
        {"common_auth_data", MsgCode::AUTH_DATA},
        {"common_update_client_ip", MsgCode::UPDATE_CLIENT_IP},
        {"common_disconnect_reason", MsgCode::DISCONNECT_REASON_FORCE_RECONNECT},
        {"common_account_lock", MsgCode::ERR_AUTH_USER_ACCOUNT_LOCK},
        {"common_other", MsgCode::CONNECTING},
    };
    for (auto const& [name, code] : rows) {
        expectReply(name, SampleCommon(code));
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

TEST(Golden, LargeReplies) {
    expectReply("netconfig", SampleNetConfig());
    expectReply("tunnelStatistics", SampleStatistics());
    expectReply("gatewayList", SampleGatewayList());
    expectReply("gmCertRespond", SampleGmTree());

    CLMsgClusterData cluster;
    cluster.profileName = "office";
    cluster.clusterList = SampleStart().clusterList;
    expectReply("cluster", cluster);

    ALMsgCertRespondData certs;
    certs.profileName = "office";
    certs.certList = {"Zmlyc3Q=", "c2Vjb25k"};
    expectReply("certRespond", certs);
}

TEST(Golden, StatusAndPasswordReplies) {
    CLMsgReplyStatusData status;
    status.profileName = "office";
    status.statusCode = MsgCode::OFFLINE;
    status.sessionTranceID = 0;
    expectReply("connectStatus", status);

    CLMsgSessionStatus session;
    session.profileName = "office";
    session.status = 1;
    session.connecttingIP = "192.0.2.1";
    session.subCode = 2;
    expectReply("pushStatus", session);

    CLMsgChangePWDData change;
    static_cast<UserPasswordComplexity&>(change) = SamplePolicy();
    change.profileName = "office";
    change.statusCode = MsgCode::NEED_CHANGE_PWD;
    expectReply("changePWD", change);

    CLMsgAuthData auth;
    static_cast<UserPasswordComplexity&>(auth) = SamplePolicy();
    auth.profileName = "office";
    auth.changePasswordUrl = "https://gw/change";
    auth.forgotPasswordUrl = "https://gw/forgot";
    auth.allowLocalChangePassword = true;
    expectReply("auth", auth);

    CLMsgNotifyErrorMsgData error;
    error.profileName = "office";
    error.statusCode = MsgCode::ERR_MSG_BY_SERVER;
    error.errorMsgChinese = "维护中";
    error.errorMsgEnglish = "Maintenance\n";
    expectReply("errmsgbyServer", error);

    for (std::int32_t const reason : {2, 222, 99}) {
        CLMsgReplyTunnelDisconnectData disconnect;
        disconnect.profileName = "office";
        disconnect.reason = reason;
        expectReply("tunnelDisconnect_" + std::to_string(reason), disconnect);
    }
}

TEST(Golden, SmallReplies) {
    CLMsgGatewayDetectStopData stop;
    stop.profileName = "office";
    stop.reason = "no gateway";
    expectReply("gatewayDetectStop", stop);

    CLMsgZtnaAppResourceData resource;
    resource.profileName = "office";
    resource.portalPath = "/data/portal.html";
    expectReply("appResource", resource);

    CLMsgOAuthServerInfoData oauth;
    oauth.profileName = "office";
    oauth.oauthPath = "/data/oauth.html";
    expectReply("oauth", oauth);

    DomainRouteAddRouteData route;
    route.profileName = "office";
    route.destination = "10.9.0.0";
    route.iface_ip = "10.1.0.7";
    route.perfix = 16;
    route.metric = 3;
    route.gateway = "10.1.0.1";
    expectReply("addRoute", route);

    CLMsgUpdate update;
    update.state = 2;
    update.profileName = kUpdateProfileName;
    update.version = "5.1.2";
    update.progress = 7;
    update.offset = 9;
    update.policy = 1;
    update.path = "/tmp/new.deb";
    expectReply("update", update);

    expectReply("vnicState", CLMsgVINCState{true});
    EXPECT_EQ(core::CLMsgJsonParse::BuildVnicStateReply(true), golden("vnicState"));

    CLMsgZtnaScriptInfoData script;
    script.profileName = "office";
    script.script_full_path = "/data/check.sh";
    script.raw_data_full_path = "/data/raw.dat";
    script.process_id = 4711;
    EXPECT_EQ(CLMsgReplyJson::Build(script), golden("execscript"));
    CLMsgExecScriptData read;
    ASSERT_TRUE(CLMsgReplyJson::Parse(golden("execscript"), &read));
    EXPECT_EQ(read.script_full_path, script.script_full_path);
    EXPECT_EQ(read.raw_data_full_path, script.raw_data_full_path);
}

}  // namespace
}  // namespace zorvanelink::test
