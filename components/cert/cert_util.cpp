#include "components/cert/cert_util.h"

#include "components/cert/pkcs12.h"

namespace zorvanelink::components::cert {

bool CertUtil::ParseCert(std::string const& der) {
    return utils::ParseX509Cert(cert_, der);
}

bool CertUtil::GetFingerPrint(std::string& out) const {
    return give(cert_.fingerprint, out);
}

bool CertUtil::GetSubjectName(std::string& out) const {
    return give(cert_.subject, out);
}

bool CertUtil::GetIssuerName(std::string& out) const {
    return give(cert_.issuer, out);
}

bool CertUtil::give(std::string const& text, std::string& out) const {
    if (cert_.certData.empty()) {
        return false;
    }
    out = text;
    return true;
}

}  // namespace zorvanelink::components::cert
