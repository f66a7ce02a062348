#include "ui/config/config.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "app/environment/paths.h"
#include "components/logger/logger.h"
#include "components/utils/sensitive_value.h"
#include "components/version/version.h"
#include "ui/config/config_keys.h"

namespace zorvanelink::ui {

using components::logger::Log;

namespace settings {

QString TextOf(QVariant const& value) {
    return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(','))
                                                : value.toString();
}

std::string Utf8Of(QVariant const& value) {
    return TextOf(value).toStdString();
}

std::uint16_t Uint16Of(QVariant const& value) {
    return static_cast<std::uint16_t>(value.toInt());
}

QString GroupOf(QString const& name) {
    QString const general = QStringLiteral("General");
    return name.compare(general, Qt::CaseInsensitive) == 0 ? general : name;
}

std::string CertFilePath(std::string const& fileName) {
    return GetConfigClientCertPath().toStdString() + '/' + fileName;
}

std::string CertFileName(CertInfo const& cert) {
    std::string const folder = CertFilePath({});
    return cert.filePath.starts_with(folder) ? cert.filePath.substr(folder.size())
                                             : cert.fingerprint;
}

std::vector<Row<Config>> const& SwitchRows() {
    static std::vector<Row<Config>> const rows{
        {"LogFilter", &Config::logFilter, 0, Use::kWriteOnly},
        {"LogLevel", &Config::logLevel, QString()},
        {"DefaultProfile", &Config::defaultProfile, QString()},
        {"DnsServers", &Config::dnsServers, QString(), Use::kBoth, Trim::kYes},
        {"OldDefGateway", &Config::oldDefGateway, QVariant(), Use::kBoth, Trim::kYes},
        {"AutoRun", &Config::autoRun, false},
        {"AutoReconnect", &Config::autoReconnect, true},
        {"AutoUpdate", &Config::autoUpdate, true},
        {"AutoLogin", &Config::autoLogin, false},
        {"InstallerPath", &Config::installerPath, QString()},
        {"UpdatePolicy", &Config::updatePolicy, 0},
        {"UpdatePolicyVersion", &Config::updatePolicyVersion, QString()},
        {"CommunicationOptimization", &Config::communicationOptimization, false, Use::kReadOnly},
        {"AutoMinimize", &Config::autoMinimize, true},
        {"removeOldUserFolder", &Config::removeOldUserFolder, true},
        {"StatusNofity", &Config::statusNotify, true},
        {"UUID", &Config::uuid, QString()},
    };
    return rows;
}

std::vector<Row<Profile>> const& ProfileRows() {
    static std::vector<Row<Profile>> const rows{
        {"SPAMode", &Profile::spaMode, 0},
        {"SPAPort", &Profile::spaPort, 0},
        {"CommOptimMode", &Profile::commOptimMode, 0},
        {"OptimalChannel", &Profile::optimalChannel, false},
        {"ForgotPwdUrl", &Profile::forgotPwdUrl, QString()},
        {"GatewayDetect", &Profile::gatewayDetect, true},
        {"PerferredGatewayName", &Profile::perferredGatewayName, QString()},
    };
    return rows;
}

}  // namespace settings

Config& Config::Instance() {
    static Config instance;
    return instance;
}

Config::Config() {
    AppCtrl const& control = AppCtrl::Instance();
    clientVersion = {QString::fromStdString(components::version::GetVersion()),
                     control.overseaVersion, control.requireAdmin};
}

std::shared_ptr<Profile> Config::GetProfile(std::string const& name) const {
    auto const found = profiles.find(name.empty() ? defaultProfile : name);
    return found == profiles.end() ? nullptr : found->second;
}

bool Config::HasName(std::string const& name) const {
    return profiles.count(name) != 0 ||
           std::any_of(
               kept_.begin(), kept_.end(),
               [wanted = QString::fromStdString(name)](auto const& p) { return p.name == wanted; });
}

bool Config::SetDefaultProfile(std::string const& name) {
    if (profiles.count(name) == 0) {
        return false;
    }
    defaultProfile = name;
    return true;
}

bool Config::AddProfile(std::shared_ptr<Profile> const& profile, bool replace) {
    if (!profile || profile->name.empty()) {
        return false;
    }
    if (profiles.size() > kMaxConfigNum) {
        Log().warning("Config num exceeds the max number {}", kMaxConfigNum);
        return false;
    }
    if (!replace && profiles.count(profile->name) != 0) {
        return false;
    }
    if (AppCtrl::Instance().overseaVersion) {
        profile->loginMode = kLoginModeTls;
    }
    Log().warning("Profile exists, will be replaced");
    profiles[profile->name] = profile;
    return true;
}

bool Config::AddProfiles(std::vector<std::shared_ptr<Profile>> const& list, bool replace) {
    for (std::shared_ptr<Profile> const& profile : list) {
        if (!AddProfile(profile, replace)) {
            Log().warning("Unable add profile [{}]", profile ? profile->name : std::string());
        }
    }
    return true;
}

void Config::ModifyProfile(std::string const& name, std::shared_ptr<Profile> const& profile) {
    profiles[name] = profile;
}

void Config::SetProfile(std::string const& name, std::shared_ptr<Profile> const& profile) {
    profiles[name] = profile;
}

void Config::DeleteProfile(std::string const& name) {
    if (profiles.erase(name) != 0) {
        clearPending_ = true;
    }
}

bool Config::IsClientCertExist(CertInfo const& cert) const {
    return clientCerts.count(cert.fingerprint) != 0;
}

CertInfo const* Config::GetClientCert(std::string const& fingerprint) const {
    auto const found = clientCerts.find(fingerprint);
    return found == clientCerts.end() ? nullptr : &found->second;
}

bool Config::AddClientCert(CertInfo const& cert) {
    QString const folder = GetConfigClientCertPath();
    std::string const target = settings::CertFilePath(cert.fingerprint);
    if (!MakePrivateDir(folder)) {
        Log().error("Failed to create dir [{}]", folder.toStdString());
        return false;
    }
    if (!components::utils::SystemEncryptFile(cert.filePath, target)) {
        return false;
    }
    CertInfo stored = cert;
    stored.filePath = target;
    // Who chose the certificate before it was replaced has the old container's PIN.
    for (auto const& [name, profile] : profiles) {
        if (profile && profile->fileCert.fingerprint == cert.fingerprint) {
            profile->fileCert = stored;
        }
    }
    clientCerts.insert_or_assign(cert.fingerprint, std::move(stored));
    std::erase_if(keptCerts_, [&cert](KeptKeys const& kept) {  // its file has been replaced
        return settings::Utf8Of(kept[settings::kFileName]) == cert.fingerprint;
    });
    return true;
}

bool Config::DeleteClientCert(CertInfo const& cert) {
    // The caller may hand in the very record that is erased below.
    std::string const fingerprint = cert.fingerprint;
    CertInfo const* const stored = GetClientCert(fingerprint);
    std::string const name = settings::CertFileName(stored != nullptr ? *stored : cert);
    std::string const path = settings::CertFilePath(name);
    // A file outside the store is not ours to delete. One that is already gone is as good as
    // deleted; one that cannot be reached is not.
    bool const ours = name.find('/') == std::string::npos;
    if (ours && ::unlink(path.c_str()) != 0 && errno != ENOENT) {
        Log().info("Failed to remove cert file {} ", path);
        return false;
    }
    Log().debug("Sus to remove cert file {} ", path);
    clientCerts.erase(fingerprint);
    return true;
}

}  // namespace zorvanelink::ui
