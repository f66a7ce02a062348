// Client certificates as plain values. Strings are UTF-8; PINs are sensitive values, never clear.
#pragma once

#include <cstdint>
#include <string>

namespace zorvanelink {

struct CertInfo {
    std::uint16_t certType = 0;  // 2: needs a PIN before use
    std::string certName;        // shown to the user
    std::string certPath;        // on the service's side
    std::string certAlias;
    std::string fingerprint;  // SHA-1, hexadecimal; key of the store
    bool systemStoreFlag = true;
    bool systemStoreExtraFlag = false;
    std::string filePath;  // PKCS#12 file
    std::string pin;       // sensitive value
    std::string certData;  // DER, as the service delivered it
    bool isSupportCNG = true;
    std::string subject;
    std::string commonName;
    std::string issuer;
    std::string validFrom;  // "2026-01-02 03:04:05", UTC
    std::string validTo;
    bool isTls = true;  // not a GM certificate
    bool isRsa = true;
    std::string tokenLabel;  // of the user's own token that has the key; empty for any other
};

// A certificate pair on a USB key.
struct GmCertInfo {
    std::uint16_t certType = 0;
    std::string gmDeviceName;
    std::string gmAppName;
    std::string gmContainerName;
    std::string pin;  // sensitive value
    std::string certName;
    std::string signCert;  // Base64
    std::string reserved;
    std::string encCert;  // Base64
};

}  // namespace zorvanelink
