#include "app/environment/migration.h"

#include <dirent.h>
#include <sys/stat.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>
#include <algorithm>
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
constexpr qint64 kPiece = 64 * 1024;  // bytes at once
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

bool sameBytes(QString const& one, QString const& other) {
    QFile a(one);
    QFile b(other);
    if (a.size() != b.size() || !a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly)) {
        return false;
    }
    while (!a.atEnd()) {
        QByteArray const piece = a.read(kPiece);
        if (piece.isEmpty() || piece != b.read(kPiece)) {
            return false;
        }
    }
    return true;
}

// Links by what they say, files by what they hold.
bool isSame(QFileInfo const& one, QFileInfo const& other) {
    if (one.isSymLink() || other.isSymLink()) {
        std::error_code error;
        return one.isSymLink() && other.isSymLink() &&
               fs::read_symlink(pathOf(one.filePath()), error) ==
                   fs::read_symlink(pathOf(other.filePath()), error);
    }
    return other.isFile() && sameBytes(one.filePath(), other.filePath());
}

bool isTaken(QFileInfo const& path) {
    return path.exists() || path.isSymLink();
}

// With ".old" before its suffix, until nothing else has the name.
QFileInfo movedAside(QFileInfo const& source, QFileInfo target) {
    while (isTaken(target) && !isSame(source, target)) {
        QString const suffix = target.suffix();
        target.setFile(target.dir(), target.completeBaseName() + QStringLiteral(".old") +
                                         (suffix.isEmpty() ? suffix : QLatin1Char('.') + suffix));
    }
    return target;
}

// What becomes of a name that is taken. Moving aside is what a move of the user's files does, which
// also makes them private, and leaves open ones, its log above all, where they are.
enum class Taken { kStays, kIsReplaced, kMovesAside };

using Wanted = bool (*)(QFileInfo const& entry);
bool isAnything(QFileInfo const& /*entry*/) {
    return true;
}

// One copy of a tree. A move remembers what was copied, so that nothing else is removed.
class TreeCopy {
  public:
    explicit TreeCopy(Taken taken) : taken_(taken) {
        if (taken == Taken::kMovesAside) {
            open_ = openFiles();
        }
    }

    // Of the top level only what is wanted.
    bool Run(QString const& src, QString const& dst, Wanted wanted) {
        Log().info("Copy from {} to {}", src.toStdString(), dst.toStdString());
        if (!QDir().mkpath(dst)) {
            Log().debug("Failed to create dir: {}", dst.toStdString());
            Log().error("Failed to create dir [{}]", dst.toStdString());
            return false;
        }
        for (QFileInfo const& entry : QDir(src).entryInfoList(kEverything)) {
            if (isFolder(entry) || !wanted(entry)) {
                continue;
            }
            if (!copyFile(entry, QFileInfo(QDir(dst), entry.fileName()))) {
                Log().debug("Failed to copy file: {}", entry.filePath().toStdString());
                Log().error("Failed to copy file [{}]", entry.filePath().toStdString());
                return false;
            }
        }
        for (QFileInfo const& entry : QDir(src).entryInfoList(kEverything)) {
            if (isFolder(entry) && wanted(entry) &&
                !Run(entry.filePath(), dst + QLatin1Char('/') + entry.fileName(), &isAnything)) {
                Log().debug("Failed to copy dir: {}", entry.filePath().toStdString());
                Log().error("Failed to copy dir [{}]", entry.filePath().toStdString());
                return false;
            }
        }
        folders_.push_back(src);
        return true;
    }

    // Files first, then the folders from the innermost outwards, as far as they are empty. False
    // when a file has to stay.
    bool RemoveSources() const {
        bool removed = true;
        for (QString const& file : files_) {
            removed = QFile::remove(file) && removed;
        }
        for (QString const& folder : folders_) {
            QDir().rmdir(folder);
        }
        return removed;
    }

  private:
    // A link to a folder is a link: following it could lead back here.
    static bool isFolder(QFileInfo const& entry) { return entry.isDir() && !entry.isSymLink(); }

