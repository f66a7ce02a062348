#include "components/cert/cert_interface.h"

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <openssl/evp.h>
#include <openssl/rsa.h>
#include <openssl/x509.h>

#include "components/utils/base64.h"

namespace zorvanelink::components::cert {
namespace {

template <class Answer, class Args>
Answer callIf(bool key, std::function<Answer(Args const&)> const& call, Args const& args) {
    return key && call ? call(args) : Answer{};
}

int callIf(bool key, std::function<int()> const& call) {
    return key && call ? call() : -1;
}

std::string exported(X509* x509) {
    unsigned char* der = nullptr;
    int const size = i2d_X509(x509, &der);
    std::string text;
    if (size > 0) {
        text = utils::Base64Encode(reinterpret_cast<char const*>(der),
                                   static_cast<std::size_t>(size), false);
    }
    OPENSSL_free(der);
    return text;
}

}  // namespace

std::atomic<CertProvider*> CertInterface::handler_{nullptr};

CertInterface& CertInterface::Instance() {
    static CertInterface& instance = *new CertInterface;
    return instance;
}

RSARepData CertInterface::RSA_meth_pub_enc(RSAMethReqArgs const& args) {
    return callIf(is_rsa_, rsa_funs_.pub_enc, args);
}
RSARepData CertInterface::RSA_meth_pub_dec(RSAMethReqArgs const& args) {
    return callIf(is_rsa_, rsa_funs_.pub_dec, args);
}
RSARepData CertInterface::RSA_meth_priv_enc(RSAMethReqArgs const& args) {
    return callIf(is_rsa_, rsa_funs_.priv_enc, args);
}
RSARepData CertInterface::RSA_meth_priv_dec(RSAMethReqArgs const& args) {
    return callIf(is_rsa_, rsa_funs_.priv_dec, args);
}
RSARepData CertInterface::RSA_meth_sign(RSASignReqArgs const& args) {
    return callIf(is_rsa_, rsa_funs_.sign, args);
}
RSARepData CertInterface::RSA_meth_verify(RSAVerfyReqArgs const& args) {
    return callIf(is_rsa_, rsa_funs_.verify, args);
}
ECCRepData CertInterface::ECC_meth_sign(ECCReqArgs const& args) {
    return callIf(sign_key_ != nullptr, ecc_funs_.sign, args);
}
int CertInterface::RSA_meth_init() {
    return callIf(is_rsa_, rsa_funs_.init);
}
int CertInterface::RSA_meth_finish() {
    return callIf(is_rsa_, rsa_funs_.finish);
}

int CertInterface::GetRsaModulusSize() const {
    return is_rsa_ ? EVP_PKEY_get_size(sign_key_.get()) : 0;
}
int CertInterface::GetECCModulusSize() const {
    return sign_key_ && !is_rsa_ ? EVP_PKEY_get_size(sign_key_.get()) : 0;
}

int CertInterface::SetPinCode(std::string const& /*pin*/) {
    return -1;
}
int CertInterface::CreatePinUserName(std::string const& /*userName*/) {
    return -1;
}

std::vector<CertInfo> CertInterface::EnumCerts() {
    CertProvider* const provider = handler_;
    return provider != nullptr ? provider->EnumCerts() : std::vector<CertInfo>{};
}
std::vector<GmCertInfo> CertInterface::EnumGmCerts() {
    CertProvider* const provider = handler_;
    return provider != nullptr ? provider->EnumGmCerts() : std::vector<GmCertInfo>{};
}

std::string CertInterface::ExportCertString() const {
    if (!sign_cert_) {
        return {};
    }
    return exported(sign_cert_.get()) + (enc_cert_ ? '\r' + exported(enc_cert_.get()) : "");
}

}  // namespace zorvanelink::components::cert
