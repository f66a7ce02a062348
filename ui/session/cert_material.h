// The certificate bytes that a start message carries.
#pragma once

#include <string>

#include "ui/config/config.h"

namespace zorvanelink::ui {

// A file certificate's PKCS#12 bytes, or the certificate data of a system or USB-key certificate
// in Base64. Empty, with a line in the log, when the chosen certificate is gone. GUI thread.
std::string InitCert(Profile const& profile, Config const& config);

}  // namespace zorvanelink::ui
