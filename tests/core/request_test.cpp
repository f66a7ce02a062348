#include "core/clmsg.h"
#include "core/clmsg_json.h"
#include "tests/core/golden.h"

// What the GUI sends, and the first look at what it receives.
namespace zorvanelink::core::sslvpn {
namespace {

using common::MsgCode;

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
        char const* fault;
    };
    Row const rows[] = {
        {R"({"server":"gw","port":1,"authType":"pwd"})", "profileName"},
        {R"({"profileName":"p","server":"gw","port":"1","authType":"pwd"})", "port:5"},
        {R"({"profileName":"p","server":"gw","port":1,"authType":1})", "authType:6"},
        {"{" + whole + R"(,"gatewayList":[{"name":"n"}]})", "addr"},
        {"{" + whole + R"(,"clusterList":[{"server":"s","port":1}]})", "addr"},
    };
    for (Row const& row : rows) {
        CLMsgStartData start;
        EXPECT_FALSE(CLMsgJson::Parse(row.json, &start)) << row.json;
        EXPECT_EQ(CLMsgJsonParse::err_str_, test::ErrorOf(row.fault));
    }
    CLMsgStartData start;
    EXPECT_TRUE(CLMsgJson::Parse("{" + whole + "}", &start));
}

struct GuiRow {
    std::string json;
    bool understood;
    char const* error;  // what err_str_ says afterwards; "!" for no JSON at all
    char const* note;   // what debug_str_ says afterwards
    CLMsg::SubType subtype = CLMsg::SubType::kUnknown;
    MsgCode status = MsgCode::UNSPECIFIED;
};

TEST(Envelope, FirstStageOfTheGui) {
    using enum CLMsg::SubType;
    GuiRow const rows[] = {
        {R"({"type":"reply"})", true, "", "statusCode"},
        {R"({"type":"reply","subtype":"netconfig"})", true, "", "statusCode", kNetConfig},
        {R"({"type":"reply","statusCode":-3})", true, "", "subtype", kUnknown,
         MsgCode::ERR_AUTH_USER_OR_PASS},
        {R"({"statusCode":40971,"subtype":"connectStatus","type":"reply","more":{}})", true, "", "",
         kConnectStatus, MsgCode::ONLINE},
        {R"({"type":"reply","subtype":"disconnectReason"})", true, "", "statusCode"},
        {R"({"type":"start1"})", false, "", ""},
        {R"({"type":"reply","subtype":7})", false, "", "subtype:6"},
        {R"({"type":"reply","subtype":"auth","statusCode":1.0})", false, "", "statusCode:6", kAuth},
        {R"({"type":"reply","subtype":"auth","statusCode":2147483648})", false, "", "statusCode:6",
         kAuth},
        {R"({"type":null})", false, "type:0", ""},
        {"{}", false, "type", ""},
        {"[]", false, "!", ""},
        {"", false, "!", ""},
        {R"({"type":"reply"} x)", false, "!", ""},
    };
    for (GuiRow const& row : rows) {
        SCOPED_TRACE(row.json);
        CLMsgJsonParse::err_str_.clear();
        CLMsgJsonParse::debug_str_.clear();
        auto type = CLMsg::Type::kUnknown;
        auto subtype = CLMsg::SubType::kUnknown;
        auto status = MsgCode::UNSPECIFIED;
        EXPECT_EQ(CLMsgJsonParse::Parse(row.json, &type, &subtype, &status), row.understood);
        EXPECT_EQ(type == CLMsg::Type::kReply, row.understood || row.note[0] != '\0');
        EXPECT_EQ(subtype, row.subtype);
        EXPECT_EQ(status, row.status);
        EXPECT_EQ(CLMsgJsonParse::err_str_, *row.error == '!'
                                                ? "Failed to parse clmsgjson[" + row.json + "]"
                                                : test::ErrorOf(row.error));
        EXPECT_EQ(CLMsgJsonParse::debug_str_, test::ErrorOf(row.note));
    }
}

}  // namespace
}  // namespace zorvanelink::core::sslvpn
