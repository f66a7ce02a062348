// Copying of folder trees, and the move of what older versions left: logs under the documents
// folder, certificates beside the data, settings in a native file. GUI thread, before windows
// exist; failures are log lines and stop nothing.
#pragma once

#include <QString>

namespace zorvanelink::ui {

// Top-level key of the settings: which old ones they have taken over. Survives every save.
QString const kCopiedSettingsKey = QStringLiteral("CopiedOldConfig");

// Copies every file, hidden ones too, and recreates symbolic links; makes dst when it is missing.
// Without overwrite a file that is there already stays, with it only one that differs is written.
// Each file is written under a temporary name and renamed. False at the first failure, and for a
// dst inside src.
bool CopyDir(QString const& src, QString const& dst, bool overwrite);
// The folder sub of both roots; false when a root is empty.
bool CopyDir(QString const& srcRoot, QString const& dstRoot, QString const& sub, bool overwrite);
// Removes the folder with its content.
bool RemoveDir(QString const& path);

// Each of these moves what it can: what was copied whole is removed from the old place, and the
// next start tries again with the rest. What stands at the new place stays: a file whose name is
// taken by another one gets ".old" before its suffix.
// Only the logs and the folders that an older client made: the folder is one of the user's own.
void MigrateOldAppResource();
void MigrateOldServerCert();
void MigrateOldClientCert();
// The old settings are cleared only after the new file is written without error. Where they can
// only be read the new file keeps the mark below, so that they are taken over once.
void MigrateOldAppConfigFile();

}  // namespace zorvanelink::ui
