// Makes certificates and PKCS#12 files at run time, so that no key lies in the repository.
#pragma once

#include <openssl/evp.h>
#include <openssl/obj_mac.h>
#include <openssl/pkcs12.h>
#include <openssl/x509.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zorvanelink::test {

struct Pkcs12Recipe {
    char const* keyType = "RSA";  // "RSA", "EC" or "SM2"
    EVP_MD const* digest = EVP_sha256();
    // Parts of the subject, first to last, such as {"CN", "Anna"}.
    std::vector<std::pair<std::string, std::string>> subject{{"O", "Test"}, {"CN", "Anna"}};
    std::string password = "open";
    bool withCertificate = true;
    int certificateCipher = 0;  // NID, 0 the default
    int iterations = 0;         // of every key, 0 the default
    OSSL_LIB_CTX* library = nullptr;
};

using Pkey = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Cert = std::unique_ptr<X509, decltype(&X509_free)>;

inline Pkey MakeKey(std::string const& type) {
    return Pkey(type == "RSA"  ? EVP_PKEY_Q_keygen(nullptr, nullptr, "RSA", std::size_t{2048})
                : type == "EC" ? EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256")
                               : EVP_PKEY_Q_keygen(nullptr, nullptr, "SM2"),
                &EVP_PKEY_free);
}

inline Cert MakeCert(Pkcs12Recipe const& recipe, EVP_PKEY* key) {
    Cert x509(X509_new(), &X509_free);
    X509_set_version(x509.get(), X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(x509.get()), 1);
    ASN1_TIME_set_string_X509(X509_getm_notBefore(x509.get()), "20260102030405Z");
    ASN1_TIME_set_string_X509(X509_getm_notAfter(x509.get()), "20360102030405Z");
    X509_NAME* const name = X509_get_subject_name(x509.get());
    for (auto const& [field, value] : recipe.subject) {
        X509_NAME_add_entry_by_txt(name, field.c_str(), MBSTRING_UTF8,
                                   reinterpret_cast<unsigned char const*>(value.data()),
                                   static_cast<int>(value.size()), -1, 0);
    }
    X509_set_issuer_name(x509.get(), name);
    X509_set_pubkey(x509.get(), key);
    X509_sign(x509.get(), key, recipe.digest);
    return x509;
}

// What one of OpenSSL's i2d functions makes of the object.
template <class Object>
std::string DerOf(int (*encode)(Object const*, unsigned char**), Object const* object) {
    unsigned char* der = nullptr;
    int const size = object != nullptr ? encode(object, &der) : -1;
    std::string bytes(reinterpret_cast<char*>(der), size > 0 ? static_cast<std::size_t>(size) : 0);
    OPENSSL_free(der);
    return bytes;
}

inline std::string MakePkcs12(Pkcs12Recipe const& recipe) {
    Pkey const key = MakeKey(recipe.keyType);
    Cert const x509 = MakeCert(recipe, key.get());
    std::unique_ptr<PKCS12, decltype(&PKCS12_free)> const pkcs12(
        PKCS12_create_ex(recipe.password.c_str(), "test", key.get(),
                         recipe.withCertificate ? x509.get() : nullptr, nullptr, 0,
                         recipe.certificateCipher, recipe.iterations, recipe.iterations, 0,
                         recipe.library, nullptr),
        &PKCS12_free);
    return DerOf<PKCS12>(&i2d_PKCS12, pkcs12.get());
}

}  // namespace zorvanelink::test
