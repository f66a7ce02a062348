#include "app/environment/settings_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <cstdio>

#include "app/environment/paths.h"
#include "components/utils/file.h"

namespace zorvanelink::ui {
namespace {

QString const kDraftSuffix = QStringLiteral(".save-");

// A link to the file stays a link.
QString resolved(QString const& path) {
    QString const target = QFileInfo(path).canonicalFilePath();
    return target.isEmpty() ? path : target;
}

bool replaceBy(QString const& from, QString const& to) {
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

QString textOf(QVariant const& value) {
    return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(','))
                                                : value.toString();
}

bool sameSettings(QSettings const& expected, QSettings const& found) {
    QStringList const keys = expected.allKeys();
    if (found.allKeys() != keys || found.status() != QSettings::NoError) {
        return false;
    }
    for (QString const& key : keys) {
        if (textOf(found.value(key)) != textOf(expected.value(key))) {
            return false;
        }
    }
    return true;
}

}  // namespace

bool RewriteSettings(QString const& path, std::function<bool(QSettings&)> const& change) {
    using namespace components::utils;
    QString const target = resolved(path);
    QTemporaryDir const folder(target + kDraftSuffix + QStringLiteral("XXXXXX"));
    QString const draft = folder.filePath(QStringLiteral("draft.ini"));
    std::string old;
    if (!folder.isValid() ||
        (QFile::exists(target) &&
         !ReadContentFromFile(QFile::encodeName(target).toStdString(), old)) ||
        !WritePrivateFile(QFile::encodeName(draft).toStdString(), old)) {
        return false;
    }
    QSettings file(draft, QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    if (!change(file)) {
        return false;
    }
    file.sync();
    // QSettings does not notice when the disk is full: it would leave a file that breaks off.
    // Under the draft's own name it would answer from memory.
    QString const written = folder.filePath(QStringLiteral("written.ini"));
    if (!replaceBy(draft, written)) {
        return false;
    }
    QSettings readBack(written, QSettings::IniFormat);
    readBack.setIniCodec("UTF-8");
    return sameSettings(file, readBack) && replaceBy(written, target);
}

void RemoveSettingsDrafts(QString const& path) {
    QFileInfo const target(resolved(path));
    QDir const folder = target.dir();
    QStringList const drafts =
        folder.entryList({target.fileName() + kDraftSuffix + QLatin1Char('*')},
                         QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
    for (QString const& draft : drafts) {
        QDir(folder.filePath(draft)).removeRecursively();
    }
}

}  // namespace zorvanelink::ui
