// Signing requests: what is answered, and the user's own token, which is SoftHSM's here, found the
// way that the system finds it.
#include "components/cert/sign_job.h"
#include "core/clmsg_json.h"
#include "tests/support/test_environment.h"
#include "tests/ui/session/session_fixture.h"
#include "tools/support/pkcs12_maker.h"
#include "tools/support/soft_token.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
namespace cert = components::cert;

constexpr char kSign[] = "6\r672\rYWJj\r3";

class SigningStatusesTest : public test::SessionFixture {
  protected:
    SigningStatusesTest() {
        profile->certIsFile = false;
        profile->systemCert.certData = "certificate";
        Connect();
        service->Forget();
    }
    void Request(std::string const& text) {
        auto request = Reply(MsgCode::CERT_REQUEST);
        request.certRequestStr = text;
        Receive(request);
    }
    // Of all that have left since, what was signed or not.
    std::vector<std::string> Answers() const {
        std::vector<std::string> answers;
        for (std::string const& json : service->Sent()) {
            core::sslvpn::CLMsgSetData data;
            if (json.find("\"certSignData\"") != std::string::npos &&
                core::sslvpn::CLMsgJson::Parse(json, &data)) {
                answers.push_back(data.certSignData);
            }
        }
        return answers;
    }

    std::shared_ptr<Profile> profile = Add("Head office");
};

TEST_F(SigningStatusesTest, WithoutATokenNothingIsSigned) {
    Request(kSign);
    Request("2\r3\r0\r1\r0\rYWJj");
    Request("no request");
    EXPECT_EQ(Answers(), (std::vector<std::string>(2, "2\r6\r\r0\r0")));
    profile->loginMode = kLoginModeGm;
    profile->gmCert.signCert = profile->gmCert.encCert = "certificate";
    service->Forget();
    Request("1172\rYWJj\r3");
    Request("1172\r\r0");
    EXPECT_EQ(Answers(), std::vector<std::string>{"0\r0\r\r0"});
    EXPECT_EQ(Sent("stop"), 0);
    profile->gmCert = {};
    Request("1172\rYWJj\r3");
    EXPECT_EQ(Sent("stop"), 1) << "without a certificate the login goes no further";
    EXPECT_EQ(Answers().size(), 1U);
}

TEST_F(SigningStatusesTest, TheUsersTokenSignsAfterThePin) {
    {
        test::SoftToken token(ZVL_SOFTHSM, test::TestEnvironment::Home() / "hsm", "Card", "246810");
        test::Pkey const key = test::MakeKey("RSA");
        token.AddKey(key.get(), "1");
        token.AddCert(test::DerOf<X509>(&i2d_X509, test::MakeCert({}, key.get()).get()), "1");
    }
    profile->systemCert = cert::Pkcs11Provider().EnumCerts().at(0);
    auto const answered = [this](std::size_t count) {
        return test::WaitUntil([&] { return Answers().size() >= count && prompts.Finished(); });
    };
    prompts.ExpectSecret(std::nullopt);
    Request(kSign);
    EXPECT_TRUE(answered(1));
    prompts.ExpectSecret(test::SecretOf("135791"));
    prompts.ExpectBox(
        Translate(QT_TRANSLATE_NOOP("ui", "The PIN is wrong")) + QStringLiteral("#@@#") +
            Translate(QT_TRANSLATE_NOOP("ui", "The token takes only a few more wrong PINs.")),
        0);
    Request(kSign);
    EXPECT_TRUE(answered(2));
    // A second request comes while the PIN of the first is being typed.
    prompts.ExpectSecret(test::SecretOf("246810"), [this] {
        prompts.ExpectSecret(test::SecretOf("246810"));
        Request(kSign);
    });
    Request(kSign);
    EXPECT_TRUE(answered(4));
    Request(kSign);
    EXPECT_TRUE(answered(5)) << "nobody is asked a second time";
    std::string const nothing = cert::NothingSigned();
    auto const answers = Answers();
    EXPECT_EQ((std::vector(answers.begin(), answers.begin() + 3)), std::vector(3, nothing));
    EXPECT_TRUE(answers[3].starts_with("6\r1\r") && answers[4] == answers[3]);

    Receive(MsgCode::OFFLINE);
    Connect();
    prompts.ExpectSecret(test::SecretOf("246810"), [this] { ClickStop(); });
    Request(kSign);
    EXPECT_TRUE(answered(6)) << "the token was logged out with the session";
    EXPECT_EQ(Answers().at(5), nothing);
    EXPECT_NE(service->Sent().back().find("\"stop\""), std::string::npos) << "the answer first";
}

}  // namespace
}  // namespace zorvanelink::ui
