// Reads one certificate.
#pragma once

#include <string>

#include "components/cert/cert_info.h"

namespace zorvanelink::components::cert {

class CertUtil {
  public:
    // False, with what was read before kept, for what is no certificate in DER. Any thread.
    bool ParseCert(std::string const& der);

    // False, with `out` unchanged, before a certificate has been read. SHA-1, hexadecimal.
    bool GetFingerPrint(std::string& out) const;
    bool GetSubjectName(std::string& out) const;
    bool GetIssuerName(std::string& out) const;

  private:
    bool give(std::string const& text, std::string& out) const;

    CertInfo cert_;
};

}  // namespace zorvanelink::components::cert
