// Where the GUI's files lie. All answers are absolute paths joined with "/"; nothing is created
// here but by MakePrivateDir.
#pragma once

#include <QString>

namespace zorvanelink::ui {

QString GetProgramAbsolutePath();
QString GetProgramDirPath();
QString GetUIExeAbsolutePath();
QString GetAdapterExeAbsolutePath();

QString GetAppDirPath();
QString GetResourceDirPath();
QString GetResourceFontDirPath();
QString GetResourceScriptsDirPath();
QString GetResourceResListDirPath();
QString GetResourceOauthDirPath();
QString GetResourcePortalDirPath();
QString GetClearWebCacheScriptPath();

// The control file's DATA_PATH when it is set, once the file has been read; else below the user's
// data location.
QString GetAppDataDirPath();
QString GetAppConfigDirPath();
QString GetAppConfigFilePath();
QString GetConfigServerCertPath();
QString GetConfigClientCertPath();
// Fixed before the control file is read: always below the user's data location.
QString GetAppLogDirPath();

// The user's runtime folder, when there is one of this user's; else the config folder.
QString GetRuntimeDirPath();

QString GetOldAppDataDirPath();
QString GetOldAppConfigFilePath();

// Makes the folder, readable by its owner only (0700), with its parents. False when it cannot.
bool MakePrivateDir(QString const& path);

}  // namespace zorvanelink::ui
