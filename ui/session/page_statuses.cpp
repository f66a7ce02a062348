#include "ui/session/page_statuses.h"

#include <QFileInfo>

#include "components/logger/logger.h"
#include "ui/widgets/open_url.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;

constexpr std::size_t kMaxOpenedPages = 64;  // of one session

// What the record does not have stays as it is.
void take(std::string const& value, std::string& target) {
    if (!value.empty()) {
        target = value;
    }
}

}  // namespace

void PageStatuses::onKeyExchangeData(Data const& data, Profile& profile) {
    Context& context = core_.context;
    take(data.cipherAlg, context.cipherAlg);
    take(data.ipCompAlg, context.ipCompAlg);
    take(data.sslVersion, context.sslVersion);
    take(data.hostCheckDownloadUrl, context.hostCheckDownloadUrl);
    take(data.redirectUrl, context.redirectUrl);
    take(data.redirectUrlTitle, context.redirectUrlTitle);
    take(data.resourceListPagePath, context.resourceListPagePath);
    context.needClearWebCacheWhenOffline |= data.needClearWebCacheWhenOffline;
    if (!data.forgotPasswordUrl.empty()) {
        KeepForgottenPasswordPage(data.forgotPasswordUrl, profile, core_);
    }
    core_.Announce();
}

void PageStatuses::onResourceList(Data const& data, Profile& /*profile*/) {
    core_.context.resourceListPagePath = data.resourceListPagePath;
    core_.Announce();
}

bool PageStatuses::mayOpenUnasked(std::string const& page) {
    auto& pages = core_.context.openedPages;
    if (pages.size() < kMaxOpenedPages && pages.count(page) == 0 && core_.MayOpenUnasked()) {
        pages.insert(page);
        return true;
    }
    Log().info("A page is not opened unasked");
    return false;
}

void PageStatuses::openUnasked(std::string const& page, bool local) {
    if (page.empty() || !mayOpenUnasked(page)) {
        return;
    }
    if (auto const failure = TryOpenUrl(core_.prompts, QString::fromStdString(page), local)) {
        boxes_.Hint(*failure);
    }
}

void PageStatuses::onUrlRedirect(Data const& data, Profile& /*profile*/) {
    core_.context.redirectUrl = data.redirectUrl;
    core_.context.redirectUrlTitle = data.redirectUrlTitle;
    core_.Announce();
    openUnasked(data.redirectUrl, false);
}

void PageStatuses::OpenAfterLogin() {
    Attempt const here = core_.Now();
    openUnasked(core_.context.redirectUrl, false);
    if (here.Still()) {
        openUnasked(core_.context.resourceListPagePath, true);
    }
}

void KeepForgottenPasswordPage(std::string const& url, Profile& profile, SessionCore& core) {
    core.context.forgotPasswordUrl = url;
    if (profile.forgotPwdUrl != url) {
        profile.forgotPwdUrl = url;
        core.config.Save();
    }
}

void PageStatuses::onPortalFiles(Data const& data, Profile& /*profile*/) {
    Log().info("Recv update res portal static file");
    if (!QFileInfo(QString::fromStdString(data.AppResourcePortalStaticFilePath)).isFile()) {
        Log().error("App resource portal static file not exists!");
        return;
    }
    Log().warning("Unpacking the portal's pages is not there yet");
}

}  // namespace zorvanelink::ui
