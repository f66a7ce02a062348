#include "components/cert/pkcs11_provider.h"

#include <gtest/gtest.h>
#include <openssl/rsa.h>

#include "tests/components/cert/counting_module.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_environment.h"
#include "tools/support/pkcs12_maker.h"
#include "tools/support/soft_token.h"

namespace zorvanelink::components::cert {
namespace {

using Outcome = TokenSignature::Outcome;

constexpr char kUri[] = "pkcs11:token=Anna%27s%20card";
constexpr char kPin[] = "246810";

// One token, with a certificate and its key, one without a key and one on a curve.
class TokenTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        token_ = std::make_unique<test::SoftToken>(
            ZVL_SOFTHSM, test::TestEnvironment::Home() / "hsm", "Anna's card", kPin);
        test::Pkey const curve = test::MakeKey("EC");
        auto const der = [](EVP_PKEY* key) {
            return test::DerOf<X509>(&i2d_X509, test::MakeCert({}, key).get());
        };
        token_->AddKey(key_.get(), "\x01;");
        token_->AddCert(der(key_.get()), "\x01;");
        token_->AddCert(der(key_.get()), "\x02");
        token_->AddCert(der(curve.get()), "\x01;");
        token_.reset();
    }
    TokenTest()
        : controls_(*static_cast<TokenControls*>(
              dlsym(dlopen(ZVL_COUNTING_MODULE, RTLD_NOW), kTokenControls))) {
        controls_ = {};
    }

    // The user types the text, or cancels.
    TokenSignature sign(char const* typed, std::string const& request = "6\r672\rYWJj\r3") {
        return provider_.Sign(uri(), *ReadSignJob(request),
                              [&](PinQuestion const& question, std::string& pin) {
                                  questions_.push_back(question.triesLeft);
                                  EXPECT_EQ(question.tokenLabel, "Anna's card");
                                  pin = typed != nullptr ? typed : "";
                                  return typed != nullptr;
                              });
    }
    std::string uri() {
        auto const certs = provider_.EnumCerts();
        return certs.empty() ? uri_ : uri_ = certs.front().certAlias;
    }

    static std::unique_ptr<test::SoftToken> token_;
    static test::Pkey const key_;
    TokenControls& controls_;
    Pkcs11Provider provider_{ZVL_COUNTING_MODULE};
    std::vector<PinTries> questions_;
    std::string uri_;
};
std::unique_ptr<test::SoftToken> TokenTest::token_;
test::Pkey const TokenTest::key_ = test::MakeKey("RSA");

TEST_F(TokenTest, ListsWhatHasItsKeyInTheToken) {
    EXPECT_EQ(controls_.sessions, 0) << "nothing before somebody asks";
    for (std::string const module : {ZVL_COUNTING_MODULE, ""}) {  // "": what the system has
        auto const certs = Pkcs11Provider(module).EnumCerts();
        ASSERT_EQ(certs.size(), 1U) << module;
        EXPECT_EQ(certs[0].certType, 1);
        EXPECT_EQ(certs[0].certName + "/" + certs[0].tokenLabel, "Anna/Anna's card");
        EXPECT_TRUE(certs[0].certAlias.starts_with(kUri)) << certs[0].certAlias;
        EXPECT_TRUE(certs[0].certAlias.ends_with(";id=%01%3B")) << certs[0].certAlias;
    }
    EXPECT_EQ(controls_.logins + controls_.sessions, 0);
    for (char const* none : {"/no/such/module.so", "module.so", "/proc/self/exe"}) {
        EXPECT_TRUE(Pkcs11Provider(none).EnumCerts().empty());
        EXPECT_EQ(Pkcs11Provider(none).Sign(uri(), {}, {}).outcome, Outcome::kNoToken);
    }
}

