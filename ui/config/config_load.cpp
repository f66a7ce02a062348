#include <QFileInfo>
#include <QSet>
#include <QUuid>
#include <algorithm>
#include <filesystem>

#include "app/environment/migration.h"
#include "app/environment/paths.h"
#include "app/environment/settings_file.h"
#include "components/cert/pkcs12.h"
#include "components/logger/logger.h"
#include "components/utils/sensitive_value.h"
#include "components/utils/text.h"
#include "ui/config/bad_settings.h"
#include "ui/config/config.h"
#include "ui/config/config_keys.h"

namespace zorvanelink::ui {
namespace {

using namespace settings;
using components::logger::Log;
using components::utils::SystemDecrypt;

// The parts of the list, which name the profiles' groups. A name that holds the separator came
// apart and is put together again, when only that names a group.
QStringList profileKeys(QSettings const& file, QString const& list) {
    QString const suffix = QLatin1Char('/') + kConnectionName;
    QSet<QString> groups;
    int longest = 0;
    for (QString const& key : file.allKeys()) {
        if (key.endsWith(suffix)) {
            groups.insert(key.chopped(suffix.size()));
            longest = std::max(longest, key.size() - suffix.size());
        }
    }
    QStringList const parts = list.split(QLatin1Char(';'));
    QStringList keys;
    for (int first = 0; first < parts.size(); ++first) {
        QString joined = parts[first];
        int last = first;
        while (!groups.contains(GroupOf(joined)) && joined.size() < longest &&
               last + 1 < parts.size()) {
            joined += QLatin1Char(';') + parts[++last];
        }
        if (groups.contains(GroupOf(joined))) {
            keys.push_back(joined);
            first = last;
        } else if (!parts[first].isEmpty()) {
            keys.push_back(parts[first]);
        }
    }
    return keys;
}

// Visits the entries of an array up to the stored count, which may say anything: a position
// without keys reads as an empty entry, and one of those stands for all. No more than may be
// listed.
template <class Visit>
void readCountedArray(QSettings& file, QLatin1String countKey, QLatin1String arrayKey,
                      Visit visit) {
    int count = file.value(countKey, 0).toInt();
    file.beginGroup(arrayKey);
    std::vector<int> positions;
    for (QString const& group : file.childGroups()) {
        int const position = group.toInt();
        if (position >= 1 && position <= count) {
            positions.push_back(position);
        }
    }
    file.endGroup();
    std::sort(positions.begin(), positions.end());
    if (positions.size() > kMaxListedServers) {
        positions.resize(kMaxListedServers);
        count = positions.back();
    }

    file.beginReadArray(arrayKey);
    std::int64_t expected = 1;
    bool gapVisited = false;
    auto const visitGap = [&](std::int64_t upTo) {
        if (expected < upTo && !gapVisited) {
            file.setArrayIndex(static_cast<int>(expected - 1));
            visit();
            gapVisited = true;
        }
    };
    for (int const position : positions) {
        visitGap(position);
        file.setArrayIndex(position - 1);
        visit();
        expected = std::int64_t{position} + 1;
    }
    if (expected <= count) {
        visitGap(expected + 1);
    }
    file.endArray();
}

void loadLists(QSettings& file, Profile& profile) {
    readCountedArray(file, kGatewayCount, kGatewayList, [&] {
        profile.gatewayList.try_emplace(
            Utf8Of(file.value(kName)),
            Gateway{Utf8Of(file.value(kAddr)), Uint16Of(file.value(kDetectPort, 0)),
                    Uint16Of(file.value(kSslPort, 0))});
    });
    readCountedArray(file, kClusterCount, kClusterList, [&] {
        std::string const address = Utf8Of(file.value(kAddr));
        profile.clusterList.try_emplace(address, Server{address, Uint16Of(file.value(kPort, 0))});
    });
}

void loadAuthType(QSettings const& file, Profile& profile) {
    int type = file.value(kLastAuthType, -1).toInt();
    if (type < 0) {
        type = file.value(QLatin1String("AuthType"), 0).toInt();
        Log().info("Need convert old auth type[{}]", type);
        profile.authType = ConvertOldAuthType(type);
    } else {
        profile.authType = static_cast<SupportedAuthType>(type);
    }
}

// savedFormMode is the file's: 0 as it stands, 1 through the system's protection.
void loadLogin(QSettings const& file, unsigned savedFormMode, Profile& profile) {
    if (profile.authType != SupportedAuthType::kOnlyUkey) {
        profile.userName = Utf8Of(file.value(kUserName, QString()));
        std::string password = Utf8Of(file.value(kPassword, QString()));
        if (savedFormMode == 0) {
            profile.password = std::move(password);
        } else if (savedFormMode == 1) {
            if (SystemDecrypt(password)) {
                profile.password = std::move(password);
            } else {
                Log().info("Failed to parse password by system decrypt");
            }
        }
    }
    if (common::NeedsPassword(profile.authType)) {
        profile.lastUserName = profile.userName;
    }
}

// Of the group that is open.
QMap<QString, QVariant> keysOf(QSettings const& file) {
    QMap<QString, QVariant> keys;
    for (QString const& key : file.allKeys()) {
        if (!key.isEmpty()) {
            keys[key] = file.value(key);
        }
    }
    return keys;
}

void loadOfferedTypes(QSettings const& file, Profile& profile) {
    for (QString const& part : TextOf(file.value(kSupportedAuthType)).split(QLatin1Char(','))) {
        int const type = part.toInt();
        if (common::IsListableAuthType(type)) {
            profile.lastSupportedAuthTypes.push_back(static_cast<SupportedAuthType>(type));
        }
    }
}

}  // namespace

void Config::Load(bool automationActive) {
    MigrateOldServerCert();
    MigrateOldClientCert();
    MigrateOldAppConfigFile();
    QString const path = GetAppConfigFilePath();
    Log().info("Load config {}", path.toStdString());
    RemoveSettingsDrafts(path);
    bool const regular = QFileInfo(path).isFile();
    if (regular) {
        QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    } else if (QFileInfo::exists(path)) {
        Log().error("Config [{}] is no regular file", path.toStdString());
    }
    // Another kind of file would hold us up, or be taken for settings that end.
    QSettings file(regular ? path : QString(), QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    if (!Parses(file)) {
        KeepBadCopy(path.toStdString());
    }

    bool const firstRun = file.value(QLatin1String("AutoLogin")).isNull();
    if (firstRun) {
        Log().info("No first install");
    }
    Read(file, SwitchRows(), *this);
    if (uuid.isEmpty()) {
        uuid = QUuid::createUuid().toString(QUuid::Id128).toUpper();
    }
    loadClientCerts(file);
    lastClientVersion.fromString(TextOf(file.value(kVersionInfo, QString())));
    Log().info("Last client version info is[{}]", lastClientVersion.toString().toStdString());
    loadProfiles(file);
    if (firstRun && !automationActive) {
        Log().info("Try to import old config, now config num is {}", profiles.size());
    }
    Log().info("Config num {}", profiles.size());
}

void Config::loadClientCerts(QSettings& file) {
    int const count = file.beginReadArray(kClientCertFile);
    Log().info("Try to load {} client cert", count);
    for (int index = 0; index < count; ++index) {
        file.setArrayIndex(index);
        // The count may say anything; entries stand one behind the other.
        if (file.childKeys().isEmpty()) {
            break;
        }
        bool const full = clientCerts.size() >= kMaxClientCertNum;
        if (full || !loadClientCert(file)) {
            keepClientCert(file);
        } else if (clientCerts.size() == kMaxClientCertNum) {
            Log().error("Client cert reach limit, now import {}/{}", index, clientCerts.size());
        }
    }
    file.endArray();
}

// One whose file has gone is worth nothing any more.
void Config::keepClientCert(QSettings const& file) {
    std::error_code error;
    std::filesystem::path const path = CertFilePath(Utf8Of(file.value(kFileName)));
    if (symlink_status(path, error).type() != std::filesystem::file_type::not_found) {
        keptCerts_.push_back(keysOf(file));
    }
}

bool Config::loadClientCert(QSettings& file) {
    std::string const subject = Utf8Of(file.value(kSubject));
    CertInfo cert;
    cert.pin = Utf8Of(file.value(kPinCode));
    if (!SystemDecrypt(cert.pin)) {
        Log().error("Failed to parse cert[subject = {}] file pin code by system decrypt", subject);
    }
    cert.filePath = CertFilePath(Utf8Of(file.value(kFileName)));
    if (components::utils::ParsePkcs12Cert(cert, true) != components::utils::kPkcs12Ok) {
        Log().error("Failed to parse cert[subject = {}] file[{}]", subject, cert.filePath);
        return false;
    }
    if (cert.subject != subject) {
        Log().error("Cert subject[{}] is not consistent with the subject[{}] of the cert file[{}]",
                    subject, cert.subject, cert.filePath);
        return false;
    }
    Log().debug("Sus to load cert[subject = {}] file[{}] ", subject, cert.filePath);
    clientCerts.emplace(cert.fingerprint, cert);
    return true;
}

void Config::loadProfiles(QSettings& file) {
    QString const list = TextOf(file.value(kProfileList, QString()));
    bool const isHex = TextOf(file.value(kProfileNameFormat, QString())) == QLatin1String("hex");
    for (QString const& key : profileKeys(file, list)) {
        QString const fullName = isHex ? QString::fromUtf8(QByteArray::fromHex(key.toUtf8())) : key;
        if (fullName.isEmpty()) {
            Log().warning("Profile without a name can not be loaded");
            continue;
        }
        if (profiles.size() >= kMaxConfigNum) {
            keepProfile(file, key, fullName);
            continue;
        }
        std::string name = fullName.toStdString();
        if (name.size() > kMaxNameBytes) {
            name = std::string(components::utils::CutUtf8(name, kMaxNameBytes));
            Log().warning("Profile name exceed 127, will be truncated in load");
        }
        if (profiles.count(name) != 0) {
            Log().warning("Profile name exists, will be replaced in load");
        }
        file.beginGroup(GroupOf(key));
        std::shared_ptr<Profile> const profile = loadProfile(file, key, name);
        file.endGroup();
        if (!profile) {
            continue;
        }
        profiles[name] = profile;
        if (GroupOf(key) != GroupOf(QString::fromStdString(name))) {
            renamedGroups_.push_back(GroupOf(key));
        }
        if (profiles.size() >= kMaxConfigNum) {
            Log().info("Config num exceeds the max number {}", kMaxConfigNum);
        }
    }
}

void Config::keepProfile(QSettings& file, QString const& key, QString const& name) {
    if (name.isEmpty() || HasName(name.toStdString())) {
        return;
    }
    file.beginGroup(GroupOf(key));
    if (TextOf(file.value(kConnectionName)) == key) {
        KeptProfile kept{name, keysOf(file)};
        kept.keys[kConnectionName] = name;
        kept_.push_back(std::move(kept));
        if (name != key) {
            renamedGroups_.push_back(GroupOf(key));
        }
    }
    file.endGroup();
}

std::shared_ptr<Profile> Config::loadProfile(QSettings& file, QString const& key,
                                             std::string const& name) const {
    QString const stored = TextOf(file.value(kConnectionName, QStringLiteral("DEFAULT")));
    if (stored != key) {
        Log().warning("Profile name {} not match the key {}, drop", stored.toStdString(),
                      key.toStdString());
        return nullptr;
    }
    auto profile = std::make_shared<Profile>();
    profile->name = name;
    profile->server = Utf8Of(file.value(kServer, QString()));
    profile->port = Uint16Of(file.value(kPort, 0));
    profile->loginMode = static_cast<std::uint16_t>(file.value(kLoginMode, 0).toUInt());
    unsigned const savedFormMode = file.value(kSFMode, 0).toUInt();
    if (AppCtrl::Instance().overseaVersion) {
        profile->loginMode = kLoginModeTls;
    }
    loadAuthType(file, *profile);
    loadLogin(file, savedFormMode, *profile);
    profile->rememberPassword = file.value(kRememberPwd, QString()).toBool();
    if (!profile->rememberPassword) {
        profile->password.clear();
    }
    Read(file, ProfileRows(), *profile);
    loadLists(file, *profile);
    profile->certIsFile = true;
    loadFileCert(file, *profile);
    profile->verifyServerCert = file.value(kVerifyServerCert, false).toBool();
    profile->keepAuthType = file.value(kKeepAuthType, true).toBool();
    loadOfferedTypes(file, *profile);
    return profile;
}

void Config::loadFileCert(QSettings& file, Profile& profile) const {
    profile.fileCert.fingerprint = Utf8Of(file.value(kCertFingerprint));
    if (profile.fileCert.fingerprint.empty()) {
        return;
    }
    CertInfo const* const stored = GetClientCert(profile.fileCert.fingerprint);
    if (stored == nullptr) {
        Log().warning("Failed to find cert by fingerprint[{}]", profile.fileCert.fingerprint);
        return;
    }
    std::string pin = Utf8Of(file.value(kCertPinCode));
    if (!SystemDecrypt(pin)) {
        Log().warning("Failed to parse cert file pin code by system decrypt");
        return;
    }
    profile.fileCert = *stored;
    if (pin.empty()) {
        Log().warning("Cert file pin code is null by system decrypt");
    }
}

}  // namespace zorvanelink::ui
