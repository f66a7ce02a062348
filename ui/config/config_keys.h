// Keys of the settings file, in the order in which they are written.
#pragma once

#include <vector>

#include "ui/config/config.h"
#include "ui/config/settings_rows.h"

namespace zorvanelink::ui::settings {

std::vector<Row<Config>> const& SwitchRows();
// From SPAMode to PerferredGatewayName.
std::vector<Row<Profile>> const& ProfileRows();

inline constexpr QLatin1String kConnectionName{"ConnectionName"};
inline constexpr QLatin1String kKeepAuthType{"KeepAuthType"};
inline constexpr QLatin1String kLastAuthType{"LastAuthType"};
inline constexpr QLatin1String kUserName{"UserName"};
inline constexpr QLatin1String kPassword{"Password"};
inline constexpr QLatin1String kRememberPwd{"RememberPwd"};
inline constexpr QLatin1String kServer{"Server"};
inline constexpr QLatin1String kPort{"Port"};
inline constexpr QLatin1String kLoginMode{"LoginMode"};
inline constexpr QLatin1String kSFMode{"SFMode"};
inline constexpr QLatin1String kGatewayCount{"GatewayCount"};
inline constexpr QLatin1String kGatewayList{"GatewayList"};
inline constexpr QLatin1String kClusterCount{"ClusterCount"};
inline constexpr QLatin1String kClusterList{"ClusterList"};
inline constexpr QLatin1String kName{"Name"};
inline constexpr QLatin1String kAddr{"Addr"};
inline constexpr QLatin1String kDetectPort{"detectPort"};
inline constexpr QLatin1String kSslPort{"sslPort"};
inline constexpr QLatin1String kCertFingerprint{"CertFingerprint"};
inline constexpr QLatin1String kCertPinCode{"CertPinCode"};
inline constexpr QLatin1String kVerifyServerCert{"VerifyServerCert"};
inline constexpr QLatin1String kSupportedAuthType{"SupportedAuthType"};
inline constexpr QLatin1String kVersionInfo{"VersionInfo"};
inline constexpr QLatin1String kProfileList{"ProfileList"};
inline constexpr QLatin1String kProfileNameFormat{"ProfileNameFormat"};
inline constexpr QLatin1String kClientCertFile{"ClientCertFile"};
inline constexpr QLatin1String kSubject{"Subject"};
inline constexpr QLatin1String kPinCode{"PinCode"};
inline constexpr QLatin1String kFileName{"FileName"};

}  // namespace zorvanelink::ui::settings
