#include <gtest/gtest.h>
#include <openssl/err.h>

#include "components/cert/pkcs12.h"
#include "components/utils/sensitive_value.h"
#include "tests/support/test_environment.h"
#include "tools/support/files.h"
#include "tools/support/pkcs12_maker.h"

namespace zorvanelink::components::utils {
namespace {

using test::Pkcs12Recipe;

CertInfo certOf(std::string const& bytes, std::string const& pin = "open") {
    CertInfo cert;
    cert.filePath = test::WriteFile(test::TestEnvironment::Home() / "cert.p12", bytes);
    cert.pin = EncodeSensitiveValue(pin);
    return cert;
}

TEST(Pkcs12, DescribesTheCertificate) {
    for (bool const systemEncoded : {false, true}) {
        CertInfo cert = certOf(test::MakePkcs12({}));
        ASSERT_EQ(ParsePkcs12Cert(cert, systemEncoded), 0);
        EXPECT_EQ(cert.commonName, "Anna");
        EXPECT_EQ(cert.subject, "CN=Anna,O=Test");
        EXPECT_EQ(cert.issuer, cert.subject);
        EXPECT_EQ(cert.validFrom, "2026-01-02 03:04:05");
        EXPECT_EQ(cert.validTo, "2036-01-02 03:04:05");
        EXPECT_EQ(cert.fingerprint.size(), 40U);
        EXPECT_EQ(cert.fingerprint.find_first_not_of("0123456789ABCDEF"), std::string::npos);
        EXPECT_TRUE(cert.isTls);
        EXPECT_TRUE(cert.isRsa);
    }
}

TEST(Pkcs12, KindsOfKeysAndNames) {
    struct Case {
        Pkcs12Recipe recipe;
        bool isTls;
        bool isRsa;
        std::string commonName;
        std::string subject;
    } const cases[] = {
        {{"EC", EVP_sha256()}, true, false, "Anna", "CN=Anna,O=Test"},
        {{"SM2", EVP_sm3()}, false, false, "Anna", "CN=Anna,O=Test"},
        {{"EC", EVP_sha256(), {{"O", "Test"}}}, true, false, "O=Test", "O=Test"},
        {{"EC", EVP_sha256(), {{"CN", "\xE5\xBC\xA0"}, {"O", "Test"}}},
         true,
         false,
         "\xE5\xBC\xA0",
         "CN=\\E5\\BC\\A0"},
    };
    for (Case const& c : cases) {
        CertInfo cert = certOf(test::MakePkcs12(c.recipe));
        ASSERT_EQ(ParsePkcs12Cert(cert, false), 0) << c.subject;
        EXPECT_EQ(cert.isTls, c.isTls);
        EXPECT_EQ(cert.isRsa, c.isRsa);
        EXPECT_EQ(cert.commonName, c.commonName);
        EXPECT_EQ(cert.subject, c.subject);
    }
}

TEST(Pkcs12, Failures) {
    for (bool const systemEncoded : {false, true}) {
        CertInfo cert = certOf(test::MakePkcs12({}), "shut");
        cert.commonName = "kept";
        EXPECT_EQ(ParsePkcs12Cert(cert, systemEncoded), 3);
        EXPECT_EQ(cert.commonName, "kept");

        cert = certOf("no PKCS#12 at all");
        EXPECT_EQ(ParsePkcs12Cert(cert, systemEncoded), 2);
        cert = certOf("");
        EXPECT_EQ(ParsePkcs12Cert(cert, systemEncoded), 2);
        Pkcs12Recipe keyOnly;
        keyOnly.withCertificate = false;
        cert = certOf(test::MakePkcs12(keyOnly));
        EXPECT_EQ(ParsePkcs12Cert(cert, systemEncoded), 2);

        cert.filePath = "/none";
        EXPECT_EQ(ParsePkcs12Cert(cert, systemEncoded), systemEncoded ? 2 : 1);
    }
    EXPECT_EQ(ERR_peek_error(), 0U) << "nothing is left for the next user of the queue";
}

TEST(Pkcs12, EmptyPinAndOldCiphers) {
    Pkcs12Recipe recipe;
    recipe.password = "";
    CertInfo cert = certOf(test::MakePkcs12(recipe), "");
    EXPECT_EQ(ParsePkcs12Cert(cert, false), 0);

    // Reading any file loads the provider that writing RC2 needs as well.
    recipe = {};
    recipe.certificateCipher = NID_pbe_WithSHA1And40BitRC2_CBC;
    std::string const old = test::MakePkcs12(recipe);
    ASSERT_FALSE(old.empty()) << "the legacy provider of OpenSSL is not loaded";
    cert = certOf(old);
    EXPECT_EQ(ParsePkcs12Cert(cert, false), 0);
}

}  // namespace
}  // namespace zorvanelink::components::utils
