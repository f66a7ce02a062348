// Rewriting of a settings file so that no failure can cost the old one.
#pragma once

#include <QString>
#include <functional>

class QSettings;

namespace zorvanelink::ui {

// Hands a copy of the INI file (UTF-8, empty when the file is missing) to change, writes it, reads
// it back, and only when it is whole renames it into the place of the old one, mode 0600. False,
// with the old file untouched, when change answers false, the disk is full, the file
// would be too large to be read again (kMaxContentSize), or anything else fails.
bool RewriteSettings(QString const& path, std::function<bool(QSettings&)> const& change);

// Removes what a process that died in the middle of the above left beside the file.
void RemoveSettingsDrafts(QString const& path);

}  // namespace zorvanelink::ui
