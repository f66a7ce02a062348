// Certificate names for people: RFC 2253 escapes turned back into text.
#pragma once

#include <string>
#include <string_view>

namespace zorvanelink::ui {

// Whether a backslash with two hexadecimal digits behind it stands anywhere.
bool IsCertEncoded(std::string_view text);
// Each such escape becomes its byte, a double backslash one backslash; the answer is UTF-8 when
// the name was.
std::string CertDecode(std::string_view text);

}  // namespace zorvanelink::ui
