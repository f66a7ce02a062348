// What the readers refuse, and what they take as it comes.
#include <limits>

#include "core/clmsg.h"
#include "core/clmsg_reply_json.h"
#include "tests/core/golden.h"

namespace zorvanelink::test {
namespace {

using namespace core::sslvpn;
using core::CLMsgJsonParse;

std::string replaced(std::string text, std::string const& from, std::string const& to) {
    std::size_t const at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

struct Change {
    char const* from;
    char const* to;
    char const* fault;  // as ErrorOf takes it; empty: the message is taken
};

template <class Record, std::size_t N>
void expectChanges(std::string const& message, Change const (&changes)[N]) {
    for (Change const& change : changes) {
        SCOPED_TRACE(std::string(change.from) + " -> " + change.to);
        CLMsgJsonParse::err_str_.clear();
        Record read;
        std::string const changed = replaced(message, change.from, change.to);
        EXPECT_EQ(CLMsgReplyJson::Parse(changed, &read), *change.fault == '\0');
        EXPECT_EQ(CLMsgJsonParse::err_str_, ErrorOf(change.fault));
    }
}

TEST(Strictness, NetConfig) {
    expectChanges<CLMsgReplyNetConfigData>(
        Golden("netconfig"),
        {{R"("winsList")", R"("winslist")", "winsList"},
         {R"("profileName")", R"("name")", "profileName"},
         {R"("prefixIPv6": 64)", R"("prefixIPv6": 64.0)", "prefixIPv6:6"},
         {R"("prefixIPv6": 64)", R"("prefixIPv6": -2147483649)", "prefixIPv6:6"},
         {R"("dedicatedTunnel": true)", R"("dedicatedTunnel": 1)", "dedicatedTunnel:6"},
         {R"("isIPv6Channel": true)", R"("isIPv6Channel": "true")", "isIPv6Channel:5"},
         {R"("fd00::53")", "53", "ipv6DnsList:6"},
         {R"("dnsList": [)", R"("dnsList": {}, "more": [)", "dnsList:3"},
         {R"("routeList": [)", R"("routeList": ["10.0.0.0/8",)", "routeList:5"},
         {R"("metric": 5)", R"("metrics": 5)", "metric"},
         {R"("10.2.0.0": "",)", "", "destination"},
         {R"("vnicName")", R"("future": [1, {"a": null}], "vnicName")", ""}});
}

TEST(Strictness, RoutesInBothForms) {
    std::string const message = replaced(
        Golden("netconfig"), R"("ipv6RouteList": [)",
        R"("ipv6RouteList": [{"fd05::": {"metric": 2, "prefix": 40}}, {"prefix": 1, "fd06::": null,
            "fd07::": "", "metric": 3},)");
    CLMsgReplyNetConfigData read;
    ASSERT_TRUE(CLMsgReplyJson::Parse(message, &read));
    std::vector<NetConfigRoute> const expected{
        {"fd05::", 40, 2}, {"fd06::", 1, 3}, {"fd01::", 48, 7}};
    EXPECT_EQ(read.ipv6RouteList, expected);
}

TEST(Strictness, Statistics) {
    expectChanges<CLMsgReplyTunnelStatisticsData>(
        Golden("tunnelStatistics"),
        {{"12.5", "12", "outbound_comp_ratio:6"},
         {"12.5", "-3.5e38", "outbound_comp_ratio:6"},
         {"12.5", "3.4e38", ""},
         {R"("outbound_bytes": 2)", R"("outbound_bytes": -2)", "outbound_bytes:6"},
         {"18446744073709551615", "18446744073709551616", "inbound_bytes:6"}});
    CLMsgReplyTunnelStatisticsData broken;
    broken.inbound_comp_ratio = std::numeric_limits<float>::quiet_NaN();
    broken.outbound_comp_ratio = std::numeric_limits<float>::infinity();
    CLMsgReplyTunnelStatisticsData read;
    EXPECT_TRUE(CLMsgReplyJson::Parse(CLMsgReplyJson::Build(broken), &read));
    EXPECT_EQ(read.inbound_comp_ratio, 0.0F);
}

TEST(Strictness, Lists) {
    expectChanges<CLMsgGatewayListData>(
        Golden("gatewayList"),
        {{R"("detectPort": "8001")", R"("detectPort": 8001)", "detectPort:6"},
         {R"("name": "south")", R"("named": "south")", "name"},
         {R"("gatewayList": [)", R"("gatewayList": [null, )", "gatewayList:0"}});
    expectChanges<ALMsgGMCertRespondData>(
        Golden("gmCertRespond"),
        {{R"("signCert": "c2lnbg==",)", "", ""},
         {R"("encCert": "ZW5j")", R"("encCert": 1)", ""},
         {R"("appList")", R"("apps")", "appList"},
         {R"("containerName": "second")", R"("containerName": 2)", "containerName:6"}});
    CLMsgGatewayListData twice;
    ASSERT_TRUE(
        CLMsgReplyJson::Parse(replaced(Golden("gatewayList"), R"("south")", R"("north")"), &twice));
    ASSERT_EQ(twice.gatewayList.size(), 1U);
    EXPECT_EQ(twice.gatewayList["north"].addr, "192.0.2.1");
    ALMsgCertRespondData certs;
    EXPECT_FALSE(
        CLMsgReplyJson::Parse(R"({"profileName":"p","certList":[{"cert":"a"},{}]})", &certs));
    EXPECT_TRUE(CLMsgReplyJson::Parse(R"({"profileName":"","certList":[]})", &certs));
}

TEST(Strictness, CommonReplyTakesWhatFits) {
    CLMsgCommonReplyData bare;
    ASSERT_TRUE(CLMsgReplyJson::Parse(R"({"profileName":"p","statusCode":12345})", &bare));
    CLMsgCommonReplyData fresh;
    fresh.profileName = "p";
    fresh.statusCode = static_cast<common::MsgCode>(12345);
    EXPECT_EQ(CLMsgReplyJson::Build(bare), CLMsgReplyJson::Build(fresh));
    EXPECT_FALSE(CLMsgReplyJson::Parse(R"({"profileName":"p"})", &bare));
    EXPECT_FALSE(CLMsgReplyJson::Parse(R"({"profileName":"p","statusCode":"40971"})", &bare));

    ASSERT_TRUE(CLMsgReplyJson::Parse(R"({"profileName":"p","statusCode":12345,
        "redirectUrl":1,"enableComplexity":"yes","minLength":8.0,"warningCode":{},
        "receivedUserName":[]})",
                                      &bare));
    EXPECT_EQ(CLMsgReplyJson::Build(bare), CLMsgReplyJson::Build(fresh));
    EXPECT_EQ(CLMsgJsonParse::debug_str_, ErrorOf("AppResourcePortalStaticFilePath"));

    CLMsgCommonReplyData read;
    ASSERT_TRUE(CLMsgReplyJson::Parse(R"({"profileName":"p","statusCode":-7,"errMsgInEn":"e",
        "errMsgInCn":"c","warningCode":[{"code":1},{"code":"2"},{},{"code":3}],
        "supportedAuthType":[{"authTypeStr":"oauth"},{"other":1}]})",
                                      &read));
    EXPECT_EQ(read.errMsgInEn + read.errMsgInCn, "ec");
    EXPECT_EQ(read.warningCode, (std::vector<std::int32_t>{1, 3}));
    EXPECT_EQ(read.supportedAuthType, std::vector<std::string>{"oauth"});
}

}  // namespace
}  // namespace zorvanelink::test
