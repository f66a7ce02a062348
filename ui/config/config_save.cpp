#include <QFileInfo>

#include "app/environment/migration.h"
#include "app/environment/paths.h"
#include "app/environment/settings_file.h"
#include "components/logger/logger.h"
#include "components/utils/sensitive_value.h"
#include "ui/config/bad_settings.h"
#include "ui/config/config.h"
#include "ui/config/config_keys.h"

namespace zorvanelink::ui {
namespace {

using namespace settings;
using components::logger::Log;
using components::utils::SystemEncrypt;

QString qText(std::string const& text) {
    return QString::fromStdString(text);
}

QString systemEncrypted(std::string text) {
    // What could not be encrypted is stored as it is: the next run then finds out.
    static_cast<void>(SystemEncrypt(text));
    return qText(text);
}

void clearGroup(QSettings& file, QLatin1String name) {
    file.beginGroup(name);
    file.remove(QString());
    file.endGroup();
}

void writeKeys(QSettings& file, QMap<QString, QVariant> const& keys) {
    for (auto key = keys.begin(); key != keys.end(); ++key) {
        file.setValue(key.key(), key.value());
    }
}

void saveBasics(QSettings& file, Profile& profile) {
    file.setValue(kConnectionName, qText(profile.name));
    file.setValue(kServer, qText(profile.server));
    file.setValue(kPort, int{profile.port});
    file.setValue(kLoginMode, int{profile.loginMode});
    // Only now: the file may hold the other mode until the next save.
    if (AppCtrl::Instance().overseaVersion) {
        profile.loginMode = kLoginModeTls;
    }
    file.setValue(kSFMode, int{profile.savedFormMode});
    file.setValue(kKeepAuthType, profile.keepAuthType);
    file.setValue(kLastAuthType, profile.keepAuthType ? static_cast<int>(profile.authType) : 0);
}

void saveLogin(QSettings& file, Profile& profile) {
    bool const certificateOnly = profile.authType == SupportedAuthType::kOnlyUkey;
    file.setValue(kUserName, certificateOnly ? QString() : qText(profile.userName));
    if (common::NeedsPassword(profile.authType)) {
        profile.lastUserName = profile.userName;
    }
    if (profile.rememberPassword) {
        QString const stored = systemEncrypted(profile.password);
        Log().debug("Has encrypted pwd by system");
        file.setValue(kPassword, stored);
    } else {
        file.setValue(kPassword, QString());
    }
    file.setValue(kRememberPwd, profile.rememberPassword);
}

void saveLists(QSettings& file, Profile const& profile) {
    int index = 0;
    file.setValue(kGatewayCount, static_cast<int>(profile.gatewayList.size()));
    clearGroup(file, kGatewayList);
    file.beginWriteArray(kGatewayList, -1);
    for (auto const& [name, gateway] : profile.gatewayList) {
        file.setArrayIndex(index++);
        file.setValue(kName, qText(name));
        file.setValue(kAddr, qText(gateway.addr));
        file.setValue(kDetectPort, int{gateway.detectPort});
        file.setValue(kSslPort, int{gateway.sslPort});
    }
    file.endArray();

    clearGroup(file, kClusterList);
    file.setValue(kClusterCount, static_cast<int>(profile.clusterList.size()));
    file.beginWriteArray(kClusterList, -1);
    // The positions go on behind the gateways': this is how the format stands.
    for (auto const& [address, server] : profile.clusterList) {
        file.setArrayIndex(index++);
        file.setValue(kAddr, qText(server.addr));
        file.setValue(kPort, int{server.port});
    }
    file.endArray();
}

void saveRest(QSettings& file, Profile const& profile) {
    if (profile.fileCert.fingerprint.empty()) {
        // Else a certificate that the user took out would be back at the next start.
        file.remove(kCertFingerprint);
        file.remove(kCertPinCode);
    } else {
        file.setValue(kCertFingerprint, qText(profile.fileCert.fingerprint));
        file.setValue(kCertPinCode, systemEncrypted(profile.fileCert.pin));
    }
    file.setValue(kVerifyServerCert, profile.verifyServerCert);
    file.setValue(kKeepAuthType, profile.keepAuthType);
    QString types;
    for (SupportedAuthType const type : profile.supportedAuthTypes) {
        types += QString::number(static_cast<int>(type)) + QLatin1Char(',');
    }
    file.setValue(kSupportedAuthType, types);
}

}  // namespace

void Config::Save() {
    QString const path = GetAppConfigFilePath();
    Log().info("Begin to save config");
    if (!MakePrivateDir(GetAppConfigDirPath())) {
        Log().warning("Config folder [{}] can not be made private",
                      GetAppConfigDirPath().toStdString());
    }
    QFileInfo const old(path);
    bool const wayIsFree = !old.exists() || old.isFile() || MoveAside(path.toStdString());
    saveFailed_ = !wayIsFree || !RewriteSettings(path, [this, &path](QSettings& file) {
        if (!Parses(file) && !KeepBadCopy(path.toStdString())) {
            return false;
        }
        if (clearPending_) {
            QVariant const copied = file.value(kCopiedSettingsKey);
            file.clear();
            if (copied.isValid()) {  // else the old settings would come back
                file.setValue(kCopiedSettingsKey, copied);
            }
        }
        for (QString const& group : renamedGroups_) {
            file.remove(group);
        }
        saveSwitches(file);
        saveProfiles(file);
        saveClientCerts(file);
        return true;
    });
    if (saveFailed_) {
        Log().error("Failed to save config [{}]", path.toStdString());
    } else {
        clearPending_ = false;
        renamedGroups_.clear();
    }
    if (onSaved) {
        onSaved();
    }
}

void Config::saveSwitches(QSettings& file) const {
    Write(file, SwitchRows(), *this);
    file.setValue(kVersionInfo, clientVersion.toString());
}

void Config::saveProfiles(QSettings& file) const {
    QStringList names;
    for (auto const& [name, profile] : profiles) {
        if (!profile || profile->name.empty()) {
            Log().warning("Profile without a name can not be saved");
            continue;
        }
        names.push_back(qText(profile->name));
        file.beginGroup(GroupOf(names.back()));
        saveBasics(file, *profile);
        saveLogin(file, *profile);
        Write(file, ProfileRows(), *profile);
        saveLists(file, *profile);
        saveRest(file, *profile);
        file.endGroup();
    }
    saveKeptProfiles(file, names);
    file.setValue(kProfileList, names.join(QLatin1Char(';')));
    // The list is plain from now on, whatever the file's maker wrote.
    file.remove(kProfileNameFormat);
}

// Behind the others, so that the same ones are read the next time.
void Config::saveKeptProfiles(QSettings& file, QStringList& names) const {
    for (KeptProfile const& kept : kept_) {
        if (profiles.count(kept.name.toStdString()) != 0) {
            continue;
        }
        names.push_back(kept.name);
        file.beginGroup(GroupOf(kept.name));
        writeKeys(file, kept.keys);
        file.endGroup();
    }
}

void Config::saveClientCerts(QSettings& file) const {
    file.beginWriteArray(kClientCertFile, -1);
    int index = 0;
    for (auto const& [fingerprint, cert] : clientCerts) {
        file.setArrayIndex(index++);
        file.setValue(kSubject, qText(cert.subject));
        file.setValue(kPinCode, systemEncrypted(cert.pin));
        file.setValue(kFileName, qText(CertFileName(cert)));
    }
    for (KeptKeys const& kept : keptCerts_) {
        file.setArrayIndex(index++);
        file.remove(QString());  // of the entry that stood here
        writeKeys(file, kept);
    }
    file.endArray();
    // The PIN of a deleted certificate must not stay behind in the file.
    file.beginGroup(kClientCertFile);
    for (QString const& group : file.childGroups()) {
        if (group.toInt() > index) {
            file.remove(group);
        }
    }
    file.endGroup();
}

}  // namespace zorvanelink::ui
