// Private to components/cert: key objects of OpenSSL whose private operations a CertInterface does.
#pragma once

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <memory>
#include <string>

#include "components/cert/freeing.h"

namespace zorvanelink::components::cert {

class CertInterface;
using PkeyPtr = std::unique_ptr<EVP_PKEY, utils::Freeing<&EVP_PKEY_free>>;
using X509Ptr = std::unique_ptr<X509, utils::Freeing<&X509_free>>;

// A key around the RSA object of that one, whose operations are the interface's, which must outlive
// it. The library asks what has a fresh key around it, not what the certificate brought along.
// Null, with a log line, for what is no RSA key.
PkeyPtr HookRsa(EVP_PKEY* key, CertInterface* cert);
// The same for a key on a curve, whose signatures are CertInterface::Instance's.
PkeyPtr HookSm2(EVP_PKEY* key);

// The first entry of OpenSSL's error queue, taken out of it.
std::string TakeOpenSslError();

}  // namespace zorvanelink::components::cert
