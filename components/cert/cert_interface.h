// The bridge between OpenSSL on the service's side and a private key that lives elsewhere: a
// certificate's key object whose private operations are callbacks.
//
// Threads: a certificate is set up before its handshake starts and not changed during it; the
// operations run on the thread of the handshake. Failures are answers and log lines, and an entry
// of OpenSSL's error queue for an operation.
#pragma once

#include <openssl/x509.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "components/cert/cert_info.h"
#include "components/cert/freeing.h"
#include "components/cert/sign_records.h"

namespace zorvanelink::components::cert {

// What does the operations. An answer counts as done only when its data is there, as long as
// dataLen says, and for a signature as long as the key.
struct CertRsaMethFuns {
    using Crypt = std::function<RSARepData(RSAMethReqArgs const&)>;

    Crypt pub_enc;
    Crypt pub_dec;
    Crypt priv_enc;
    Crypt priv_dec;
    std::function<int()> init;
    std::function<int()> finish;
    std::function<RSARepData(RSASignReqArgs const&)> sign;
    std::function<RSARepData(RSAVerfyReqArgs const&)> verify;
};

struct CertECCMethFuns {
    std::function<ECCRepData(ECCReqArgs const&)> sign;
};

// Lists the certificates that a system holds for its user. May take as long as a card does.
class CertProvider {
  public:
    virtual ~CertProvider() = default;
    virtual std::vector<CertInfo> EnumCerts() = 0;
    virtual std::vector<GmCertInfo> EnumGmCerts() = 0;
};

class CertInterface {
  public:
    // Lives as long as the process: keys that OpenSSL still holds lead here.
    static CertInterface& Instance();

    // certData: Base64 of DER; of a GM pair the sign and the encryption certificate, with CR
    // between them. The operations of the table that the certificate does not need stay unused.
    bool InitByCertData(SSL_CTX* ctx, std::string const& certData, bool isGm, CertRsaMethFuns rsa,
                        CertECCMethFuns ecc = {});
    // content: DER.
    bool InitByCertContent(SSL_CTX* ctx, std::string const& content, CertRsaMethFuns rsa);
    bool InitByX509(SSL_CTX* ctx, X509* x509, CertRsaMethFuns rsa);
    bool InitByX509(SSL_CTX* ctx, X509* signX509, X509* encX509, CertECCMethFuns ecc);
    // Binds certificates and keys to the context; the Inits do that themselves.
    bool SetSSLCtx(SSL_CTX* ctx);

    // An empty answer when there is no key or nothing that does the operation; -1 for the last two.
    RSARepData RSA_meth_pub_enc(RSAMethReqArgs const& args);
    RSARepData RSA_meth_pub_dec(RSAMethReqArgs const& args);
    RSARepData RSA_meth_priv_enc(RSAMethReqArgs const& args);
    RSARepData RSA_meth_priv_dec(RSAMethReqArgs const& args);
    RSARepData RSA_meth_sign(RSASignReqArgs const& args);
    RSARepData RSA_meth_verify(RSAVerfyReqArgs const& args);
    ECCRepData ECC_meth_sign(ECCReqArgs const& args);
    int RSA_meth_init();
    int RSA_meth_finish();

    // Bytes of a signature, at most; 0 without a key.
    int GetRsaModulusSize() const;
    int GetECCModulusSize() const;

    // -1: no PIN is kept here.
    int SetPinCode(std::string const& pin);
    int CreatePinUserName(std::string const& userName);

    // Of handler_; empty without one.
    std::vector<CertInfo> EnumCerts();
    std::vector<GmCertInfo> EnumGmCerts();

    // The certificates in the form that InitByCertData takes; empty without one.
    std::string ExportCertString() const;

    // Null where nothing lists certificates. Not owned; whoever sets it takes it back first.
    static std::atomic<CertProvider*> handler_;

  private:
    CertInterface() = default;
    ~CertInterface() = default;

    using X509Ptr = std::unique_ptr<X509, utils::Freeing<&X509_free>>;
    using PkeyPtr = std::unique_ptr<EVP_PKEY, utils::Freeing<&EVP_PKEY_free>>;

    void clear();
    bool setEncCert(SSL_CTX* ctx) const;

    CertRsaMethFuns rsa_funs_;
    CertECCMethFuns ecc_funs_;
    X509Ptr sign_cert_;
    PkeyPtr sign_key_;
    bool is_rsa_ = false;  // sign_key_: around an RSA object, else on a curve
    X509Ptr enc_cert_;
    PkeyPtr enc_key_;
};

}  // namespace zorvanelink::components::cert
