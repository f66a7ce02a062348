#include "app/environment/paths.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "app/environment/app_ctrl.h"

namespace zorvanelink::ui {
namespace {

QString join(QString const& folder, char const* name) {
    return folder + QLatin1Char('/') + QLatin1String(name);
}

QString inLocation(QStandardPaths::StandardLocation location, char const* name) {
    return join(QStandardPaths::writableLocation(location), name);
}

constexpr char kProductFolder[] = "ZorvaneLink";

}  // namespace

QString GetProgramAbsolutePath() {
    return QCoreApplication::applicationFilePath();
}
QString GetProgramDirPath() {
    return QCoreApplication::applicationDirPath();
}
QString GetUIExeAbsolutePath() {
    return GetProgramAbsolutePath();
}
QString GetAdapterExeAbsolutePath() {
    return join(GetProgramDirPath(), "ZorvaneLinkService");
}

QString GetAppDirPath() {
    return join(GetProgramDirPath(), "..");
}
QString GetResourceDirPath() {
    return join(GetAppDirPath(), "resources");
}
QString GetResourceFontDirPath() {
    return join(GetResourceDirPath(), "font");
}
QString GetResourceScriptsDirPath() {
    return join(GetResourceDirPath(), "script");
}
QString GetResourceResListDirPath() {
    return join(GetResourceDirPath(), "resourceList");
}
QString GetResourceOauthDirPath() {
    return join(GetResourceDirPath(), "oauth");
}
QString GetResourcePortalDirPath() {
    return join(GetResourceDirPath(), "portal");
}
QString GetClearWebCacheScriptPath() {
    // One name on every platform.
    return join(GetResourceScriptsDirPath(), "clear_browser_cache.vbs");
}

QString GetAppDataDirPath() {
    QString const& override_path = AppCtrl::Instance().dataPath;
    return override_path.isEmpty() ? inLocation(QStandardPaths::GenericDataLocation, kProductFolder)
                                   : override_path;
}
QString GetAppConfigDirPath() {
    return inLocation(QStandardPaths::GenericConfigLocation, kProductFolder);
}
QString GetAppConfigFilePath() {
    return join(GetAppConfigDirPath(), "AppConfig.ini");
}
QString GetConfigServerCertPath() {
    return join(GetAppConfigDirPath(), "serverCert");
}
QString GetConfigClientCertPath() {
    return join(GetAppConfigDirPath(), "clientCert");
}
QString GetAppLogDirPath() {
    return join(inLocation(QStandardPaths::GenericDataLocation, kProductFolder), "log");
}

QString GetRuntimeDirPath() {
    // A program that changes the user may leave us the folder of another one.
    QFileInfo const folder(qEnvironmentVariable("XDG_RUNTIME_DIR"));
    return folder.isAbsolute() && folder.isDir() && folder.ownerId() == geteuid()
               ? folder.filePath()
               : GetAppConfigDirPath();
}

QString GetOldAppDataDirPath() {
    return inLocation(QStandardPaths::DocumentsLocation, kProductFolder);
}
QString GetOldAppConfigFilePath() {
    return inLocation(QStandardPaths::GenericConfigLocation, "Zorvane/ZorvaneLink.conf");
}

bool MakePrivateDir(QString const& path) {
    return QDir().mkpath(path) &&
           QFile::setPermissions(
               path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

}  // namespace zorvanelink::ui
