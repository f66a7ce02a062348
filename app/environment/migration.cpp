#include "app/environment/migration.h"

#include <dirent.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>
#include <filesystem>
#include <set>
#include <utility>

#include "app/environment/paths.h"
#include "app/environment/settings_file.h"
#include "components/logger/logger.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;
namespace fs = std::filesystem;

constexpr QDir::Filters kEverything =
    QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
constexpr QFileDevice::Permissions kOwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

fs::path pathOf(QString const& path) {
    return QFile::encodeName(path).toStdString();
}

// The path without links, also for one that does not exist yet.
fs::path canonical(QString const& path) {
    std::error_code error;
    fs::path const whole = fs::weakly_canonical(pathOf(path), error);
    return error ? pathOf(QDir::cleanPath(QFileInfo(path).absoluteFilePath())) : whole;
}

// Whether inner is outer or lies below it.
bool contains(fs::path const& outer, fs::path const& inner) {
    auto const [end, ignored] =
        std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end());
    return end == outer.end();
}

std::pair<dev_t, ino_t> identityOf(char const* path) {
    struct stat status {};
    return stat(path, &status) == 0 ? std::pair(status.st_dev, status.st_ino)
                                    : std::pair<dev_t, ino_t>(0, 0);
}

// The files that this process holds open, its log above all.
std::set<std::pair<dev_t, ino_t>> openFiles() {
    std::set<std::pair<dev_t, ino_t>> files;
    std::error_code error;
    for (fs::directory_iterator entry("/proc/self/fd", error), end; !error && entry != end;
         entry.increment(error)) {
        files.insert(identityOf(entry->path().c_str()));
    }
    return files;
}

enum class Keep { kMode, kOwnerOnly };

// One copy of a tree. A move remembers what was copied, so that nothing else is removed.
class TreeCopy {
  public:
    TreeCopy(bool overwrite, Keep keep) : overwrite_(overwrite), keep_(keep) {}

    bool Run(QString const& src, QString const& dst) {
        Log().info("Copy from {} to {}", src.toStdString(), dst.toStdString());
        if (!QDir().mkpath(dst)) {
            Log().debug("Failed to create dir: {}", dst.toStdString());
            Log().error("Failed to create dir [{}]", dst.toStdString());
            return false;
        }
        for (QFileInfo const& entry : QDir(src).entryInfoList(kEverything)) {
            if (isFolder(entry)) {
                continue;
            }
            if (!copyFile(entry, dst + QLatin1Char('/') + entry.fileName())) {
                Log().debug("Failed to copy file: {}", entry.filePath().toStdString());
                Log().error("Failed to copy file [{}]", entry.filePath().toStdString());
                return false;
            }
        }
        for (QFileInfo const& entry : QDir(src).entryInfoList(kEverything)) {
            if (isFolder(entry) &&
                !Run(entry.filePath(), dst + QLatin1Char('/') + entry.fileName())) {
                Log().debug("Failed to copy dir: {}", entry.filePath().toStdString());
                Log().error("Failed to copy dir [{}]", entry.filePath().toStdString());
                return false;
            }
        }
        folders_.push_back(src);
        return true;
    }

    // Files first, then the folders from the innermost outwards; false when one has to stay.
    bool RemoveSources() const {
        bool removed = true;
        for (QString const& file : files_) {
            removed = QFile::remove(file) && removed;
        }
        for (QString const& folder : folders_) {
            removed = QDir().rmdir(folder) && removed;
        }
        return removed;
    }

  private:
    // A link to a folder is a link: following it could lead back here.
    static bool isFolder(QFileInfo const& entry) { return entry.isDir() && !entry.isSymLink(); }

    bool copyFile(QFileInfo const& entry, QString const& target) {
        QString const source = entry.filePath();
        bool const isLink = entry.isSymLink();
        if (!overwrite_ && (QFileInfo::exists(target) || QFileInfo(target).isSymLink())) {
            return true;
        }
        if (!isLink && !entry.isFile()) {
            return true;  // sockets and pipes are nothing to copy
        }
        if (open_.count(identityOf(QFile::encodeName(source).constData())) != 0 ||
            (QFileInfo::exists(target) &&
             open_.count(identityOf(QFile::encodeName(target).constData())) != 0)) {
            return true;
        }
        bool const copied = isLink ? copyLink(source, target) : copyContent(entry, target);
        if (copied) {
            files_.push_back(source);
        }
        return copied;
    }

    static bool copyLink(QString const& source, QString const& target) {
        fs::path const temporary = pathOf(target + QStringLiteral(".zvl-new"));
        std::error_code error;
        fs::remove(temporary, error);
        fs::copy_symlink(pathOf(source), temporary, error);
        if (!error) {
            fs::rename(temporary, pathOf(target), error);
        }
        return !error;
    }

