// Keys of the settings file, in the order in which they are written.
#pragma once

#include <array>
#include <vector>

#include "ui/config/config.h"
#include "ui/config/settings_rows.h"

namespace zorvanelink::ui::settings {

std::vector<Row<Config>> const& SwitchRows();
// From SPAMode to PerferredGatewayName.
std::vector<Row<Profile>> const& ProfileRows();

// The group that holds the profile of that name. The INI format knows "General" in one spelling.
QString GroupOf(QString const& name);

// A file of the certificate store, and the name under which it holds that certificate: the one that
// the file was found under, else the fingerprint.
std::string CertFilePath(std::string const& fileName);
std::string CertFileName(CertInfo const& cert);

template <int Size>
constexpr QLatin1String Key(char const (&text)[Size]) {
    return QLatin1String(text, Size - 1);
}

inline constexpr QLatin1String kConnectionName = Key("ConnectionName");
inline constexpr QLatin1String kKeepAuthType = Key("KeepAuthType");
inline constexpr QLatin1String kLastAuthType = Key("LastAuthType");
inline constexpr QLatin1String kUserName = Key("UserName");
inline constexpr QLatin1String kPassword = Key("Password");
inline constexpr QLatin1String kRememberPwd = Key("RememberPwd");
inline constexpr QLatin1String kServer = Key("Server");
inline constexpr QLatin1String kPort = Key("Port");
inline constexpr QLatin1String kLoginMode = Key("LoginMode");
inline constexpr QLatin1String kSFMode = Key("SFMode");
inline constexpr QLatin1String kGatewayCount = Key("GatewayCount");
inline constexpr QLatin1String kGatewayList = Key("GatewayList");
inline constexpr QLatin1String kClusterCount = Key("ClusterCount");
inline constexpr QLatin1String kClusterList = Key("ClusterList");
inline constexpr QLatin1String kName = Key("Name");
inline constexpr QLatin1String kAddr = Key("Addr");
inline constexpr QLatin1String kDetectPort = Key("detectPort");
inline constexpr QLatin1String kSslPort = Key("sslPort");
inline constexpr QLatin1String kCertFingerprint = Key("CertFingerprint");
inline constexpr QLatin1String kCertPinCode = Key("CertPinCode");
inline constexpr QLatin1String kVerifyServerCert = Key("VerifyServerCert");
inline constexpr QLatin1String kSupportedAuthType = Key("SupportedAuthType");
inline constexpr QLatin1String kVersionInfo = Key("VersionInfo");
inline constexpr QLatin1String kProfileList = Key("ProfileList");
inline constexpr QLatin1String kProfileNameFormat = Key("ProfileNameFormat");
inline constexpr QLatin1String kClientCertFile = Key("ClientCertFile");
inline constexpr QLatin1String kSubject = Key("Subject");
inline constexpr QLatin1String kPinCode = Key("PinCode");
inline constexpr QLatin1String kFileName = Key("FileName");

// Those whose values are secrets.
inline constexpr std::array kSecretKeys{kPassword, kPinCode, kCertPinCode};

}  // namespace zorvanelink::ui::settings