    bool copyFile(QFileInfo const& entry, QFileInfo target) {
        bool const is_link = entry.isSymLink();
        if (!is_link && !entry.isFile()) {
            return true;  // sockets and pipes are nothing to copy
        }
        if (open_.count(identityOf(QFile::encodeName(entry.filePath()).constData())) != 0 ||
            (taken_ == Taken::kStays && isTaken(target))) {
            return true;
        }
        if (taken_ == Taken::kMovesAside) {
            target = movedAside(entry, target);
        }
        QString const path = target.filePath();
        bool const copied = isSame(entry, target) ||
                            (is_link ? copyLink(entry.filePath(), path) : copyContent(entry, path));
        if (copied) {
            files_.push_back(entry.filePath());
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
        copy.setPermissions(kOwnerOnly | (entry.permissions() & QFileDevice::ExeOwner));
        while (!source.atEnd()) {
            QByteArray const piece = source.read(kPiece);
            if (piece.isEmpty() || copy.write(piece) != piece.size()) {
                return false;
            }
        }
        // Only flush tells of a full disk; commit alone would rename what broke off.
        return source.error() == QFileDevice::NoError && copy.flush() && copy.commit();
    }

    Taken taken_;
    std::set<std::pair<dev_t, ino_t>> open_;
    QStringList files_;
    QStringList folders_;  // innermost first
};

// The folder lies among the user's own documents: what else is in it is none of ours.
bool isOldClients(QFileInfo const& entry) {
    static QStringList const folders{QStringLiteral("log"), QStringLiteral("resourceList"),
                                     QStringLiteral("portal"), QStringLiteral("oauth"),
                                     QStringLiteral("script")};
    return entry.isDir() && !entry.isSymLink() ? folders.contains(entry.fileName())
                                               : entry.suffix() == QLatin1String("log");
}

void migrateFolder(QString const& from, QString const& to, Wanted wanted) {
    std::string const old_path = from.toStdString();
    std::string const new_path = to.toStdString();
    fs::path const source = canonical(from);
    fs::path const target = canonical(to);
    QFileInfoList const entries = QDir(from).entryInfoList(kEverything);
    if (std::none_of(entries.begin(), entries.end(), wanted) || contains(source, target) ||
        contains(target, source)) {
        Log().info("No need to migrate old data [{}]", old_path);
        return;
    }
    Log().info("Will migrate old data [{}] -> [{}]", old_path, new_path);
    TreeCopy copy(Taken::kMovesAside);
    if (!MakePrivateDir(to) || !copy.Run(from, to, wanted)) {
        Log().error("Unable migrate old data [{}] -> [{}]", old_path, new_path);
        return;
    }
    if (!copy.RemoveSources()) {
        Log().error("Unable remove old data [{}]", old_path);
    }
    Log().info("Migrate old data [{}] -> [{}]", old_path, new_path);
}

// What a copied settings file held: one that cannot be cleared is copied once, one that an older
// client has written since is copied again.
QString markOf(QString const& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file)
               ? QString::fromLatin1(hash.result().toHex())
               : QString();
}

// Takes over every value; false, with nothing written, where one of the files cannot be trusted.
bool copySettings(QSettings const& from, QString const& to) {
    return RewriteSettings(to, [&from](QSettings& settings) {
        static_cast<void>(settings.allKeys());  // parsed only now
        if (settings.status() != QSettings::NoError) {
            return false;
        }
        for (QString const& key : from.allKeys()) {
            settings.setValue(key, from.value(key));
        }
        return true;
    });
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
    return TreeCopy(overwrite ? Taken::kIsReplaced : Taken::kStays).Run(src, dst, &isAnything);
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
    migrateFolder(GetOldAppDataDirPath(), GetAppLogDirPath(), &isOldClients);
}

void MigrateOldServerCert() {
    migrateFolder(GetAppDataDirPath() + QStringLiteral("/serverCert"), GetConfigServerCertPath(),
                  &isAnything);
}

void MigrateOldClientCert() {
    migrateFolder(GetAppDataDirPath() + QStringLiteral("/clientCert"), GetConfigClientCertPath(),
                  &isAnything);
}

void MigrateOldAppConfigFile() {
    QString const old_path = GetOldAppConfigFilePath();
    QString const new_path = GetAppConfigFilePath();
    if (old_path.isEmpty()) {
        return;
    }
    QSettings old_settings(old_path, QSettings::NativeFormat);
    old_settings.setIniCodec("UTF-8");
    // Sections are parsed when they are first asked for; only then does the status count.
    bool const empty = old_settings.allKeys().isEmpty();
    if (QFileInfo const target(new_path); target.exists() && !target.isFile()) {
        return;  // reading a pipe would hold up the start; what stands there is told at the load
    }
    QString const mark = markOf(old_path);
    if (old_settings.status() != QSettings::NoError || empty ||
        QSettings(new_path, QSettings::IniFormat).value(kCopiedSettingsKey) == mark) {
        return;
    }
    MakePrivateDir(GetAppConfigDirPath());
    if (!copySettings(old_settings, new_path)) {
        Log().error("Unable migrate old config [{}]", old_path.toStdString());
        return;
    }
    old_settings.clear();
    old_settings.sync();
    if (markOf(old_path) == mark) {  // QSettings itself would say that it is empty
        Log().warning("Unable clear old config [{}]", old_path.toStdString());
        RewriteSettings(new_path, [&mark](QSettings& settings) {
            settings.setValue(kCopiedSettingsKey, mark);
            return true;
        });
    }
    Log().info("Migrate old config done");
}

}  // namespace zorvanelink::ui
