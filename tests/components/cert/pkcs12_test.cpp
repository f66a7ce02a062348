#include <gtest/gtest.h>
#include <openssl/err.h>
#include <openssl/provider.h>

#include <cstdlib>

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
    struct Case {
        Pkcs12Recipe recipe;
        bool isTls;
        bool isRsa;
        std::string commonName;
        std::string subject;
    } const cases[] = {
        {{}, true, true, "Anna", "CN=Anna,O=Test"},
        {{"EC", EVP_sha256()}, true, false, "Anna", "CN=Anna,O=Test"},
        {{"SM2", EVP_sm3()}, false, false, "Anna", "CN=Anna,O=Test"},
        {{"EC", EVP_sha256(), {{"O", "Test"}}}, true, false, "O=Test", "O=Test"},
        {{"EC", EVP_sha256(), {{"CN", std::string("An\0na", 5)}}},
         true,
         false,
         "An",
         "CN=An\\00na"},
        {{"EC", EVP_sha256(), {{"CN", "\xE5\xBC\xA0"}, {"O", "Test"}}},
         true,
         false,
         "\xE5\xBC\xA0",
         "CN=\\E5\\BC\\A0"},
    };
    for (Case const& c : cases) {
        for (bool const systemEncoded : {false, true}) {
            CertInfo cert = certOf(test::MakePkcs12(c.recipe));
            ASSERT_EQ(ParsePkcs12Cert(cert, systemEncoded), 0) << c.subject;
            EXPECT_EQ(cert.isTls, c.isTls);
            EXPECT_EQ(cert.isRsa, c.isRsa);
            EXPECT_EQ(cert.commonName, c.commonName);
            EXPECT_EQ(cert.subject, c.subject);
            EXPECT_EQ(cert.issuer, c.subject);
            EXPECT_EQ(cert.validFrom + cert.validTo, "2026-01-02 03:04:052036-01-02 03:04:05");
            EXPECT_EQ(cert.fingerprint.size(), 40U);
            EXPECT_EQ(cert.fingerprint.find_first_not_of("0123456789ABCDEF"), std::string::npos);
        }
    }
}

TEST(Pkcs12, Failures) {
    Pkcs12Recipe keyOnly;
    keyOnly.withCertificate = false;
    for (bool const systemEncoded : {false, true}) {
        CertInfo cert = certOf(test::MakePkcs12({}), "shut");
        cert.commonName = "kept";
        EXPECT_EQ(ParsePkcs12Cert(cert, systemEncoded), 3);
        EXPECT_EQ(cert.commonName, "kept");
        for (std::string const& bytes :
             {std::string("no PKCS#12 at all"), std::string(), test::MakePkcs12(keyOnly)}) {
            cert = certOf(bytes);
            EXPECT_EQ(ParsePkcs12Cert(cert, systemEncoded), 2);
        }
        cert.filePath = "/none";
        EXPECT_EQ(ParsePkcs12Cert(cert, systemEncoded), systemEncoded ? 2 : 1);
    }
    EXPECT_EQ(ERR_peek_error(), 0U) << "nothing is left for the next user of the queue";
}

// The keys of the certificate, of the private key and of the checksum, each in its turn.
TEST(Pkcs12, CostlyContainersAreNotOpened) {
    for (int const cipher : {0, int{NID_pbe_WithSHA1And3_Key_TripleDES_CBC}}) {
        Pkcs12Recipe recipe{"EC"};
        recipe.certificateCipher = cipher;
        recipe.iterations = 0x10000;
        std::string const bytes = test::MakePkcs12(recipe);
        CertInfo cert = certOf(bytes);
        EXPECT_EQ(ParsePkcs12Cert(cert, false), 0);
        int found = 0;
        for (std::size_t at = 0;
             (at = bytes.find(std::string("\x02\x03\x01\x00\x00", 5), at)) != std::string::npos;
             ++at, ++found) {
            // One above the limit.
            cert = certOf(std::string(bytes).replace(at + 2, 3, "\x1E\x84\x81"));
            EXPECT_EQ(ParsePkcs12Cert(cert, false), kPkcs12TooCostly) << found;
            // None, or a negative number.
            cert = certOf(std::string(bytes).replace(at + 2, 3, "\x9E\x84\x81"));
            EXPECT_EQ(ParsePkcs12Cert(cert, true), kPkcs12TooCostly) << found;
        }
        EXPECT_EQ(found, 3);
    }
}

// Put together by hand: nobody's library makes one.
TEST(Pkcs12, ContainersInsideContainersAreCounted) {
    auto const tlv = [](char tag, std::string const& content) {
        return std::string{tag, '\x81', static_cast<char>(content.size())} + content;
    };
    auto const id = [&](std::string const& number) {
        return tlv('\x06', "\x2A\x86\x48\x86\xF7\x0D\x01" + number);
    };
    auto const object = [&](std::string const& number, std::string const& content) {
        return tlv('\x30', id(number) + tlv('\xA0', content));
    };
    auto const data = [&](std::string const& content) {
        return object("\x07\x01", tlv('\x04', tlv('\x30', content)));
    };
    std::string const cost = tlv('\x04', "salt") + tlv('\x02', "\x1E\x84\x81");
    std::string const cipher = tlv('\x30', id("\x0C\x01\x03") + tlv('\x30', cost));
    std::string const key = object("\x0C\x0A\x01\x02", tlv('\x30', cipher + tlv('\x04', "key")));
    std::string const nested = object("\x0C\x0A\x01\x06", tlv('\x30', key));
    CertInfo cert = certOf(tlv('\x30', tlv('\x02', "\x03") + data(data(nested))));
    EXPECT_EQ(ParsePkcs12Cert(cert, false), kPkcs12TooCostly);
}

TEST(Pkcs12, EmptyPinAndOldCiphers) {
    Pkcs12Recipe recipe;
    recipe.password = "";
    CertInfo cert = certOf(test::MakePkcs12(recipe), "");
    EXPECT_EQ(ParsePkcs12Cert(cert, false), 0);

    // Made in a library of its own: reading has to load the provider by itself.
    std::unique_ptr<OSSL_LIB_CTX, decltype(&OSSL_LIB_CTX_free)> const library(OSSL_LIB_CTX_new(),
                                                                              &OSSL_LIB_CTX_free);
    using Provider = std::unique_ptr<OSSL_PROVIDER, decltype(&OSSL_PROVIDER_unload)>;
    Provider const usual(OSSL_PROVIDER_load(library.get(), "default"), &OSSL_PROVIDER_unload);
    Provider const legacy(OSSL_PROVIDER_load(library.get(), "legacy"), &OSSL_PROVIDER_unload);
    ASSERT_NE(legacy, nullptr) << "Debian's OpenSSL ships it";
    recipe = {};
    recipe.library = library.get();
    recipe.certificateCipher = NID_pbe_WithSHA1And40BitRC2_CBC;
    cert = certOf(test::MakePkcs12(recipe));
    EXPECT_EQ(ParsePkcs12Cert(cert, false), 0);
}

}  // namespace
}  // namespace zorvanelink::components::utils
