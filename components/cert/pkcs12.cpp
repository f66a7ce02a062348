#include "components/cert/pkcs12.h"

#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pkcs12.h>
#include <openssl/provider.h>

#include <algorithm>
#include <array>
#include <climits>
#include <ctime>
#include <memory>

#include "components/cert/freeing.h"
#include "components/cert/pkcs12_cost.h"
#include "components/logger/logger.h"
#include "components/utils/file.h"
#include "components/utils/secret_string.h"
#include "components/utils/sensitive_value.h"
#include "components/utils/text.h"

namespace zorvanelink::components::utils {
namespace {

using logger::Log;

using BioPtr = std::unique_ptr<BIO, Freeing<&BIO_free_all>>;
using Pkcs12Ptr = std::unique_ptr<PKCS12, Freeing<&PKCS12_free>>;
using X509Ptr = std::unique_ptr<X509, Freeing<&X509_free>>;
using PkeyPtr = std::unique_ptr<EVP_PKEY, Freeing<&EVP_PKEY_free>>;

constexpr std::size_t kMaxNameBytes = 1023;

// Older files are encrypted with RC2, which only the legacy provider knows. Without it they stay
// unreadable, and all others are read.
void loadLegacyProvider() {
    static std::unique_ptr<OSSL_PROVIDER, Freeing<&OSSL_PROVIDER_unload>> const provider(
        OSSL_PROVIDER_try_load(nullptr, "legacy", 1));
}

Pkcs12Ptr decodePkcs12(std::string const& bytes) {
    if (bytes.size() > INT_MAX) {
        return nullptr;
    }
    BioPtr const bio(BIO_new_mem_buf(bytes.data(), static_cast<int>(bytes.size())));
    if (!bio) {
        Log().error("Failed to alloc memory for bio when reading cert from pkcs12!");
        return nullptr;
    }
    return Pkcs12Ptr(d2i_PKCS12_bio(bio.get(), nullptr));
}

int readFile(CertInfo const& cert, bool systemEncoded, std::string& bytes) {
    if (systemEncoded) {
        if (!SystemDecryptFile(cert.filePath, bytes)) {
            Log().error("Failed to system decrypt file [{}]!", cert.filePath);
            return kPkcs12Bad;
        }
    } else if (!ReadContentFromFile(cert.filePath, bytes)) {
        Log().error("Failed to open cert file {} when reading cert", cert.filePath);
        return kPkcs12NotOpened;
    }
    return kPkcs12Ok;
}

int openPkcs12(PKCS12* pkcs12, std::string const& sensitivePin, X509Ptr& x509) {
    SecretString const pin(DecodeSensitiveValue(sensitivePin));
    if (Pkcs12TooCostly(pkcs12, pin.Get())) {
        Log().error("The pkcs12 asks for more than {} iterations", kMaxPkcs12Iterations);
        return kPkcs12TooCostly;
    }
    ERR_clear_error();
    EVP_PKEY* key = nullptr;
    X509* certificate = nullptr;
    int const parsed = PKCS12_parse(pkcs12, pin.Get().c_str(), &key, &certificate, nullptr);
    PkeyPtr const discarded(key);
    x509.reset(certificate);
    if (parsed != 1) {
        unsigned long const code = ERR_get_error();
        std::array<char, 256> text{};
        ERR_error_string_n(code, text.data(), text.size());
        Log().error("Parse Pkcs12 Failed with error [{}] - {}!", code, text.data());
        bool const wrongPin = ERR_GET_LIB(code) == ERR_LIB_PKCS12 &&
                              ERR_GET_REASON(code) == PKCS12_R_MAC_VERIFY_FAILURE;
        return wrongPin ? kPkcs12WrongPin : kPkcs12Bad;
    }
    Log().debug("Parse Pkcs12 ok!");
    if (!x509) {
        Log().error("Failed to get cert from pkcs12!");
        return kPkcs12Bad;
    }
    return kPkcs12Ok;
}

std::string printName(X509_NAME const* name) {
    BioPtr const bio(BIO_new(BIO_s_mem()));
    if (name == nullptr || !bio || X509_NAME_print_ex(bio.get(), name, 0, XN_FLAG_RFC2253) < 0) {
        return {};
    }
    char* text = nullptr;
    long const size = BIO_get_mem_data(bio.get(), &text);
    std::string printed(text, size > 0 ? static_cast<std::size_t>(size) : 0);
    TrimNoUseSubjectOrIssuerField(printed);
    return std::string(CutUtf8(printed, kMaxNameBytes));
}

std::string fingerprintOf(X509* x509, CertInfo const& cert) {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int size = 0;
    constexpr unsigned int kSha1Size = 20;
    if (X509_digest(x509, EVP_sha1(), digest.data(), &size) == 1 && size == kSha1Size) {
        return ConvertHexToStr(digest.data(), size);
    }
    Log().warning(
        "Failed to calculate fingerprint from cert[{}] issuer[{}] subject[{}] valid from[{}] to "
        "[{}] from pkcs12",
        cert.commonName, cert.issuer, cert.subject, cert.validFrom, cert.validTo);
    return GetStrMd5_32(cert.issuer + cert.subject + cert.validFrom + cert.validTo);
}

void describe(X509* x509, CertInfo& cert) {
    cert.isTls = !IsGMX509(x509);
    cert.isRsa = IsRSA(x509);
    cert.issuer = printName(X509_get_issuer_name(x509));
    cert.subject = printName(X509_get_subject_name(x509));
    cert.validFrom = ASN1_TIME_to_string(X509_get0_notBefore(x509));
    cert.validTo = ASN1_TIME_to_string(X509_get0_notAfter(x509));
    cert.commonName = GetX509NamebyNid(x509, NID_commonName);
    if (cert.commonName.empty()) {
        cert.commonName = cert.subject;
    }
    cert.fingerprint = fingerprintOf(x509, cert);
    Log().debug("Get cert[{}] issuer[{}] subject[{}] valid from[{}] to [{}] from pkcs12!",
                cert.commonName, cert.issuer, cert.subject, cert.validFrom, cert.validTo);
}

char const* orUnknown(char const* name) {
    return name != nullptr ? name : "unknown";
}

}  // namespace

int ParsePkcs12Cert(CertInfo& cert, bool systemEncoded) {
    Log().debug("Start to parse Pkcs12!");
    std::string bytes;
    if (int const result = readFile(cert, systemEncoded, bytes); result != kPkcs12Ok) {
        return result;
    }
    loadLegacyProvider();
    ERR_clear_error();
    Pkcs12Ptr const pkcs12 = decodePkcs12(bytes);
    if (!pkcs12) {
        Log().error("Failed to get pkcs12 from cert file {}!", cert.filePath);
        ERR_clear_error();
        return kPkcs12Bad;
    }
    X509Ptr x509;
    int const result = openPkcs12(pkcs12.get(), cert.pin, x509);
    if (result == kPkcs12Ok) {
        describe(x509.get(), cert);
    }
    ERR_clear_error();
    return result;
}

bool ParseX509Cert(CertInfo& cert, std::string const& der) {
    auto const* bytes = reinterpret_cast<unsigned char const*>(der.data());
    X509Ptr const x509(d2i_X509(nullptr, &bytes, static_cast<long>(der.size())));
    ERR_clear_error();
    if (!x509) {
        Log().error("Failed to read a certificate of {} bytes", der.size());
        return false;
    }
    describe(x509.get(), cert);
    cert.certName = cert.commonName;
    cert.certData = der;
    return true;
}

bool IsGMX509(X509* x509) {
    int const nid = X509_get_signature_nid(x509);
    char const* const name = orUnknown(OBJ_nid2ln(nid));
    Log().debug("Get cert file {}-{} when reading cert", nid, name);
    return StrToLower(name).find("sm3") != std::string::npos;
}

bool IsRSA(X509* x509) {
    EVP_PKEY* const key = X509_get0_pubkey(x509);
    int const id = key != nullptr ? EVP_PKEY_id(key) : EVP_PKEY_NONE;
    Log().debug("X509 pub key type is {}-{}", id, orUnknown(id > 0 ? OBJ_nid2ln(id) : nullptr));
    return id == EVP_PKEY_RSA;
}

std::string GetX509NamebyNid(X509* x509, int nid) {
    X509_NAME const* const subject = X509_get_subject_name(x509);
    int const index = X509_NAME_get_index_by_NID(subject, nid, -1);
    X509_NAME_ENTRY const* const entry = index >= 0 ? X509_NAME_get_entry(subject, index) : nullptr;
    unsigned char* bytes = nullptr;
    int const size =
        entry != nullptr ? ASN1_STRING_to_UTF8(&bytes, X509_NAME_ENTRY_get_data(entry)) : -1;
    if (size < 0) {
        Log().error("Failed to get X509 Name by Nid ");
        return {};
    }
    std::string text(reinterpret_cast<char const*>(bytes), static_cast<std::size_t>(size));
    OPENSSL_free(bytes);
    // A name that hides its end behind a NUL shows what every C reader would see.
    text.resize(std::min(text.find('\0'), text.size()));
    text = std::string(CutUtf8(text, kMaxNameBytes));
    Log().debug("Success to get X509 Name {} by Nid {} ", text, nid);
    return text;
}

std::string ASN1_TIME_to_string(ASN1_TIME const* time) {
    std::tm parts{};
    if (time == nullptr || ASN1_TIME_to_tm(time, &parts) != 1) {
        return {};
    }
    return fmt::format("{}-{:02}-{:02} {:02}:{:02}:{:02}", parts.tm_year + 1900, parts.tm_mon + 1,
                       parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
}

void TrimNoUseSubjectOrIssuerField(std::string& text) {
    std::size_t const commonName = text.find("CN=");
    if (commonName != std::string::npos) {
        text.erase(0, commonName);
    }
}

}  // namespace zorvanelink::components::utils
