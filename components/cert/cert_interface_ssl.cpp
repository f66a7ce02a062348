// Where a certificate meets the TLS library; apart from the rest, so that who never shakes hands
// does not load that.
#include <openssl/bio.h>
#include <openssl/err.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>

#include <climits>

#include "components/cert/cert_interface.h"
#include "components/cert/key_hooks.h"
#include "components/logger/logger.h"
#include "components/utils/base64.h"
#include "components/utils/text.h"

// Only libraries with GM TLS, which takes two certificates, have these.
extern "C" {
__attribute__((weak)) int SSL_CTX_use_enc_certificate(SSL_CTX* ctx, X509* x509);
__attribute__((weak)) int SSL_CTX_use_enc_PrivateKey(SSL_CTX* ctx, EVP_PKEY* key);
}

namespace zorvanelink::components::cert {
namespace {

using logger::Log;

constexpr char kGmSeparator = '\r';

// `failure` has one place, for the reason.
X509Ptr readX509(std::string const& der, fmt::format_string<std::string> failure) {
    ERR_clear_error();
    std::unique_ptr<BIO, utils::Freeing<&BIO_free_all>> const bio(
        der.size() <= INT_MAX ? BIO_new_mem_buf(der.data(), static_cast<int>(der.size()))
                              : nullptr);
    if (!bio) {
        Log().error("Init bio error by cert : {}", TakeOpenSslError());
        return nullptr;
    }
    X509Ptr x509(d2i_X509_bio(bio.get(), nullptr));
    if (!x509) {
        Log().error(failure, TakeOpenSslError());
    }
    return x509;
}

X509Ptr shared(X509* x509) {
    X509_up_ref(x509);
    return X509Ptr(x509);
}

}  // namespace

void CertInterface::clear() {
    rsa_funs_ = {};
    ecc_funs_ = {};
    is_rsa_ = false;
    sign_key_.reset();
    enc_key_.reset();
    sign_cert_.reset();
    enc_cert_.reset();
}

bool CertInterface::InitByCertData(SSL_CTX* ctx, std::string const& certData, bool isGm,
                                   CertRsaMethFuns rsa, CertECCMethFuns ecc) {
    if (!isGm) {
        return InitByCertContent(ctx, utils::Base64Decode(certData, false), std::move(rsa));
    }
    clear();
    auto const pair = utils::SplitStringByChar(certData, kGmSeparator);
    std::string const sign = utils::Base64Decode(pair[0], false);
    std::string const enc = pair.size() > 1 ? utils::Base64Decode(pair[1], false) : "";
    Log().info("Gm sign cert len:{}", sign.size());
    Log().info("Gm enc cert len:{}", enc.size());
    X509Ptr const sign_x509 = readX509(sign, "sm2 sign d2i x509 failed:{}");
    X509Ptr const enc_x509 = readX509(enc, "sm2 enc d2i x509 failed:{}");
    return sign_x509 && enc_x509 &&
           InitByX509(ctx, sign_x509.get(), enc_x509.get(), std::move(ecc));
}

bool CertInterface::InitByCertContent(SSL_CTX* ctx, std::string const& content,
                                      CertRsaMethFuns rsa) {
    clear();
    Log().info("TLS sign cert len : {}", content.size());
    X509Ptr const x509 = readX509(content, "d2i x509 failed:{}");
    return x509 && InitByX509(ctx, x509.get(), std::move(rsa));
}

bool CertInterface::InitByX509(SSL_CTX* ctx, X509* x509, CertRsaMethFuns rsa) {
    clear();
    ERR_clear_error();
    PkeyPtr key = HookRsa(X509_get0_pubkey(x509), this);
    if (!key) {
        return false;
    }
    rsa_funs_ = std::move(rsa);
    is_rsa_ = true;
    sign_key_ = std::move(key);
    sign_cert_ = shared(x509);
    return SetSSLCtx(ctx);
}

bool CertInterface::InitByX509(SSL_CTX* ctx, X509* signX509, X509* encX509, CertECCMethFuns ecc) {
    clear();
    ERR_clear_error();
    PkeyPtr sign_key = HookSm2(X509_get0_pubkey(signX509));
    PkeyPtr enc_key = HookSm2(X509_get0_pubkey(encX509));
    if (!sign_key || !enc_key) {
        return false;
    }
    ecc_funs_ = std::move(ecc);
    sign_key_ = std::move(sign_key);
    sign_cert_ = shared(signX509);
    enc_key_ = std::move(enc_key);
    enc_cert_ = shared(encX509);
    return SetSSLCtx(ctx);
}

bool CertInterface::SetSSLCtx(SSL_CTX* ctx) {
    Log().info("ssl ctx use sign cert");
    if (ctx == nullptr || SSL_CTX_use_certificate(ctx, sign_cert_.get()) != 1) {
        Log().error("SSL_CTX_use_certificate failed:{}", TakeOpenSslError());
        return false;
    }
    if (SSL_CTX_use_PrivateKey(ctx, sign_key_.get()) != 1) {
        Log().error("SSL_CTX_use_PrivateKey failed");
        return false;
    }
    return !enc_cert_ || setEncCert(ctx);
}

bool CertInterface::setEncCert(SSL_CTX* ctx) const {
    Log().info("ssl ctx use enc cert");
    if (SSL_CTX_use_enc_certificate == nullptr ||
        SSL_CTX_use_enc_certificate(ctx, enc_cert_.get()) != 1) {
        Log().error("SSL_CTX_use_enc_certificate failed\n");
        return false;
    }
    if (SSL_CTX_use_enc_PrivateKey == nullptr ||
        SSL_CTX_use_enc_PrivateKey(ctx, enc_key_.get()) != 1) {
        Log().error("SSL_CTX_use_enc_PrivateKey failed\n");
        return false;
    }
    return true;
}

}  // namespace zorvanelink::components::cert
