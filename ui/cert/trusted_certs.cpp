#include "ui/cert/trusted_certs.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "app/environment/paths.h"
#include "components/logger/logger.h"
#include "components/utils/file.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;
namespace utils = components::utils;

QFileInfoList files() {
    return QDir(GetConfigServerCertPath())
        .entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Name);
}

QString DuplicateFileNameHandle(QDir const& folder, QString const& name) {
    return folder.exists(name) ? DuplicateFileNameHandle(folder, name + QLatin1Char('_')) : name;
}

}  // namespace

std::size_t TrustedCerts::Count() {
    return static_cast<std::size_t>(files().size());
}

std::vector<TrustedCerts::Held> TrustedCerts::List() {
    std::vector<Held> held;
    QFileInfoList const found = files();
    for (QFileInfo const& file : found) {
        Held one;
        if (ReadCertFile(file.filePath(), one) == utils::ServerCertResult::kOk) {
            held.push_back(std::move(one));
        }
    }
    Log().info("Get file count {}", found.size());
    return held;
}

utils::ServerCertResult TrustedCerts::ReadCertFile(QString const& path, Held& held) {
    held.path = path;
    Log().info("Try to read cert subject from file {}", path.toStdString());
    std::string content;
    if (!utils::ReadContentFromFile(path.toStdString(), content)) {
        Log().error("Failed to cert file {}", path.toStdString());
        return utils::ServerCertResult::kNotOpened;
    }
    return utils::ParseServerCert(content, path.toStdString(), held.cert);
}

bool TrustedCerts::Store(Held const& held) {
    MakePrivateDir(GetConfigServerCertPath());
    QDir const folder(GetConfigServerCertPath());
    QString const target =
        folder.filePath(DuplicateFileNameHandle(folder, QFileInfo(held.path).fileName()));
    if (utils::WritePrivateFile(target.toStdString(), held.cert.pem)) {
        return true;
    }
    Log().error("Failed to save {}", held.path.toStdString());
    return false;
}

bool TrustedCerts::Remove(utils::ServerCert const& cert) {
    for (Held const& one : List()) {
        if (one.cert.sha256 == cert.sha256) {
            if (QFile::remove(one.path)) {
                return true;
            }
            Log().error("Failed to delete file {}", one.path.toStdString());
            return !QFile::exists(one.path);
        }
    }
    return true;
}

}  // namespace zorvanelink::ui
