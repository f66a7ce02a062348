// Reading of client certificates from PKCS#12 files. Stateless, any thread, no call throws. Private
// keys are thrown away: the client never keeps one.
#pragma once

#include <openssl/x509.h>

#include <string>

#include "components/cert/cert_info.h"

namespace zorvanelink::components::utils {

enum Pkcs12Result : int {
    kPkcs12Ok = 0,
    kPkcs12NotOpened = 1,  // the file could not be opened
    kPkcs12Bad = 2,        // no PKCS#12, not parsed, or without a certificate
    kPkcs12WrongPin = 3,
    kPkcs12TooCostly = 4,  // asks for more iterations than kMaxPkcs12Iterations
};

// What a container may demand before it opens: the iterations of one of its keys. About a second
// each, and at most four times that in all.
inline constexpr long kMaxPkcs12Iterations = 2'000'000;

// Reads cert.filePath with cert.pin (a sensitive value) and fills the other fields. systemEncoded:
// the file went through SystemEncryptFile. A failure leaves the fields that it had not reached.
int ParsePkcs12Cert(CertInfo& cert, bool systemEncoded);

// Describes a certificate in DER: its name is also what is shown, its bytes become certData. False,
// with cert unchanged, for what is no certificate.
bool ParseX509Cert(CertInfo& cert, std::string const& der);

// Whether the signature is made with SM3.
bool IsGMX509(X509* x509);
bool IsRSA(X509* x509);
// UTF-8 text of the first such part of the subject; empty when there is none.
std::string GetX509NamebyNid(X509* x509, int nid);
// "2026-01-02 03:04:05", UTC; empty for no valid time.
std::string ASN1_TIME_to_string(ASN1_TIME const* time);
// Erases what stands ahead of "CN=".
void TrimNoUseSubjectOrIssuerField(std::string& text);

}  // namespace zorvanelink::components::utils