TEST_F(TokenTest, SignsAfterOnePinUntilTheSessionCloses) {
    test::LogCapture const log;
    std::string const raw = std::string(255, 'r').insert(0, 1, '\0');
    struct Case {
        std::string request;
        int padding;
        std::string recovered;
    } const cases[] = {
        {"6\r672\rYWJj\r3", RSA_PKCS1_PADDING, BytesToPad(*ReadSignJob("6\r672\rYWJj\r3"))},
        {"2\r3\r0\r1\r0\rYWJj", RSA_PKCS1_PADDING, "abc"},
        {RSAMethReqArgs{256, raw, 0, RSA_NO_PADDING, 0}.Serial(kRSAPrivEnc), RSA_NO_PADDING, raw},
    };
    for (Case const& c : cases) {
        TokenSignature const made = sign(kPin, c.request);
        ASSERT_EQ(made.outcome, Outcome::kSigned);
        std::unique_ptr<EVP_PKEY_CTX, utils::Freeing<&EVP_PKEY_CTX_free>> const context(
            EVP_PKEY_CTX_new(key_.get(), nullptr));
        EVP_PKEY_verify_recover_init(context.get());
        EVP_PKEY_CTX_set_rsa_padding(context.get(), c.padding);
        std::string recovered(256, '\0');
        std::size_t size = recovered.size();
        EXPECT_EQ(EVP_PKEY_verify_recover(
                      context.get(), reinterpret_cast<unsigned char*>(recovered.data()), &size,
                      reinterpret_cast<unsigned char const*>(made.signature.data()),
                      made.signature.size()),
                  1);
        EXPECT_EQ(recovered.substr(0, size), c.recovered);
    }
    EXPECT_EQ(questions_.size(), 1U);
    EXPECT_EQ(controls_.sessions, 1);
    provider_.CloseSessions();
    EXPECT_EQ(controls_.sessions, 0);
    EXPECT_EQ(sign(kPin).outcome, Outcome::kSigned);
    EXPECT_EQ(questions_.size(), 2U);
    EXPECT_EQ(controls_.logins, 2);

    controls_.asksEachTime = true;
    EXPECT_EQ(sign(kPin).outcome, Outcome::kSigned);
    provider_.CloseSessions();
    EXPECT_EQ(sign(kPin).outcome, Outcome::kSigned);
    EXPECT_EQ(questions_.size(), 4U) << "one prompt a request, whatever the token wants it for";
    EXPECT_FALSE(log.Has(kPin));
}

TEST_F(TokenTest, WrongPinsAreTriedOnceAndCounted) {
    EXPECT_EQ(sign(nullptr).outcome, Outcome::kCancelled);
    EXPECT_EQ(sign("").outcome, Outcome::kCancelled);
    EXPECT_EQ(controls_.logins, 0);
    for (PinTries const left : {PinTries::kFew, PinTries::kLast, PinTries::kNone}) {
        TokenSignature const result = sign("135791");
        EXPECT_EQ(result.outcome, Outcome::kWrongPin);
        EXPECT_EQ(result.triesLeft, left);
        EXPECT_EQ(result.signature + result.tokenLabel, "Anna's card");
    }
    EXPECT_EQ(controls_.logins, 3);
    EXPECT_EQ(sign(kPin).outcome, Outcome::kPinLocked);
    EXPECT_EQ(controls_.logins, 3) << "a locked token is not tried";
    EXPECT_EQ(questions_, (std::vector{PinTries::kNotTold, PinTries::kNotTold, PinTries::kNotTold,
                                       PinTries::kFew, PinTries::kLast}));
    EXPECT_EQ(controls_.sessions, 0);
}

TEST_F(TokenTest, TokensThatRefuseOrGo) {
    controls_.refusesRaw = true;
    std::string const raw =
        RSAMethReqArgs{256, std::string(256, 'r'), 0, RSA_NO_PADDING, 0}.Serial(kRSAPrivEnc);
    EXPECT_EQ(sign(kPin, raw).outcome, Outcome::kRefused);
    EXPECT_EQ(sign(kPin, "2\r3\r0\r4\r0\rYWJj").outcome, Outcome::kRefused) << "OAEP";
    EXPECT_EQ(sign(kPin).outcome, Outcome::kSigned);
    std::string const there = uri();
    // In the middle of a signature, before it, and one that was never there.
    EXPECT_EQ(provider_.Sign(there, *ReadSignJob(raw), {}).outcome, Outcome::kRefused);
    EXPECT_EQ(provider_
                  .Sign(there, *ReadSignJob("6\r672\rYWJj\r3"),
                        [&](auto const&, std::string& pin) {
                            controls_.gone = true;
                            pin = kPin;
                            return true;
                        })
                  .outcome,
              Outcome::kNoToken);
    EXPECT_EQ(sign(kPin).outcome, Outcome::kNoToken);
    EXPECT_EQ(controls_.sessions, 0) << "nothing of a token that has gone is kept";
    controls_.gone = false;
    EXPECT_EQ(provider_
                  .Sign(there + "1", {kRSASign, NID_sha256, 0, "abc"},
                        [](auto const&, std::string& pin) {
                            pin = kPin;
                            return true;
                        })
                  .outcome,
              Outcome::kSigned);
    EXPECT_EQ(provider_.Sign("pkcs11:token=x;serial=y;id=%01", {}, {}).outcome, Outcome::kNoToken);
    EXPECT_EQ(provider_.Sign("no URI", {}, {}).outcome, Outcome::kNoToken);
}

}  // namespace
}  // namespace zorvanelink::components::cert
