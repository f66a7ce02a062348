// What of a message a log shows.
#include <gtest/gtest.h>

#include "core/clmsg_json.h"
#include "core/clmsg_reply_json.h"
#include "core/message_log.h"

namespace zorvanelink::core {
namespace {

using namespace sslvpn;

int count(std::string const& text, std::string const& part) {
    int found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

TEST(MessageLog, NoSecretOfAnyMessageIsShown) {
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
        std::string const masked = MaskSecrets(c.message);
        EXPECT_EQ(count(masked, "s3c") + count(masked, "r}et"), 0) << masked;
        EXPECT_EQ(count(masked, "\"****\""), c.secrets) << masked;
    }
    EXPECT_EQ(MaskSecrets(R"({"password":["s",{"a":"s]"},2],"pinCode":{"b":"s"},"c":1})"),
              R"({"password":"****","pinCode":"****","c":1})");
}

TEST(MessageLog, RefusedMessagesTakeOneShortLine) {
    EXPECT_EQ(RefusedMessage("{\"a\":\"\n\x1B[2J\",\"certData\":\"REVS"),
              R"({"a":"\n\x1B[2J","certData":"****")");
    for (std::string const& part :
         {std::string("x"), std::string("\n"), std::string("\xE5\xAF\x86")}) {
        std::string text;
        while (text.size() < 5000) {
            text += part;
        }
        EXPECT_LE(RefusedMessage(text).size(), 1024U);
        EXPECT_GT(RefusedMessage(text).size(), 1000U);
    }
}

}  // namespace
}  // namespace zorvanelink::core
