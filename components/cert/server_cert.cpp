#include "components/cert/server_cert.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/pem.h>

#include <array>
#include <map>
#include <memory>

#include "components/cert/freeing.h"
#include "components/cert/pkcs12.h"
#include "components/logger/logger.h"

namespace zorvanelink::components::utils {
namespace {

using logger::Log;

using BioPtr = std::unique_ptr<BIO, Freeing<&BIO_free_all>>;
using X509Ptr = std::unique_ptr<X509, Freeing<&X509_free>>;

// Ends the label of each kind of private key in PEM.
constexpr std::string_view kPrivateKeyLabel = "PRIVATE KEY-----";

// An encrypted block is not asked a password for on the terminal.
int noPassword(char* /*buffer*/, int /*size*/, int /*writing*/, void* /*data*/) {
    return 0;
}

X509Ptr readPem(std::string const& bytes) {
    BioPtr const bio(BIO_new_mem_buf(bytes.data(), static_cast<int>(bytes.size())));
    if (!bio) {
        Log().error("Failed to read bio");
        return nullptr;
    }
    return X509Ptr(PEM_read_bio_X509(bio.get(), nullptr, &noPassword, nullptr));
}

X509Ptr readAny(std::string const& bytes) {
    auto const* der = reinterpret_cast<unsigned char const*>(bytes.data());
    X509Ptr x509(d2i_X509(nullptr, &der, static_cast<long>(bytes.size())));
    return x509 ? std::move(x509) : readPem(bytes);
}

std::string subjectOf(X509* x509) {
    std::map<std::string_view, int> const parts{
        {"C", NID_countryName},      {"ST", NID_stateOrProvinceName},    {"L", NID_localityName},
        {"O", NID_organizationName}, {"OU", NID_organizationalUnitName}, {"CN", NID_commonName}};
    std::string subject;
    for (auto const& [name, nid] : parts) {
        subject.append(name).append("=").append(GetX509NamebyNid(x509, nid)).append(",");
    }
    return subject;
}

std::string sha256Of(X509* x509) {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int size = 0;
    if (X509_digest(x509, EVP_sha256(), digest.data(), &size) != 1) {
        return {};
    }
    return fmt::format("{:02X}", fmt::join(digest.data(), digest.data() + size, ":"));
}

std::string pemOf(X509* x509) {
    BioPtr const bio(BIO_new(BIO_s_mem()));
    if (!bio || PEM_write_bio_X509(bio.get(), x509) != 1) {
        return {};
    }
    char* bytes = nullptr;
    long const size = BIO_get_mem_data(bio.get(), &bytes);
    return {bytes, static_cast<std::size_t>(size)};
}

std::string derOf(X509* x509) {
    unsigned char* bytes = nullptr;
    int const size = i2d_X509(x509, &bytes);
    std::string der;
    if (size > 0) {
        der.assign(reinterpret_cast<char const*>(bytes), static_cast<std::size_t>(size));
    }
    OPENSSL_free(bytes);
    return der;
}

}  // namespace

ServerCertResult ParseServerCert(std::string const& bytes, std::string const& path,
                                 ServerCert& cert) {
    if (bytes.empty() || bytes.size() > kMaxServerCertFile) {
        Log().error("{} cert file {}", bytes.empty() ? "Empty" : "Too large", path);
        return ServerCertResult::kBad;
    }
    if (bytes.find(kPrivateKeyLabel) != std::string::npos) {
        Log().error("Cert file {} holds a private key", path);
        return ServerCertResult::kPrivateKey;
    }
    ERR_clear_error();
    X509Ptr const x509 = readAny(bytes);
    ERR_clear_error();
    ServerCert read;
    if (!x509 || !ParseX509Cert(read.details, derOf(x509.get()))) {
        Log().error("Failed to read x509 cert");
        Log().error("Failed to read x509 from cert file {}", path);
        return ServerCertResult::kBad;
    }
    read.subject = subjectOf(x509.get());
    read.sha256 = sha256Of(x509.get());
    read.pem = pemOf(x509.get());
    cert = std::move(read);
    Log().info("Get subject {} from cert file {}", cert.subject, path);
    return ServerCertResult::kOk;
}

}  // namespace zorvanelink::components::utils
