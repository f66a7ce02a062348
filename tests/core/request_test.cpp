#include <gtest/gtest.h>

#include "core/clmsg.h"
#include "core/clmsg_json.h"

namespace zorvanelink::core::sslvpn {
namespace {

TEST(Request, SendersWriteTheirOwnOrder) {
    struct Row {
        std::string sent;
        char const* expected;
    };
    Row const rows[] = {
        {CLMsgJson::BuildLogLevel("debug"),
         R"({"type":"set","subtype":"loglevel","logLevel":"debug"})"},
        {CLMsgJson::BuildAcceptServerCert("p", true),
         R"({"type":"set","subtype":"acceptServerCert","result":true,"profileName":"p"})"},
        {CLMsgJson::BuildAuthCode("p", SetType::kTokenCode, "00\"1"),
         R"({"profileName":"p","type":"set","subtype":"tokenCode","secondAuthCode":"00\"1"})"},
        {CLMsgJson::BuildRequestAuthCode("p", SetType::kRequestEmailCode),
         R"({"profileName":"p","type":"set","subtype":"requestEmailCode","secondAuthCode":"0000"})"},
        {CLMsgJson::BuildNewPassword("p", "b2xk", "bmV3"),
         R"({"profileName":"p","type":"set","subtype":"newPassword","currentPassword":"b2xk","newPassword":"bmV3"})"},
        {CLMsgJson::BuildCertSignData("p", "2\r6"),
         R"({"type":"set","subtype":"certSignData","certSignData":"2\r6","statusCode":41014,"profileName":"p"})"},
        {CLMsgJson::BuildCertRequest(true), R"({"type":"get","subtype":"gmCertRequest"})"},
        {CLMsgJson::BuildCertRequest(false), R"({"type":"get","subtype":"certRequest"})"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(row.sent, row.expected);
    }
}

TEST(Request, UpdateKeysFollowTheCommand) {
    CLMsgUpdateRequestData update;
    update.userDataPath = "/d";
    update.server = "gw";
    update.port = 443;
    update.enableSPA = true;
    update.policy = 2;
    update.path = "/tmp/n.deb";
    auto const sent = [&update](UpdateCommand command) {
        update.command = command;
        return CLMsgJson::BuildUpdate(update);
    };
    std::string const head =
        R"({"type":"update","clientType":"zlvpn","subtype":"update","command":)";
    std::string const profile = R"("profileName":"updater_built")";
    EXPECT_EQ(sent(UpdateCommand::kReportClientInfo),
              head + "0," + profile + R"(,"UIAdmin":false})");
    EXPECT_EQ(sent(UpdateCommand::kAnswer), head + R"(2,"policy":2})");
    EXPECT_EQ(sent(UpdateCommand::kCancelDownload), head + "3," + profile + "}");
    EXPECT_EQ(sent(UpdateCommand::kInstall),
              head + "4," + profile + R"(,"policy":2,"path":"/tmp/n.deb"})");
    std::string const where = R"(,"userDataPath":"/d","server":"gw","port":443,"enableSPA":true)";
    std::string const tail = R"(,"enableGMSSL":false,"UIAdmin":false})";
    EXPECT_EQ(sent(UpdateCommand::kInquire), head + "1," + profile + where + tail);
    update.spaPort = 62201;
    EXPECT_EQ(sent(UpdateCommand::kInquire),
              head + "1," + profile + where + R"(,"spaPort":62201)" + tail);

    CLMsgUpdateRequestData read;
    ASSERT_TRUE(CLMsgJson::Parse(sent(UpdateCommand::kInquire), &read));
    EXPECT_EQ(CLMsgJson::BuildUpdate(read), sent(UpdateCommand::kInquire));
}

TEST(Request, SharedBuilderWritesTheFirstRowsOnly) {
    CLMsgSetData set;
    set.profileName = "p";
    set.vnicError = 1;
    set.sysType = 2;
    set.vnicFd = 3;
    set.hostcheckData = "h";
    set.rawdata = "r";
    auto const built = [&set](SetType subtype) {
        set.subtype = subtype;
        return CLMsgJson::Build(set);
    };
    EXPECT_EQ(
        built(SetType::kVnicStatus),
        R"({"profileName":"p","type":"set","subtype":"vnicStatus","vnicError":1,"sysType":2,"vnicFd":3})");
    EXPECT_EQ(built(SetType::kHostcheckData),
              R"({"profileName":"p","type":"set","subtype":"hostcheckData","hostcheckData":"h"})");
    EXPECT_EQ(built(SetType::kZtnaRawData),
              R"({"profileName":"p","type":"set","subtype":"ztnarawdata"})");
    EXPECT_EQ(built(SetType::kUnknown), R"({"profileName":"p","type":"set"})");
}

TEST(Request, SetSelectsItsKeysBySubtype) {
    struct Row {
        char const* tail;  // behind the profile's name
        bool understood;
        SetType subtype;
    };
    using enum SetType;
    Row const rows[] = {
        {R"()", true, kUnknown},
        {R"(,"subtype":"changePWD")", true, kUnknown},
        {R"(,"subtype":3)", true, kUnknown},
        {R"(,"subtype":"vnicStatus","vnicError":0,"sysType":1)", false, kVnicStatus},
        {R"(,"subtype":"vnicStatus","vnicError":0,"sysType":1,"vnicFd":-1)", true, kVnicStatus},
        {R"(,"subtype":"smsCode","secondAuthCode":"1")", true, kSmsCode},
        {R"(,"subtype":"tokenCode","secondAuthCode":1)", false, kTokenCode},
        {R"(,"subtype":"emailCode")", false, kEmailCode},
        {R"(,"subtype":"hostcheckData")", false, kHostcheckData},
        {R"(,"subtype":"ztnarawdata","rawdata":"")", true, kZtnaRawData},
        {R"(,"subtype":"ztnaappresource")", true, kZtnaAppResource},
        {R"(,"subtype":"loglevel","logLevel":"info")", true, kLogLevel},
        {R"(,"subtype":"requestSmsCode")", true, kRequestSmsCode},
        {R"(,"subtype":"requestEmailCode","secondAuthCode":0)", true, kRequestEmailCode},
        {R"(,"subtype":"newPassword","currentPassword":"a")", false, kNewPassword},
        {R"(,"subtype":"certSignData","certSignData":"x")", true, kCertSignData},
        {R"(,"subtype":"acceptServerCert","result":1)", false, kAcceptServerCert},
        {R"(,"subtype":"acceptServerCert","result":false)", true, kAcceptServerCert},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.tail);
        CLMsgSetData set;
        set.subtype = kLogLevel;  // of an earlier message
        EXPECT_EQ(CLMsgJson::Parse(std::string(R"({"profileName":"p")") + row.tail + "}", &set),
                  row.understood);
        EXPECT_EQ(set.subtype, row.subtype);
    }
    CLMsgSetData nameless;
    EXPECT_FALSE(CLMsgJson::Parse(CLMsgJson::BuildLogLevel("info"), &nameless));
    CLMsgSetData password;
    ASSERT_TRUE(CLMsgJson::Parse(CLMsgJson::BuildNewPassword("p", "b2xk", "bmV3"), &password));
    EXPECT_EQ(password.currentPassword + password.newPassword, "b2xkbmV3");
}

TEST(Request, StartNeedsItsRequiredKeys) {
    std::string const whole = R"("profileName":"p","server":"gw","port":1,"authType":"pwd")";
    struct Row {
        std::string json;
        char const* error;
    };
    Row const rows[] = {
        {R"({"server":"gw","port":1,"authType":"pwd"})",
         "Failed to find key profileName in clmsgjson parse"},
        {R"({"profileName":"p","server":"gw","port":"1","authType":"pwd"})",
         "Key [port]'s value type[5] is invalid in clmsgjson parse"},
        {R"({"profileName":"p","server":"gw","port":1,"authType":1})",
         "Key [authType]'s value type[6] is invalid in clmsgjson parse"},
        {"{" + whole + R"(,"gatewayList":[{"name":"n"}]})",
         "Failed to find key addr in clmsgjson parse"},
        {"{" + whole + R"(,"clusterList":[{"server":"s","port":1}]})",
         "Failed to find key addr in clmsgjson parse"},
    };
    for (Row const& row : rows) {
        CLMsgStartData start;
        EXPECT_FALSE(CLMsgJson::Parse(row.json, &start)) << row.json;
        EXPECT_EQ(CLMsgJsonParse::err_str_, row.error);
    }
    CLMsgStartData start;
    EXPECT_TRUE(CLMsgJson::Parse("{" + whole + "}", &start));
}

}  // namespace
}  // namespace zorvanelink::core::sslvpn
