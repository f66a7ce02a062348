#include <gtest/gtest.h>
#include <openssl/err.h>
#include <openssl/ssl.h>

#include "components/cert/cert_util.h"
#include "components/cert/key_hooks.h"
#include "components/utils/base64.h"
#include "tests/support/log_capture.h"
#include "tests/support/test_environment.h"
#include "tools/support/pkcs12_maker.h"
#include "tools/support/signing_link.h"

namespace {

int g_enc_calls = 0;

}  // namespace

// What only a library with GM TLS has: each succeeds in its turn.
extern "C" {
int SSL_CTX_use_enc_certificate(SSL_CTX*, X509*) {
    return ++g_enc_calls == 1;
}
int SSL_CTX_use_enc_PrivateKey(SSL_CTX*, EVP_PKEY*) {
    return ++g_enc_calls == 2;
}
}

namespace zorvanelink::components::cert {
namespace {

using std::chrono::milliseconds;
using test::LogCapture;
using test::SigningLink;

template <auto Free>
using Own = utils::Freeing<Free>;
using Context = std::unique_ptr<SSL_CTX, Own<&SSL_CTX_free>>;
using Ssl = std::unique_ptr<SSL, Own<&SSL_free>>;

ipc::PortPlace place() {
    return {ipc::kDefaultPort, test::TestEnvironment::Home() / "port"};
}

// A user's key and certificate; one of each size is enough.
struct Identity {
    explicit Identity(std::size_t bits)
        : key(EVP_PKEY_Q_keygen(nullptr, nullptr, "RSA", bits), &EVP_PKEY_free),
          x509(test::MakeCert({}, key.get())) {}
    static Identity const& Of(std::size_t bits) {
        static Identity const small(2048);
        static Identity const large(4096);
        return bits == 2048 ? small : large;
    }
    std::string Der() const { return test::DerOf<X509>(&i2d_X509, x509.get()); }
    std::optional<std::string> Answer(std::string const& request) const {
        return test::AnswerWith(key.get(), request);
    }
    test::Pkey key;
    test::Cert x509;
};

Context makeContext(int version, char const* algorithms) {
    Context context(SSL_CTX_new(TLS_method()));
    SSL_CTX_set_min_proto_version(context.get(), version);
    SSL_CTX_set_max_proto_version(context.get(), version);
    SSL_CTX_set1_sigalgs_list(context.get(), algorithms);
    return context;
}

Context makeGateway(int version) {
    Context gateway = makeContext(version, "RSA+SHA256:RSA-PSS+SHA256:ECDSA+SHA256");
    test::Pkey const key = test::MakeKey("EC");
    SSL_CTX_use_certificate(gateway.get(), test::MakeCert({"EC"}, key.get()).get());
    SSL_CTX_use_PrivateKey(gateway.get(), key.get());
    // Whose certificate it is does not matter here, that its owner signed does.
    SSL_CTX_set_verify(gateway.get(), SSL_VERIFY_PEER | SSL_VERIFY_FAIL_IF_NO_PEER_CERT,
                       [](int, X509_STORE_CTX*) { return 1; });
    return gateway;
}

std::string takeErrors() {
    std::string errors = "failed: ";
    ERR_print_errors_cb(
        [](char const* text, std::size_t size, void* all) {
            static_cast<std::string*>(all)->append(text, size);
            return 1;
        },
        &errors);
    return errors;
}

// Empty when both ends have finished, else what OpenSSL says.
std::string shakeHands(SSL_CTX* service, SSL_CTX* gateway) {
    Ssl const near(SSL_new(service));
    Ssl const far(SSL_new(gateway));
    BIO* near_end = nullptr;
    BIO* far_end = nullptr;
    BIO_new_bio_pair(&near_end, 0, &far_end, 0);
    SSL_set_bio(near.get(), near_end, near_end);
    SSL_set_bio(far.get(), far_end, far_end);
    SSL_set_connect_state(near.get());
    SSL_set_accept_state(far.get());
    ERR_clear_error();
    while (!SSL_is_init_finished(near.get()) || !SSL_is_init_finished(far.get())) {
        for (SSL* const end : {near.get(), far.get()}) {
            int const error = SSL_get_error(end, SSL_do_handshake(end));
            if (error == SSL_ERROR_SSL) {
                return takeErrors();
            }
        }
    }
    return "";
}

std::string loginWith(SigningLink& link, Identity const& user, int version,
                      char const* algorithms) {
    Context const service = makeContext(version, algorithms);
    Context const gateway = makeGateway(version);
    if (!link.Stands() || !CertInterface::Instance().InitByCertContent(service.get(), user.Der(),
                                                                       link.key.RsaFuns())) {
        return "no certificate";
    }
    return shakeHands(service.get(), gateway.get());
}

TEST(Signing, HandshakesWhoseKeyIsAtTheOtherEndOfTheLink) {
    for (std::size_t const bits : {2048, 4096}) {
        Identity const& user = Identity::Of(bits);
        int requests = 0;
        SigningLink link(place(), [&](std::string const& request) {
            ++requests;
            return user.Answer(request);
        });
        EXPECT_EQ(loginWith(link, user, TLS1_2_VERSION, "RSA+SHA256:ECDSA+SHA256"), "");
        EXPECT_EQ(loginWith(link, user, TLS1_2_VERSION, "RSA-PSS+SHA256:ECDSA+SHA256"), "");
        EXPECT_EQ(loginWith(link, user, TLS1_3_VERSION, "RSA-PSS+SHA256:ECDSA+SHA256"), "");
        EXPECT_EQ(requests, 3) << "one round trip a handshake";
        EXPECT_EQ(CertInterface::Instance().GetRsaModulusSize() * 8, static_cast<int>(bits));
    }
}

TEST(Signing, FailuresEndTheHandshakeWithAText) {
    Identity const& user = Identity::Of(2048);
    auto const reply = [](RSAReqType type, std::string const& data, std::size_t says) {
        RSARepData answer;
        answer.ret = 1;
        answer.data = data;
        answer.dataLen = static_cast<int>(says);
        return std::optional(answer.Serial(type));
    };
    SigningLink* standing = nullptr;
    struct Case {
        char const* logged;
        SigningLink::Answerer answer;
        milliseconds wait{30'000};
    } const cases[] = {
        {"No answer to a signing request within 50 ms", [](auto const&) { return std::nullopt; },
         milliseconds(50)},
        {"Nothing was signed, the answer is 6", [](auto const&) { return NothingSigned(); }},
        {"cannot be read", [](auto const&) { return "6\r1"; }},
        {"has not the key's length",
         [&](auto const&) { return reply(kRSASign, std::string(255, 's'), 255); }},
        {"the answer is too long",
         [&](auto const&) { return reply(kRSASign, std::string(257, 's'), 257); }},
        {"the answer is too long",
         [&](auto const&) { return reply(kRSASign, std::string(1025, 's'), 1025); }},
        {"the answer's length disagrees",
         [&](auto const&) { return reply(kRSASign, std::string(256, 's'), 255); }},
        {"nothing was done",
         [&](auto const&) { return reply(kRSASign, std::string(256, 's'), 0); }},
        {"is one to 2",
         [&](auto const&) { return reply(kRSAPrivEnc, std::string(256, 's'), 256); }},
        {"ended before its answer",
         [&](auto const&) {
             standing->LoseFrontEnd();
             return std::nullopt;
         }},
        {"ended before its answer",
         [&](auto const&) {
             standing->key.Stop();
             return std::nullopt;
         }},
    };
    for (Case const& c : cases) {
        LogCapture const log;
        SigningLink link(place(), c.answer, c.wait);
        standing = &link;
        std::string const error = loginWith(link, user, TLS1_2_VERSION, "RSA+SHA256:ECDSA+SHA256");
        EXPECT_NE(error.find("rsa sign: "), std::string::npos) << c.logged << error;
        EXPECT_TRUE(log.Has(c.logged)) << c.logged;
        EXPECT_TRUE(log.Has("Failed to rsa sign:"));
    }
    // Of the right size, and not by the user: the gateway notices.
    SigningLink link(place(),
                     [&](auto const&) { return reply(kRSASign, std::string(256, 's'), 256); });
    EXPECT_NE(loginWith(link, user, TLS1_2_VERSION, "RSA+SHA256:ECDSA+SHA256"), "");
}

TEST(Signing, AnswersBelongToTheirRequests) {
    // Each request finds the answers that have come by the time it is out: there is no wait.
    std::function<bool()> on_send = [] { return true; };
    RemoteKey key([&](auto const&) { return std::function(on_send)(); }, milliseconds(0));
    auto const sign = key.RsaFuns().sign;
    auto const answer = [&](std::string const& data) {
        RSARepData reply;
        reply.data = data;
        key.Answer(reply.Serial(kRSASign));
    };
    answer("of nobody");
    EXPECT_EQ(sign({}).data, "");
    on_send = [&] {
        answer("late");
        return true;
    };
    EXPECT_EQ(sign({}).data, "") << "that was owed to the one before";
    on_send = [&] {
        answer("late again");
        answer("mine");
        return true;
    };
    EXPECT_EQ(sign({}).data, "mine");
    std::string second;
    on_send = [&] {
        on_send = [&] {
            answer("first");
            answer("second");
            return true;
        };
        second = sign({}).data;
        return true;
    };
    EXPECT_EQ(sign({}).data + second, "second") << "the later one takes the place";
    on_send = [&] {
        key.LinkLost();
        key.Begin();  // of the next session, before the first has noticed
        return true;
    };
    EXPECT_EQ(sign({}).data, "");
    on_send = [] { return false; };
    EXPECT_EQ(sign({}).data, "");
    key.LinkLost();
    key.Begin();
    on_send = [&] {
        answer("of a new link");
        return true;
    };
    EXPECT_EQ(sign({}).data, "of a new link");
    key.Stop();
    EXPECT_EQ(sign({}).data, "") << "nothing is asked for a session that has stopped";
}

std::optional<std::string> answerOnCurve(EVP_PKEY* key, int curve, std::string const& request) {
    ECCReqArgs args;
    EXPECT_TRUE(args.Deserial(request) && args.curve == curve) << args.curve;
    ECCRepData reply;
    reply.data = test::SignWith(key, {kRSASign, NID_md5_sha1, 0, args.data});
    reply.dataLen = static_cast<int>(reply.data.size());
    return reply.Serial();
}

// With another curve than SM2, which the system's TLS library does not take.
TEST(Signing, PairsOfCertificates) {
    test::Pkey const key = test::MakeKey("EC");
    test::Cert const x509 = test::MakeCert({"EC"}, key.get());
    SigningLink link(place(), [&](auto const& request) {
        return answerOnCurve(key.get(), NID_X9_62_prime256v1, request);
    });
    CertInterface& cert = CertInterface::Instance();
    for (int const version : {TLS1_2_VERSION, TLS1_3_VERSION}) {
        g_enc_calls = 0;
        Context const service = makeContext(version, "ECDSA+SHA256");
        ASSERT_TRUE(cert.InitByX509(service.get(), x509.get(), x509.get(), link.key.EccFuns()));
        EXPECT_EQ(g_enc_calls, 2);
        EXPECT_EQ(shakeHands(service.get(), makeGateway(version).get()), "");
    }
    link.key.Stop();
    Context const service = makeContext(TLS1_3_VERSION, "ECDSA+SHA256");
    g_enc_calls = 0;
    ASSERT_TRUE(cert.InitByX509(service.get(), x509.get(), x509.get(), link.key.EccFuns()));
    EXPECT_NE(shakeHands(service.get(), makeGateway(TLS1_3_VERSION).get()).find("ecc sign: "),
              std::string::npos);
    EXPECT_FALSE(cert.InitByX509(service.get(), x509.get(), x509.get(), link.key.EccFuns()))
        << "the library refuses the second certificate";
}

TEST(Signing, Sm2SignaturesCrossAndOtherKeysStay) {
    test::Pkey const key = test::MakeKey("SM2");
    test::Cert const x509 = test::MakeCert({"SM2", EVP_sm3()}, key.get());
    SigningLink link(
        place(), [&](auto const& request) { return answerOnCurve(key.get(), NID_sm2, request); });
    LogCapture const log;
    CertInterface& cert = CertInterface::Instance();
    std::string const half = utils::Base64Encode(test::DerOf<X509>(&i2d_X509, x509.get()), false);
    Context const context = makeContext(TLS1_2_VERSION, "ECDSA+SHA256");
    EXPECT_FALSE(
        cert.InitByCertData(context.get(), half + "\r" + half, true, {}, link.key.EccFuns()));
    EXPECT_TRUE(log.Has("SSL_CTX_use_certificate failed:"));
    EXPECT_EQ(cert.ExportCertString(), half + "\r" + half);
    EXPECT_EQ(cert.GetECCModulusSize(), EVP_PKEY_get_size(key.get()));
    EXPECT_EQ(cert.GetRsaModulusSize(), 0);

    PkeyPtr const hooked = HookSm2(X509_get0_pubkey(x509.get()));
    std::string const digest(32, 'd');
    std::string const signature = test::SignWith(hooked.get(), {kRSASign, NID_md5_sha1, 0, digest});
    std::unique_ptr<EVP_PKEY_CTX, Own<&EVP_PKEY_CTX_free>> const check(
        EVP_PKEY_CTX_new(key.get(), nullptr));
    EXPECT_EQ(EVP_PKEY_verify_init(check.get()), 1);
    EXPECT_EQ(EVP_PKEY_verify(check.get(), reinterpret_cast<unsigned char const*>(signature.data()),
                              signature.size(),
                              reinterpret_cast<unsigned char const*>(digest.data()), 32),
              1);
    EXPECT_EQ(X509_verify(x509.get(), X509_get0_pubkey(x509.get())), 1);
}

TEST(CertUtil, ReadsOneCertificate) {
    CertUtil util;
    std::string text = "kept";
    EXPECT_FALSE(util.ParseCert("no certificate") || util.GetSubjectName(text));
    ASSERT_TRUE(util.ParseCert(Identity::Of(2048).Der()));
    EXPECT_TRUE(util.GetFingerPrint(text) && text.size() == 40U) << text;
    EXPECT_TRUE(util.GetSubjectName(text) && text == "CN=Anna,O=Test") << text;
    EXPECT_TRUE(util.GetIssuerName(text) && text == "CN=Anna,O=Test") << text;
}

}  // namespace
}  // namespace zorvanelink::components::cert
