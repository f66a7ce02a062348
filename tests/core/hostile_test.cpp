// Bytes of a peer that means harm, or that is broken, and what of a message a log shows.
#include <thread>

#include "core/clmsg.h"
#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"
#include "core/json_text.h"
#include "core/message_log.h"
#include "tests/core/golden.h"

namespace zorvanelink::test {
namespace {

using namespace core::sslvpn;
using core::CLMsgJsonParse;

// A megabyte, far beyond what a stack would stand.
constexpr std::size_t kDepth = 1'000'000;

std::string nested(char const* open, char const* close) {
    std::string text = R"({"profileName":"p","statusCode":1,"supportedAuthType":)";
    for (std::size_t i = 0; i < kDepth; ++i) {
        text += open;
    }
    text += "1";
    for (std::size_t i = 0; i < kDepth; ++i) {
        text += close;
    }
    return text + "}";
}

TEST(Hostile, DepthDoesNotReachTheStack) {
    CLMsgCommonReplyData data;
    EXPECT_TRUE(CLMsgReplyJson::Parse(nested("[", "]"), &data));
    EXPECT_TRUE(CLMsgReplyJson::Parse(nested("{\"a\":", "}"), &data));
    EXPECT_FALSE(CLMsgReplyJson::Parse(nested("[", ""), &data));
    EXPECT_TRUE(data.supportedAuthType.empty());
}

TEST(Hostile, EveryPrefixIsRefused) {
    std::string const whole = Golden("common_online");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        CLMsgCommonReplyData data;
        EXPECT_FALSE(CLMsgReplyJson::Parse(whole.substr(0, length), &data)) << length;
    }
}

TEST(Hostile, BytesThatAreNoTextStayOutOfRecordsAndMessages) {
    std::string const zero("a\0b", 3);
    struct Row {
        std::string value;  // as it stands in the message
        std::string read;
    };
    Row const rows[] = {
        {"\xFF", "\uFFFD"},
        {"\xC3", "\uFFFD"},
        {"\xC0\x80", "\uFFFD\uFFFD"},            // zero in two bytes
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},  // half a surrogate pair
        {"\\udc00", "\uFFFD\uFFFD\uFFFD"},
        {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond Unicode
        {"x\xE5\x8C", "x\uFFFD\uFFFD"},                    // cut
        {"北京 \xF0\x9F\x94\x92", "北京 \xF0\x9F\x94\x92"},
        {"a\\u0000b", zero},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.value);
        CLMsgGatewayDetectStopData data;
        ASSERT_TRUE(
            CLMsgReplyJson::Parse(R"({"profileName":"p","reason":")" + row.value + "\"}", &data));
        EXPECT_EQ(data.reason, row.read);
    }
    CLMsgGatewayDetectStopData broken;
    broken.profileName = "cut \xE5\x8C";
    std::string const message = CLMsgReplyJson::Build(broken);
    EXPECT_TRUE(core::json::IsUtf8(message));
    EXPECT_TRUE(CLMsgReplyJson::Parse(message, &broken));
    EXPECT_EQ(broken.profileName, "cut \uFFFD\uFFFD");
}

TEST(Hostile, TextsThatAreNoMessage) {
    std::string const rows[] = {"null",
                                "\"a\"",
                                "1",
                                "[{}]",
                                "{",
                                "}",
                                "{\"a\":NaN}",
                                "{\"a\":1e999}",
                                "{'a':1}",
                                "{\"a\":1,}",
                                "{\"a\":01}",
                                "// x\n{}",
                                "{}{}",
                                std::string("{}\0x", 4),
                                "\xEF\xBB\xBF[]",
                                "{\"a\":\"\x01\"}",
                                "{\"a\":\"\\ud800\"}"};
    for (std::string const& row : rows) {
        CLMsgVINCState state;
        EXPECT_FALSE(CLMsgReplyJson::Parse(row, &state)) << row;
        EXPECT_EQ(CLMsgJsonParse::err_str_,
                  "Failed to parse clmsgjson[" + core::RefusedMessage(row) + "]");
    }
    EXPECT_FALSE(core::json_str_.empty());
    CLMsgVINCState state;
    EXPECT_TRUE(CLMsgReplyJson::Parse(std::string("{\"state\":true}\0", 15), &state));
}

