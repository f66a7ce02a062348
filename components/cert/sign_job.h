// The front-end's end of signing on request: what the service wants signed, and the texts that
// answer it. Stateless, any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "components/cert/sign_records.h"

namespace zorvanelink::components::cert {

inline constexpr std::size_t kMaxSignBytes = 1024;  // of what is to be signed, and of an answer

struct SignJob {
    RSAReqType type = kRSAUnknown;
    int hash = 0;      // kRSASign: NID of the digest
    int padding = 0;   // kRSAPrivEnc: as OpenSSL numbers it
    std::string data;  // empty: this is nothing to sign, the answer is NothingSigned
};

// None for a text that cannot be read: that one stays without an answer. An operation that signs
// nothing, more than kMaxSignBytes and a length that is not the data's are jobs without data.
std::optional<SignJob> ReadSignJob(std::string_view request);

// What PKCS#1 pads for such a job: a digest in its DigestInfo, or the data as it stands. Empty for
// a digest that is not known.
std::string BytesToPad(SignJob const& job);

std::string SignAnswer(SignJob const& job, std::string const& signature);
std::string NothingSigned();

}  // namespace zorvanelink::components::cert
