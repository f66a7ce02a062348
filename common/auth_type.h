// Authentication types: their numbers stand in the settings file, their texts travel on the link.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace zorvanelink::common {

enum class SupportedAuthType : std::int32_t {
    kNone = 0,         // none chosen yet; never valid in a list
    kPwd = 1,          // user name and password
    kCookie = 2,       // stored cookie
    kOnlyUkey = 3,     // certificate only, on a USB key or in a file
    kPiccQrcode = 4,   // QR code
    kPwdWithCert = 5,  // user name, password and certificate
    kOauth = 6,        // login page of an outside provider
    kUnknown = 7,      // what a reader stores for a text outside the table
};

inline constexpr std::array<std::string_view, 7> kSupportedAuthTypeString{
    "none", "pwd", "cookie", "onlyUkey", "piccQrcode", "pwdWithCert", "oauth"};

// The text of the type; "none" for a number outside the table.
std::string_view AuthTypeToString(SupportedAuthType type);
// kUnknown for a text outside the table; the compare is exact.
SupportedAuthType StringToAuthType(std::string_view text);

constexpr bool NeedsPassword(SupportedAuthType type) {
    return (static_cast<std::int32_t>(type) & ~4) == 1;
}
constexpr bool NeedsCertificate(SupportedAuthType type) {
    return ((static_cast<std::int32_t>(type) - 3) & ~2) == 0;
}

// Whether a user can choose it to log in with.
constexpr bool HasControl(SupportedAuthType type) {
    return NeedsPassword(type) || NeedsCertificate(type) || type == SupportedAuthType::kOauth;
}
// Whether the type may stand in a list of offered types.
constexpr bool IsListableAuthType(std::int32_t value) {
    return value >= 1 && value <= 6;
}

}  // namespace zorvanelink::common
