#include "ui/settings/autostart.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include "app/environment/paths.h"
#include "components/logger/logger.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;

// Neither quoted nor with field codes. An entry whose program is gone is passed over.
QString desktopString(QString text) {
    return text.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
}

bool write(QString const& path) {
    QSaveFile file(path);
    QString const program = GetUIExeAbsolutePath();
    QString const entry = QStringLiteral(
                              "[Desktop Entry]\n"
                              "Type=Application\n"
                              "Name=Zorvane Link\n"
                              "Icon=zorvanelink\n"
                              "Exec=%1\n"
                              "TryExec=%2\n"
                              "Terminal=false\n")
                              .arg(DesktopExec(program), desktopString(program));
    QDir().mkpath(QFileInfo(path).path());
    bool const written = file.open(QIODevice::WriteOnly) && file.write(entry.toUtf8()) >= 0;
    if (written && file.commit()) {
        return true;
    }
    Log().error("Failed to write [{}]: {}", path.toStdString(), file.errorString().toStdString());
    return false;
}

bool remove(QString const& path) {
    QFile file(path);
    if (!file.exists() || file.remove()) {
        return true;
    }
    Log().error("Failed to remove [{}]: {}", path.toStdString(), file.errorString().toStdString());
    return false;
}

}  // namespace

QString GetAutostartFilePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/autostart/zorvanelink.desktop");
}

bool HasAutostart() {
    QFile file(GetAutostartFilePath());
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    // A desktop's own settings switch an entry off inside it.
    QByteArray const entry = file.readAll();
    return !entry.contains("\nHidden=true") && !entry.contains("\nX-GNOME-Autostart-enabled=false");
}

bool SetAutostart(bool enable) {
    return enable ? write(GetAutostartFilePath()) : remove(GetAutostartFilePath());
}

QString DesktopExec(QString const& path) {
    QString argument;
    for (QChar const letter : path) {
        // Inside quotes these carry a backslash, and each backslash of a value is written twice.
        if (letter == QLatin1Char('\\')) {
            argument += QStringLiteral("\\\\\\\\");
        } else if (QStringLiteral("\"`$").contains(letter)) {
            argument += QStringLiteral("\\\\") + letter;
        } else if (letter == QLatin1Char('%')) {
            argument += QStringLiteral("%%");
        } else {
            argument += letter;
        }
    }
    return QLatin1Char('"') + argument + QLatin1Char('"');
}

}  // namespace zorvanelink::ui
