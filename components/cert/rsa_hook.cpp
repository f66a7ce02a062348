#define OPENSSL_SUPPRESS_DEPRECATED  // RSA_METHOD has no successor that calls back
#include <openssl/bn.h>
#include <openssl/err.h>
#include <openssl/rsa.h>

#include <array>

#include "components/cert/cert_interface.h"
#include "components/cert/key_hooks.h"
#include "components/cert/sign_job.h"
#include "components/logger/logger.h"

namespace zorvanelink::components::cert {
namespace {

using logger::Log;

constexpr int kFailed = -1;

int interfaceIndex() {
    static int const index = RSA_get_ex_new_index(0, nullptr, nullptr, nullptr, nullptr);
    return index;
}

CertInterface* interfaceOf(RSA const* rsa) {
    auto* const cert = static_cast<CertInterface*>(RSA_get_ex_data(rsa, interfaceIndex()));
    if (cert == nullptr) {
        Log().error("cert api get nullptr args:{}", TakeOpenSslError());
    }
    return cert;
}

std::string bytesOf(unsigned char const* bytes, std::size_t size) {
    return {reinterpret_cast<char const*>(bytes), size};
}

// Says it in the log, and to who asked OpenSSL.
void fail(char const* label, char const* reason) {
    Log().error("Failed to {} meth:{}", label, reason);
    Log().error("Failed to {}:{}", label, TakeOpenSslError());
    ERR_raise_data(ERR_LIB_RSA, ERR_R_OPERATION_FAIL, "%s: %s", label, reason);
}

// Copies what an answer has; its length, or 0 when it is none. `size` is the key's, which a
// signature has to have and nothing exceeds.
int checkedCopy(RSARepData const& reply, unsigned char* to, int size, bool signature,
                char const* label) {
    auto const length = reply.data.size();
    char const* reason = nullptr;
    if (reply.dataLen <= 0 || length == 0) {
        reason = "nothing was done";
    } else if (length > kMaxSignBytes || length > static_cast<std::size_t>(size)) {
        reason = "the answer is too long";
    } else if (length != static_cast<std::size_t>(reply.dataLen)) {
        reason = "the answer's length disagrees";
    } else if (signature && length != static_cast<std::size_t>(size)) {
        reason = "the answer has not the key's length";
    }
    if (reason != nullptr) {
        fail(label, reason);
        return 0;
    }
    std::copy(reply.data.begin(), reply.data.end(), to);
    return reply.dataLen;
}

using Crypt = RSARepData (CertInterface::*)(RSAMethReqArgs const&);

int crypt(Crypt operation, char const* label, bool signature, int length, unsigned char const* from,
          unsigned char* to, RSA* rsa, int padding) {
    CertInterface* const cert = interfaceOf(rsa);
    if (cert == nullptr || length < 0) {
        return kFailed;
    }
    RSAMethReqArgs args;
    args.dataLen = length;
    args.data = bytesOf(from, static_cast<std::size_t>(length));
    args.padding = padding;
    Log().debug("cert api {} sat len {}, padding {}, hash {}", label, args.satLen, args.padding,
                args.hash);
    int const done = checkedCopy((cert->*operation)(args), to, RSA_size(rsa), signature, label);
    return done > 0 ? done : kFailed;
}

// One of the four, in the form that the method takes.
template <Crypt kOperation, char const* kLabel, bool kSignature = false>
int crypt(int length, unsigned char const* from, unsigned char* to, RSA* rsa, int padding) {
    return crypt(kOperation, kLabel, kSignature, length, from, to, rsa, padding);
}

constexpr char kPubEnc[] = "rsa pub encode";
constexpr char kPubDec[] = "rsa pub decode";
constexpr char kPrivEnc[] = "rsa priv encode";
constexpr char kPrivDec[] = "rsa priv decode";

int sign(int hash, unsigned char const* data, unsigned int length, unsigned char* to,
         unsigned int* signature_length, RSA const* rsa) {
    CertInterface* const cert = interfaceOf(rsa);
    if (cert == nullptr) {
        return 0;
    }
    Log().debug("cert api rsa sign hash {}", hash);
    RSARepData const reply =
        cert->RSA_meth_sign({hash, bytesOf(data, length), static_cast<int>(length)});
    int const done = checkedCopy(reply, to, RSA_size(rsa), true, "rsa sign");
    *signature_length = static_cast<unsigned int>(done);
    return done > 0 ? 1 : 0;
}

int verify(int hash, unsigned char const* data, unsigned int length, unsigned char const* signature,
           unsigned int signature_length, RSA const* rsa) {
    CertInterface* const cert = interfaceOf(rsa);
    if (cert == nullptr) {
        return 0;
    }
    RSARepData const reply = cert->RSA_meth_verify(
        {hash, bytesOf(data, length), static_cast<int>(length),
         bytesOf(signature, signature_length), static_cast<int>(signature_length)});
    std::array<unsigned char, kMaxSignBytes> recovered{};
    int const size = std::min<int>(RSA_size(rsa), kMaxSignBytes);
    bool const good =
        checkedCopy(reply, recovered.data(), size, false, "rsa verify") > 0 && reply.ret == 1;
    return good ? 1 : 0;
}

int init(RSA* rsa) {
    CertInterface* const cert = interfaceOf(rsa);
    return cert != nullptr ? cert->RSA_meth_init() : kFailed;
}

int finish(RSA* rsa) {
    CertInterface* const cert = interfaceOf(rsa);
    return cert != nullptr ? cert->RSA_meth_finish() : kFailed;
}

RSA_METHOD* newMethod() {
    RSA_METHOD* const method = RSA_meth_new("Cryptographic RSA method", 0);
    if (method == nullptr) {
        Log().error("init by x509 get null rsa method:{}", TakeOpenSslError());
        return nullptr;
    }
    RSA_meth_set_pub_enc(method, &crypt<&CertInterface::RSA_meth_pub_enc, kPubEnc>);
    RSA_meth_set_pub_dec(method, &crypt<&CertInterface::RSA_meth_pub_dec, kPubDec>);
    RSA_meth_set_priv_enc(method, &crypt<&CertInterface::RSA_meth_priv_enc, kPrivEnc, true>);
    RSA_meth_set_priv_dec(method, &crypt<&CertInterface::RSA_meth_priv_dec, kPrivDec>);
    RSA_meth_set_bn_mod_exp(method, &BN_mod_exp_mont);
    RSA_meth_set_init(method, &init);
    RSA_meth_set_finish(method, &finish);
    RSA_meth_set_sign(method, &sign);
    RSA_meth_set_verify(method, &verify);
    return method;
}

}  // namespace

std::string TakeOpenSslError() {
    std::array<char, 256> text{};
    ERR_error_string_n(ERR_get_error(), text.data(), text.size());
    return text.data();
}

PkeyPtr HookRsa(EVP_PKEY* key, CertInterface* cert) {
    static RSA_METHOD* const method = newMethod();  // keys of any age may point to it
    std::unique_ptr<RSA, utils::Freeing<&RSA_free>> const rsa(
        key != nullptr ? EVP_PKEY_get1_RSA(key) : nullptr);
    PkeyPtr hooked(EVP_PKEY_new());
    if (!rsa || !hooked) {
        Log().error("Get null pubkey in cert interface:{}", TakeOpenSslError());
        return nullptr;
    }
    // The method's first call already asks for the interface.
    if (method == nullptr || RSA_set_ex_data(rsa.get(), interfaceIndex(), cert) != 1 ||
        RSA_set_method(rsa.get(), method) != 1) {
        return nullptr;
    }
    RSA_set_flags(rsa.get(), RSA_meth_get_flags(method));
    if (EVP_PKEY_set1_RSA(hooked.get(), rsa.get()) != 1) {
        return nullptr;
    }
    return hooked;
}

}  // namespace zorvanelink::components::cert
