#include "ui/widgets/open_url.h"

#include <QDir>
#include <QFileInfo>

#include "app/environment/paths.h"
#include "components/logger/logger.h"
#include "ui/text/texts.h"
#include "ui/widgets/bring_into_view.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

constexpr int kMaxBytes = 2048;  // UTF-8

// Links are followed first: what counts is where the file lies.
QUrl localPage(QString const& path) {
    QDir const data(GetAppDataDirPath());
    QString const folder = data.canonicalPath();
    QFileInfo const file(QFileInfo(data, path).canonicalFilePath());
    if (folder.isEmpty() || !file.filePath().startsWith(folder + QLatin1Char('/'))) {
        return {};
    }
    QString const suffix = file.suffix().toLower();
    bool const page = suffix == QLatin1String("html") || suffix == QLatin1String("htm");
    return page && file.isFile() ? QUrl::fromLocalFile(file.filePath()) : QUrl();
}

bool isWebPage(QUrl const& url) {
    QString const scheme = url.scheme();
    return url.isValid() && !url.host().isEmpty() &&
           (scheme == QLatin1String("http") || scheme == QLatin1String("https"));
}

void hint(Prompts& prompts, QWidget* parent, MsgCode text) {
    BringIntoView(parent);
    prompts.Error(parent, GetTrMsg(text));
}

// The rest of an address may carry what only the page is to know.
bool open(Prompts& prompts, QUrl const& url) {
    Log().info("Open {} page of [{}]", url.scheme().toStdString(), url.host().toStdString());
    bool const opened = prompts.OpenUrl(url);
    if (!opened) {
        Log().error("Failed to open the browser");
    }
    return opened;
}

QUrl usable(QString const& text, bool local) {
    QUrl const url = PageUrl(text, local);
    if (url.isEmpty()) {
        Log().error("Refuse to open an address of scheme [{}]", QUrl(text).scheme().toStdString());
    }
    return url;
}

}  // namespace

QUrl PageUrl(QString const& text, bool local) {
    if (text.toUtf8().size() > kMaxBytes) {
        return {};
    }
    QUrl const url(text.trimmed());
    if (url.isLocalFile()) {
        return local ? localPage(url.toLocalFile()) : QUrl();
    }
    if (local && url.scheme().isEmpty() && !text.isEmpty()) {
        return localPage(text);
    }
    return isWebPage(url) ? url : QUrl();
}

bool OpenUrl(Prompts& prompts, QString const& text, bool local) {
    QUrl const url = usable(text, local);
    return !url.isEmpty() && open(prompts, url);
}

bool OpenUrlWithHint(Prompts& prompts, QWidget* parent, QString const& text, bool local) {
    QUrl const url = usable(text, local);
    if (url.isEmpty()) {
        hint(prompts, parent, MsgCode::UI_INFO_INVALID_URL);
        return false;
    }
    if (!open(prompts, url)) {
        hint(prompts, parent, MsgCode::UI_INFO_OPEN_URL_WITH_BROWER_FAIL);
        return false;
    }
    return true;
}

}  // namespace zorvanelink::ui
