// The entry that lets the desktop start the client with the user's session. GUI thread.
#pragma once

#include <QString>

namespace zorvanelink::ui {

// The user's own entry, below XDG_CONFIG_HOME.
QString GetAutostartFilePath();
bool HasAutostart();
// Writes or removes the entry; false, with the reason in the log, when that failed.
bool SetAutostart(bool enable);

// A program's path as the Exec key of a desktop entry wants it.
QString DesktopExec(QString const& path);

}  // namespace zorvanelink::ui
