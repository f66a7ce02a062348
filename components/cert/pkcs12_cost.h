// Private to components/cert: what a PKCS#12 file demands of whoever opens it.
#pragma once

#include <openssl/pkcs12.h>

#include <string>

namespace zorvanelink::components::utils {

// Whether a key of the container takes more than kMaxPkcs12Iterations, or all of them together four
// times that. The PIN, in clear, is for what is packed inside and is used only within the limits.
bool Pkcs12TooCostly(PKCS12 const* pkcs12, std::string const& pin);

}  // namespace zorvanelink::components::utils
