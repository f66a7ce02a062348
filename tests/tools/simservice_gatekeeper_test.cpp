// Credentials: passwords, certificates and locked accounts.
#include <gmock/gmock.h>

#include "components/utils/base64.h"
#include "components/utils/sensitive_value.h"
#include "tests/tools/fake_scheduler.h"
#include "tools/simservice/gatekeeper.h"
#include "tools/support/pkcs12_maker.h"

namespace zorvanelink::simservice {
namespace {

using common::MsgCode;
using common::SupportedAuthType;

class GatekeeperTest : public testing::Test {
  protected:
    GatekeeperTest() {
        std::string error;
        EXPECT_TRUE(ParseScenario(R"({"users": [
            {"name": "alice", "password": "made-up", "certificate": "Anna"},
            {"name": "bob", "password": "made-up", "locked_after": 2, "lock_seconds": 60}]})",
                                  "f", scenario, error))
            << error;
    }

    // A refusal as its number, a welcome as the user's name.
    std::string judge(SupportedAuthType type, std::string const& user, std::string const& password,
                      std::string const& file = {}, std::string const& pin = {}) {
        core::sslvpn::CLMsgStartData start;
        start.authType = type;
        start.user = user;
        start.encryptedPassword = components::utils::EncodeSensitiveValue(password);
        if (!file.empty()) {
            start.pkcs12CertFileData = components::utils::Base64Encode(file, false);
            start.encryptedPinCode = components::utils::EncodeSensitiveValue(pin);
        }
        judgement = gatekeeper.Judge(start);
        return judgement.user != nullptr ? judgement.user->name
                                         : std::to_string(static_cast<int>(judgement.refusal));
    }

    Scenario scenario;
    test::FakeScheduler scheduler;
    Gatekeeper gatekeeper{scenario, scheduler};
    Judgement judgement;
};

TEST_F(GatekeeperTest, ACertificateOpensWithItsPinAndIsTheUsers) {
    auto const anna = test::MakePkcs12({});
    test::Pkcs12Recipe recipe;
    recipe.subject = {{"CN", "Zoe"}};
    auto const zoe = test::MakePkcs12(recipe);
    constexpr auto kBoth = SupportedAuthType::kPwdWithCert;
    constexpr auto kCert = SupportedAuthType::kOnlyUkey;
    struct {
        SupportedAuthType type;
        char const* user;
        char const* password;
        std::string const file;
        char const* pin;
        char const* expected;
    } const table[]{
        {kBoth, "alice", "made-up", anna, "open", "alice"},
        {kBoth, "alice", "made-up", anna, "wrong", "-4"},
        {kBoth, "alice", "made-up", anna, "", "-4"},
        {kBoth, "alice", "made-up", zoe, "open", "-4"},
        {kBoth, "alice", "made-up", "no certificate", "open", "-4"},
        {kBoth, "alice", "made-up", "", "", "-4"},
        {kBoth, "alice", "other", anna, "open", "-3"},
        {kBoth, "bob", "made-up", zoe, "open", "bob"},  // none is expected of him: any will do
        {kCert, "", "", anna, "open", "alice"},
        {kCert, "", "", anna, "wrong", "-4"},
        {kCert, "bob", "made-up", zoe, "open", "-4"},  // without a password it must be known
    };
    for (auto const& row : table) {
        EXPECT_EQ(judge(row.type, row.user, row.password, row.file, row.pin), row.expected)
            << row.user << " " << row.password << " " << row.pin;
    }
}

TEST_F(GatekeeperTest, AnAccountLocksForAWhile) {
    constexpr auto kPwd = SupportedAuthType::kPwd;
    EXPECT_EQ(judge(kPwd, "bob", "x"), "-3");
    EXPECT_EQ(judge(kPwd, "bob", "made-up"), "bob");  // starts the count over
    EXPECT_EQ(judge(kPwd, "bob", "x"), "-3");
    EXPECT_EQ(judge(kPwd, "bob", "x"), "41042");
    EXPECT_EQ(judgement.lock_seconds, 60);
    scheduler.Advance(59'500);
    EXPECT_EQ(judge(kPwd, "bob", "made-up"), "41042");
    EXPECT_EQ(judgement.lock_seconds, 1);
    EXPECT_EQ(judge(kPwd, "alice", "x"), "-3");
    scheduler.Advance(500);
    EXPECT_EQ(judge(kPwd, "bob", "x"), "-3");
    EXPECT_EQ(judge(kPwd, "bob", "made-up"), "bob");
    for (int tries = 0; tries < 5; ++tries) {
        EXPECT_EQ(judge(kPwd, "alice", "x"), "-3");
        EXPECT_EQ(judge(kPwd, "nobody", "x"), "-3");
    }
}

}  // namespace
}  // namespace zorvanelink::simservice