    // QSaveFile is the temporary file and the rename; it keeps an old file's permissions, so they
    // are set on the new one before it has content.
    bool copyContent(QFileInfo const& entry, QString const& target) const {
        QFile source(entry.filePath());
        QSaveFile copy(target);
        if (!source.open(QIODevice::ReadOnly) || !copy.open(QIODevice::WriteOnly)) {
            return false;
        }
        copy.setPermissions(keep_ == Keep::kOwnerOnly ? kOwnerOnly
                                                      : entry.permissions() | kOwnerOnly);
        constexpr qint64 kPiece = 64 * 1024;
        while (!source.atEnd()) {
            QByteArray const piece = source.read(kPiece);
            if (piece.isEmpty() || copy.write(piece) != piece.size()) {
                return false;
            }
        }
        // Only flush tells of a full disk; commit alone would rename what broke off.
        return source.error() == QFileDevice::NoError && copy.flush() && copy.commit();
    }

    bool overwrite_;
    Keep keep_;
    std::set<std::pair<dev_t, ino_t>> open_ = openFiles();
    QStringList files_;
    QStringList folders_;  // innermost first
};

void migrateFolder(QString const& from, QString const& to) {
    std::string const old_path = from.toStdString();
    std::string const new_path = to.toStdString();
    fs::path const source = canonical(from);
    fs::path const target = canonical(to);
    if (QDir(from).entryList().isEmpty() || contains(source, target) || contains(target, source)) {
        Log().info("No need to migrate old data [{}]", old_path);
        return;
    }
    Log().info("Will migrate old data [{}] -> [{}]", old_path, new_path);
    TreeCopy copy(true, Keep::kOwnerOnly);
    if (!MakePrivateDir(to) || !copy.Run(from, to)) {
        Log().error("Unable migrate old data [{}] -> [{}]", old_path, new_path);
        return;
    }
    if (!copy.RemoveSources()) {
        Log().error("Unable remove old data [{}]", old_path);
    }
    Log().info("Migrate old data [{}] -> [{}]", old_path, new_path);
}

}  // namespace

bool CopyDir(QString const& src, QString const& dst, bool overwrite) {
    fs::path const source = canonical(src);
    fs::path const target = canonical(dst);
    if (source == target) {
        return true;
    }
    if (contains(source, target)) {
        Log().error("Folder [{}] can not be copied into itself [{}]", src.toStdString(),
                    dst.toStdString());
        return false;
    }
    return TreeCopy(overwrite, Keep::kMode).Run(src, dst);
}

bool CopyDir(QString const& srcRoot, QString const& dstRoot, QString const& sub, bool overwrite) {
    Log().info("Copy from {} to {}", srcRoot.toStdString(), dstRoot.toStdString());
    if (srcRoot.isEmpty() || dstRoot.isEmpty()) {
        return false;
    }
    return CopyDir(srcRoot + QLatin1Char('/') + sub, dstRoot + QLatin1Char('/') + sub, overwrite);
}

bool RemoveDir(QString const& path) {
    return QDir(path).removeRecursively();
}

void MigrateOldAppResource() {
    migrateFolder(GetOldAppDataDirPath(), GetAppLogDirPath());
}

void MigrateOldServerCert() {
    migrateFolder(GetAppDataDirPath() + QStringLiteral("/serverCert"), GetConfigServerCertPath());
}

void MigrateOldClientCert() {
    migrateFolder(GetAppDataDirPath() + QStringLiteral("/clientCert"), GetConfigClientCertPath());
}

void MigrateOldAppConfigFile() {
    QString const old_path = GetOldAppConfigFilePath();
    if (old_path.isEmpty()) {
        return;
    }
    QSettings old_settings(old_path, QSettings::NativeFormat);
    old_settings.setIniCodec("UTF-8");
    // Sections are parsed when they are first asked for; only then does the status count.
    QStringList const keys = old_settings.allKeys();
    if (old_settings.status() != QSettings::NoError || keys.isEmpty()) {
        return;
    }
    MakePrivateDir(GetAppConfigDirPath());
    bool const written = RewriteSettings(GetAppConfigFilePath(), [&](QSettings& new_settings) {
        static_cast<void>(new_settings.allKeys());
        if (new_settings.status() != QSettings::NoError) {
            return false;
        }
        for (QString const& key : keys) {
            new_settings.setValue(key, old_settings.value(key));
        }
        return true;
    });
    if (!written) {
        Log().error("Unable migrate old config [{}]", old_path.toStdString());
        return;
    }
    old_settings.clear();
    Log().info("Migrate old config done");
}

}  // namespace zorvanelink::ui
