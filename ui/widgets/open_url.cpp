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

std::optional<MsgCode> TryOpenUrl(Prompts& prompts, QString const& text, bool local) {
    QUrl const url = PageUrl(text, local);
    if (url.isEmpty()) {
        Log().error("Refuse to open an address of scheme [{}]", QUrl(text).scheme().toStdString());
        return MsgCode::UI_INFO_INVALID_URL;
    }
    // The rest of an address may carry what only the page is to know.
    Log().info("Open {} page of [{}]", url.scheme().toStdString(), url.host().toStdString());
    if (!prompts.OpenUrl(url)) {
        Log().error("Failed to open the browser");
        return MsgCode::UI_INFO_OPEN_URL_WITH_BROWER_FAIL;
    }
    return std::nullopt;
}

bool OpenUrl(Prompts& prompts, QString const& text, bool local) {
    return !TryOpenUrl(prompts, text, local);
}

bool OpenUrlWithHint(Prompts& prompts, QWidget* parent, QString const& text, bool local) {
    auto const failure = TryOpenUrl(prompts, text, local);
    if (failure) {
        BringIntoView(parent);
        prompts.Error(parent, GetTrMsg(*failure));
    }
    return !failure;
}

}  // namespace zorvanelink::ui
