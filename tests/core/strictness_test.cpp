// What the readers refuse, and what they take as it comes.
#include <algorithm>
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
    char const* error;  // empty: the message is taken
};

template <class Record, std::size_t N>
void expectChanges(std::string const& message, Change const (&changes)[N]) {
    for (Change const& change : changes) {
        SCOPED_TRACE(std::string(change.from) + " -> " + change.to);
        CLMsgJsonParse::err_str_.clear();
        Record read;
        std::string const changed = replaced(message, change.from, change.to);
        EXPECT_EQ(CLMsgReplyJson::Parse(changed, &read), *change.error == '\0');
        EXPECT_EQ(CLMsgJsonParse::err_str_, change.error);
    }
}

TEST(Strictness, NetConfig) {
    expectChanges<CLMsgReplyNetConfigData>(
        Golden("netconfig"),
        {{R"("winsList")", R"("winslist")", "Failed to find key winsList in clmsgjson parse"},
         {R"("profileName")", R"("name")", "Failed to find key profileName in clmsgjson parse"},
         {R"("prefixIPv6": 64)", R"("prefixIPv6": 64.0)",
          "Key [prefixIPv6]'s value type[6] is invalid in clmsgjson parse"},
         {R"("prefixIPv6": 64)", R"("prefixIPv6": -2147483649)",
          "Key [prefixIPv6]'s value type[6] is invalid in clmsgjson parse"},
         {R"("dedicatedTunnel": true)", R"("dedicatedTunnel": 1)",
          "Key [dedicatedTunnel]'s value type[6] is invalid in clmsgjson parse"},
         {R"("isIPv6Channel": true)", R"("isIPv6Channel": "true")",
          "Key [isIPv6Channel]'s value type[5] is invalid in clmsgjson parse"},
         {R"("fd00::53")", "53", "Key [ipv6DnsList]'s value type[6] is invalid in clmsgjson parse"},
         {R"("dnsList": [)", R"("dnsList": {}, "more": [)",
          "Key [dnsList]'s value type[3] is invalid in clmsgjson parse"},
         {R"("routeList": [)", R"("routeList": ["10.0.0.0/8",)",
          "Key [routeList]'s value type[5] is invalid in clmsgjson parse"},
         {R"("metric": 5)", R"("metrics": 5)", "Failed to find key metric in clmsgjson parse"},
         {R"("10.2.0.0": "",)", "", "Failed to find key destination in clmsgjson parse"},
         {R"("vnicName")", R"("future": [1, {"a": null}], "vnicName")", ""}});
}

TEST(Strictness, FailureKeepsWhatWasReadBefore) {
    std::string const message = replaced(Golden("netconfig"), "\"10.1.0.7\"", "7");
    CLMsgReplyNetConfigData read;
    read.clientPrivateIP = "old";
    EXPECT_FALSE(CLMsgReplyJson::Parse(message, &read));
    EXPECT_EQ(read.vnicName, "zl0");
    EXPECT_EQ(read.clientPrivateIP, "old");
    EXPECT_TRUE(read.routeList.empty());
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
        {{"12.5", "12", "Key [outbound_comp_ratio]'s value type[6] is invalid in clmsgjson parse"},
         {"12.5", "-3.5e38",
          "Key [outbound_comp_ratio]'s value type[6] is invalid in clmsgjson parse"},
         {"12.5", "3.4e38", ""},
         {R"("outbound_bytes": 2)", R"("outbound_bytes": -2)",
          "Key [outbound_bytes]'s value type[6] is invalid in clmsgjson parse"},
         {"18446744073709551615", "18446744073709551616",
          "Key [inbound_bytes]'s value type[6] is invalid in clmsgjson parse"}});
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
        {{R"("detectPort": "8001")", R"("detectPort": 8001)",
          "Key [detectPort]'s value type[6] is invalid in clmsgjson parse"},
         {R"("name": "south")", R"("named": "south")",
          "Failed to find key name in clmsgjson parse"},
         {R"("gatewayList": [)", R"("gatewayList": [null, )",
          "Key [gatewayList]'s value type[0] is invalid in clmsgjson parse"}});
    expectChanges<ALMsgGMCertRespondData>(
        Golden("gmCertRespond"),
        {{R"("signCert": "c2lnbg==",)", "", ""},
         {R"("encCert": "ZW5j")", R"("encCert": 1)", ""},
         {R"("appList")", R"("apps")", "Failed to find key appList in clmsgjson parse"},
         {R"("containerName": "second")", R"("containerName": 2)",
          "Key [containerName]'s value type[6] is invalid in clmsgjson parse"}});
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

    CLMsgCommonReplyData kept;
    ASSERT_TRUE(CLMsgReplyJson::Parse(Golden("common_online"), &kept));
    std::string const before = CLMsgReplyJson::Build(kept);
    ASSERT_TRUE(CLMsgReplyJson::Parse(R"({"profileName":"office","statusCode":40971,
        "redirectUrl":1,"enableComplexity":"yes","minLength":8.0,"supportedAuthType":["pwd"],
        "warningCode":{},"receivedUserName":[]})",
                                      &kept));
    EXPECT_EQ(CLMsgReplyJson::Build(kept), before);
    EXPECT_EQ(CLMsgJsonParse::debug_str_,
              "Failed to find key AppResourcePortalStaticFilePath in clmsgjson parse");

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
