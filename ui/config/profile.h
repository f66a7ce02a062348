// A connection profile: the user's record of one gateway. Plain values without a lock: GUI thread.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "common/auth_type.h"
#include "components/cert/cert_info.h"

namespace zorvanelink::ui {

using common::SupportedAuthType;

struct Gateway {
    std::string addr;
    std::uint16_t detectPort = 0;
    std::uint16_t sslPort = 0;
};

struct Server {
    std::string addr;
    std::uint16_t port = 0;
};

// What a server may list, gateways and clusters each: entries, and bytes of a name or an address.
inline constexpr std::size_t kMaxListedServers = 512;
inline constexpr std::size_t kMaxListedNameBytes = 255;

// Bytes of UTF-8 that a user can enter, wherever it is asked for.
inline constexpr int kMaxUserNameBytes = 95;
inline constexpr int kMaxPasswordBytes = 31;
inline constexpr int kMaxPinBytes = 127;

inline constexpr std::uint16_t kLoginModeTls = 1;
inline constexpr std::uint16_t kLoginModeGm = 2;

struct ProfileBase {
    std::string name;  // at most 127 bytes after load
    std::string server;
    std::uint16_t port = 443;
    std::uint16_t loginMode = kLoginModeTls;
    SupportedAuthType authType = SupportedAuthType::kNone;
    std::string userName;
    std::string lastUserName;
    std::string password;  // sensitive value, never clear
    std::uint16_t savedFormMode = 1;
    CertInfo systemCert;
    GmCertInfo gmCert;
    CertInfo fileCert;
    bool optimalChannel = false;
    bool gatewayDetect = true;
    std::string perferredGatewayName;
    Gateway perferredGateway;
    std::unordered_map<std::string, Gateway> gatewayList;  // by name
    std::unordered_map<std::string, Server> clusterList;   // by address
    std::uint16_t spaMode = 0;
    std::uint16_t spaPort = 0;
    std::uint16_t commOptimMode = 2;
    std::string forgotPwdUrl;
    bool rememberPassword = false;
    bool rememberTlsPin = false;
    bool rememberGmPin = false;
    bool verifyServerCert = false;
    bool certIsFile = true;
    bool keepAuthType = true;
    bool tempCredential = false;
    bool credentialPrompted = true;
    std::vector<SupportedAuthType> lastSupportedAuthTypes;  // as the file had them
    std::vector<SupportedAuthType> supportedAuthTypes;  // as the server reported them in this run

    // Takes over the entries that may stand in a list, in their order; each other value is logged.
    // False when none was kept.
    bool GetSupportedAuthType(std::vector<SupportedAuthType> const& list);
};

struct Profile : ProfileBase {};

// What the automation bridge hands to the connection editor. A server of "INVALID" leaves the
// field as it is. The password is in clear until the editor has encoded it.
struct AutoProfile : ProfileBase {};

// The type of an old settings file's number; kNone for all but 1, 2 and 3.
SupportedAuthType ConvertOldAuthType(int oldType);

}  // namespace zorvanelink::ui
