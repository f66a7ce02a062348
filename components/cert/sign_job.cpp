#include "components/cert/sign_job.h"

#include <openssl/err.h>
#include <openssl/x509.h>

#include <memory>

#include "components/cert/freeing.h"

namespace zorvanelink::components::cert {
namespace {

constexpr int kDone = 1;
constexpr int kNothingDone = 6;

template <class Args>
std::optional<SignJob> jobOf(std::string_view request, RSAReqType type) {
    Args args;
    if (!args.Deserial(request) || args.dataLen <= 0) {
        return std::nullopt;
    }
    SignJob job;
    job.type = type;
    job.hash = args.hash;
    if constexpr (requires { args.padding; }) {
        job.padding = args.padding;
    }
    bool const signs = type == kRSAPrivEnc || type == kRSASign;
    if (signs && args.data.size() == static_cast<std::size_t>(args.dataLen) &&
        args.data.size() <= kMaxSignBytes) {
        job.data = std::move(args.data);
    }
    return job;
}

}  // namespace

std::optional<SignJob> ReadSignJob(std::string_view request) {
    RSAReqType const type = GetRSAType(request);
    switch (type) {
        case kRSAUnknown:
            return std::nullopt;
        case kRSASign:
            return jobOf<RSASignReqArgs>(request, type);
        case kRSAVerify:
            return jobOf<RSAVerfyReqArgs>(request, type);
        default:
            return jobOf<RSAMethReqArgs>(request, type);
    }
}

std::string BytesToPad(SignJob const& job) {
    // Both digests of the oldest TLS stand side by side, without a frame.
    if (job.type != kRSASign || job.hash == NID_md5_sha1) {
        return job.data;
    }
    ASN1_OBJECT* const digest = OBJ_nid2obj(job.hash);
    std::unique_ptr<X509_SIG, utils::Freeing<&X509_SIG_free>> const info(X509_SIG_new());
    X509_ALGOR* algorithm = nullptr;
    ASN1_OCTET_STRING* octets = nullptr;
    if (info) {
        X509_SIG_getm(info.get(), &algorithm, &octets);
    }
    unsigned char* der = nullptr;
    bool const made =
        info && digest != nullptr && OBJ_length(digest) > 0 &&
        X509_ALGOR_set0(algorithm, digest, V_ASN1_NULL, nullptr) == 1 &&
        ASN1_OCTET_STRING_set(octets, reinterpret_cast<unsigned char const*>(job.data.data()),
                              static_cast<int>(job.data.size())) == 1;
    int const size = made ? i2d_X509_SIG(info.get(), &der) : -1;
    ERR_clear_error();
    std::string bytes(reinterpret_cast<char*>(der), size > 0 ? static_cast<std::size_t>(size) : 0);
    OPENSSL_free(der);
    return bytes;
}

std::string SignAnswer(SignJob const& job, std::string const& signature) {
    if (signature.empty()) {
        return NothingSigned();
    }
    RSARepData reply;
    reply.ret = kDone;
    reply.data = signature;
    reply.dataLen = static_cast<int>(signature.size());
    return reply.Serial(job.type);
}

std::string NothingSigned() {
    RSARepData reply;
    reply.ret = kNothingDone;
    return reply.Serial(kRSAPrivEnc);
}

}  // namespace zorvanelink::components::cert
