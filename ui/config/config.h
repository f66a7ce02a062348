// The one store of what the user configures: switches, profiles and client certificates, kept in
// AppConfig.ini. GUI thread only; nothing here reports to the user.
#pragma once

#include <QMap>
#include <QStringList>
#include <QVariant>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/environment/app_ctrl.h"
#include "components/cert/cert_info.h"
#include "ui/config/profile.h"

class QSettings;

namespace zorvanelink::ui {

class Config {
  public:
    using ProfileMap = std::map<std::string, std::shared_ptr<Profile>>;
    using CertMap = std::map<std::string, CertInfo>;

    static constexpr std::size_t kMaxConfigNum = 32;
    static constexpr std::size_t kMaxClientCertNum = 16;
    static constexpr std::size_t kMaxNameBytes = 127;

    // Built at first use, which must come after the application control file was read.
    static Config& Instance();
    // A store of its own, for tests and tools.
    Config();

    // Fills the store; called once, by the main window. A missing file is a first run.
    void Load(bool automationActive = false);
    // Writes everything in one go and syncs once. On failure a log line, and the file stays as it
    // was; the next call tries again.
    void Save();
    bool LastSaveFailed() const { return saveFailed_; }
    // Told at the end of each save.
    std::function<void()> onSaved;

    ProfileMap const& GetProfile() const { return profiles; }
    // Empty pointer for an unknown name; an empty name means the default profile.
    std::shared_ptr<Profile> GetProfile(std::string const& name) const;
    std::string const& GetDefaultProfileName() const { return defaultProfile; }
    // Whether a connection has that name, also one behind the limit that is only kept.
    bool HasName(std::string const& name) const;
    // False, with nothing changed, unless a profile has that name.
    bool SetDefaultProfile(std::string const& name);

    // False for a null or nameless profile, a full map, and a name that exists unless replace.
    // Nothing is saved.
    bool AddProfile(std::shared_ptr<Profile> const& profile, bool replace);
    // Always true; refusals are log lines.
    bool AddProfiles(std::vector<std::shared_ptr<Profile>> const& list, bool replace);
    void ModifyProfile(std::string const& name, std::shared_ptr<Profile> const& profile);
    void SetProfile(std::string const& name, std::shared_ptr<Profile> const& profile);
    // The next Save rewrites the file from nothing, so that the profile's group leaves it.
    void DeleteProfile(std::string const& name);

    bool IsClientCertExist(CertInfo const& cert) const;
    // Null for an unknown fingerprint; valid until the certificate is deleted.
    CertInfo const* GetClientCert(std::string const& fingerprint) const;
    // Copies the certificate's file into the store under its fingerprint.
    bool AddClientCert(CertInfo const& cert);
    // A file that is already gone counts as deleted; the record stays when the file does.
    bool DeleteClientCert(CertInfo const& cert);

    QString dnsServers;
    QString oldDefGateway;
    bool autoRun = false;
    bool autoReconnect = true;
    bool autoUpdate = true;
    bool hasPromotedUpdate = false;  // in this run; not stored
    bool autoLogin = false;
    bool communicationOptimization = false;  // read, never written
    QString installerPath;
    std::int32_t updatePolicy = 0;
    QString updatePolicyVersion;  // the version that updatePolicy speaks of; empty: any
    bool autoMinimize = true;
    QString uuid;  // 32 hexadecimal digits, upper case
    bool removeOldUserFolder = true;
    bool statusNotify = true;
    ProfileMap profiles;
    std::string defaultProfile;
    std::int32_t logFilter = 0;           // written, never read
    QString logLevel;                     // by name, as the user chose it; empty: never
    CertMap clientCerts;                  // by fingerprint
    ClientVersionInfo clientVersion;      // this program; stored
    ClientVersionInfo lastClientVersion;  // the program that wrote the file last

  private:
    // What is not read is written back as the file had it.
    using KeptKeys = QMap<QString, QVariant>;
    // A connection behind the limit.
    struct KeptProfile {
        QString name;
        KeptKeys keys;
    };

    // config_load.cpp
    void loadClientCerts(QSettings& settings);
    bool loadClientCert(QSettings& settings);
    void keepClientCert(QSettings const& settings);
    void loadProfiles(QSettings& settings);
    void keepProfile(QSettings& settings, QString const& key, QString const& name);
    void loadFileCert(QSettings& settings, Profile& profile) const;
    std::shared_ptr<Profile> loadProfile(QSettings& settings, QString const& key,
                                         std::string const& name) const;
    // config_save.cpp
    void saveSwitches(QSettings& settings) const;
    void saveProfiles(QSettings& settings) const;
    void saveKeptProfiles(QSettings& settings, QStringList& names) const;
    void saveClientCerts(QSettings& settings) const;

    bool clearPending_ = false;  // a profile was deleted since the last good save
    QStringList renamedGroups_;  // of profiles read under another name; gone with the next save
    std::vector<KeptProfile> kept_;
    std::vector<KeptKeys> keptCerts_;  // behind the limit, or of a file that cannot be read
    bool saveFailed_ = false;
};

}  // namespace zorvanelink::ui