TEST(Hostile, RefusedMessagesShowNoSecret) {
    std::pair<char const*, char const*> const rows[] = {
        {R"({"secondAuthCode" : "123456)", R"({"secondAuthCode" : "****")"},
        {R"({"pinCode":1234,"certData":"REVS"]})", R"({"pinCode":"****","certData":"****"]})"},
        {R"({"user":"password","a":"b)", R"({"user":"password","a":"b)"},
        {R"({"a":"\"password\":\"x)", R"({"a":"\"password\":\"x)"},
    };
    for (auto const& [text, masked] : rows) {
        CLMsgStartData data;
        EXPECT_FALSE(CLMsgJson::Parse(text, &data));
        EXPECT_EQ(CLMsgJsonParse::err_str_,
                  std::string("Failed to parse clmsgjson[") + masked + "]");
    }
}

int count(std::string const& text, std::string const& part) {
    int found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

TEST(Hostile, NoSecretOfAnyMessageIsShown) {
    std::string const secret = "s3c,\\\"r}et";
    CLMsgStartData start;
    start.encryptedPassword = secret;
    start.pkcs12CertFileData = start.encryptedPinCode = start.certData = secret;
    CLMsgCommonReplyData online;
    online.statusCode = common::MsgCode::ONLINE;
    online.receivedUserName = secret;
    struct Case {
        std::string message;
        int secrets;
    } const cases[] = {
        {CLMsgJson::BuildStart(start), 4},
        {CLMsgJson::BuildAuthCode("p", SetType::kSmsCode, secret), 1},
        {CLMsgJson::BuildNewPassword("p", secret, secret), 2},
        {CLMsgJson::BuildCertSignData("p", secret), 1},
        {CLMsgReplyJson::Build(online), 1},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(count(c.message, "s3c"), c.secrets) << c.message;
        std::string const masked = core::MaskSecrets(c.message);
        EXPECT_EQ(count(masked, "s3c") + count(masked, "r}et"), 0) << masked;
        EXPECT_EQ(count(masked, "\"****\""), c.secrets) << masked;
    }
    EXPECT_EQ(core::MaskSecrets(R"({"password":["s",{"a":"s]"},2],"pinCode":{"b":"s"},"c":1})"),
              R"({"password":"****","pinCode":"****","c":1})");
}

TEST(Hostile, RefusedMessagesTakeOneShortLine) {
    EXPECT_EQ(core::RefusedMessage("{\"a\":\"\n\x1B[2J\",\"certData\":\"REVS"),
              R"({"a":"\n\x1B[2J","certData":"****")");
    for (std::string const& part :
         {std::string("x"), std::string("\n"), std::string("\xE5\xAF\x86")}) {
        std::string text;
        while (text.size() < 5000) {
            text += part;
        }
        EXPECT_LE(core::RefusedMessage(text).size(), 1024U);
        EXPECT_GT(core::RefusedMessage(text).size(), 1000U);
    }
}

// What is behind the most that a record holds is read over: it neither costs nor counts.
TEST(Hostile, ListsHoldSoMuchAndTheRestIsReadOver) {
    auto const list = [](std::string const& key, std::string const& element, std::size_t count) {
        std::string text = R"({"profileName":"p","statusCode":1,")" + key + "\":[" + element;
        for (std::size_t i = 1; i < count; ++i) {
            text += "," + element;
        }
        return text + R"(],"receivedUserName":"behind"})";
    };
    CLMsgCommonReplyData common;
    ASSERT_TRUE(CLMsgReplyJson::Parse(list("warningCode", R"({"code":7})", 20), &common));
    EXPECT_EQ(common.warningCode.size(), 16U);
    EXPECT_EQ(common.receivedUserName, "behind");
    ASSERT_TRUE(CLMsgReplyJson::Parse(list("more", R"([{"a":[1]}])", 2000), &common));
    EXPECT_EQ(common.receivedUserName, "behind");
    EXPECT_TRUE(CLMsgReplyJson::Parse(list("more", "1", 2'000'000), &common));
    EXPECT_FALSE(CLMsgReplyJson::Parse(list("more", "1", 2'001'000), &common));

    ALMsgCertRespondData certs;
    std::string const huge(64 * 1024 + 1, 'A');
    ASSERT_TRUE(
        CLMsgReplyJson::Parse(list("certList", R"({"cert":")" + huge + "\"}", 260), &certs));
    EXPECT_EQ(certs.certList, std::vector<std::string>(256));

    std::string many =
        list("gatewayList", R"({"name":"a","addr":"b","detectPort":"1","sslPort":"2"})", 512);
    many.insert(many.find("],"), R"(,null,{"name":7},[])");
    CLMsgGatewayListData gateways;
    EXPECT_TRUE(CLMsgReplyJson::Parse(many, &gateways));
    std::string members = R"({"reason":"kept","profileName":"p")";
    for (int i = 0; i < 600; ++i) {
        members += ",\"k" + std::to_string(i) + "\":{\"x\":[]}";
    }
    CLMsgGatewayDetectStopData stop;
    ASSERT_TRUE(CLMsgReplyJson::Parse(members + "}", &stop));
    EXPECT_EQ(stop.reason, "kept");

    std::string const page(2049, 'a');
    ASSERT_TRUE(CLMsgReplyJson::Parse(
        R"({"profileName":"p","statusCode":1,"redirectUrl":")" + page + "\"}", &common));
    EXPECT_EQ(common.redirectUrl, "");
    ASSERT_TRUE(CLMsgReplyJson::Parse(
        R"({"profileName":"p","statusCode":1,"redirectUrl":")" + page.substr(1) + "\"}", &common));
    EXPECT_EQ(common.redirectUrl.size(), 2048U);
}

TEST(Hostile, FailureTextsBelongToTheirThread) {
    CLMsgStopData stop;
    EXPECT_FALSE(CLMsgJson::Parse("{}", &stop));
    std::string other;
    std::thread([&other] {
        CLMsgGatewayDetectStopData data;
        CLMsgReplyJson::Parse(R"({"profileName":"p"})", &data);
        other = CLMsgJsonParse::err_str_;
    }).join();
    EXPECT_EQ(CLMsgJsonParse::err_str_, ErrorOf("profileName"));
    EXPECT_EQ(other, ErrorOf("reason"));
}

}  // namespace
}  // namespace zorvanelink::test
