#include <gmock/gmock.h>

#include "components/utils/file.h"
#include "tests/support/test_environment.h"
#include "tests/tools/fake_scheduler.h"
#include "tools/simservice/recorder.h"

namespace zorvanelink::simservice {
namespace {

TEST(Recorder, MasksSecretsAndKeepsTheOrderOfKeys) {
    struct {
        char const* message;
        char const* recorded;
    } const table[]{
        {R"({"type":"start","b":1,"a":{"z":true,"encryptedPassword":"x"},"encryptedPinCode":"y"})",
         R"({"type":"start","b":1,"a":{"z":true,"encryptedPassword":"****"},"encryptedPinCode":"****"})"},
        {R"({"list":[{"secondAuthCode":"1234"}],"certData":"x","pkcs12CertFileData":"y"})",
         R"({"list":[{"secondAuthCode":"****"}],"certData":"****","pkcs12CertFileData":"****"})"},
        {R"({"newPassword":{"deep":"x"},"currentPassword":7,"password":""})",
         R"({"newPassword":"****","currentPassword":"****","password":""})"},
        {R"({"user":"password"})", R"({"user":"password"})"},
        {"[]", ""},
        {"{\"a\":", ""},
    };
    for (auto const& [message, recorded] : table) {
        EXPECT_EQ(MaskedMessage(message), recorded);
    }
}

TEST(Recorder, WritesOneObjectALineAtOnce) {
    auto const path = (test::TestEnvironment::Home() / "record.jsonl").string();
    test::FakeScheduler scheduler;
    Recorder recorder(scheduler);
    recorder.Message("{}");  // not open yet: goes nowhere
    ASSERT_TRUE(recorder.Open(path));
    recorder.Event("connected");
    scheduler.Advance(1500);
    recorder.Message("{\n  \"type\": \"stop\",\n  \"profileName\": \"\xc3\xbc\"\n}");
    recorder.Message("{\"a\":1}");
    recorder.Message("{\"broken\":\"\xff\"}");
    recorder.Message("no json");
    std::string text;
    ASSERT_TRUE(components::utils::ReadContentFromFile(path, text));
    EXPECT_EQ(text,
              "{\"time\":0,\"event\":\"connected\"}\n"
              "{\"time\":1500,\"type\":\"stop\",\"message\":{\"type\":\"stop\",\"profileName\":"
              "\"\xc3\xbc\"}}\n"
              "{\"time\":1500,\"type\":\"unknown\",\"message\":{\"a\":1}}\n"
              "{\"time\":1500,\"event\":\"unreadable\",\"length\":14}\n"
              "{\"time\":1500,\"event\":\"unreadable\",\"length\":7}\n");
}

}  // namespace
}  // namespace zorvanelink::simservice
