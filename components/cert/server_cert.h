// Reading of certificates that a user may trust servers by. Stateless, any thread, no call throws.
#pragma once

#include <cstddef>
#include <string>

#include "components/cert/cert_info.h"

namespace zorvanelink::components::utils {

struct ServerCert {
    // "C=CN,CN=Example Root,L=,O=Example,OU=,ST=,": tells certificates apart, empty parts included.
    std::string subject;
    std::string sha256;  // of the whole certificate, "AB:CD:..."
    std::string pem;
    CertInfo details;
};

inline constexpr std::size_t kMaxServerCertFile = std::size_t{1024} * 1024;  // bytes

enum class ServerCertResult {
    kOk,
    kNotOpened,   // for those who read the file
    kBad,         // empty, too large, or no X.509 certificate
    kPrivateKey,  // the file holds a key as well, which must not be passed on
};

// The first certificate in the bytes of a file, DER or PEM; `path` is for the log.
ServerCertResult ParseServerCert(std::string const& bytes, std::string const& path,
                                 ServerCert& cert);

}  // namespace zorvanelink::components::utils
