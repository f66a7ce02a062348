// What the service says about pages of the server: redirect, resource list, login page, portal.

#include <QFileInfo>

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "ui/session/status_handler.h"
#include "ui/widgets/open_url.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;

// What the record does not have stays as it is.
void take(std::string const& value, std::string& target) {
    if (!value.empty()) {
        target = value;
    }
}

}  // namespace

void StatusHandler::onKeyExchangeData(Data const& data, Profile& profile) {
    Context& context = profile.context;
    take(data.cipherAlg, context.cipherAlg);
    take(data.ipCompAlg, context.ipCompAlg);
    take(data.sslVersion, context.sslVersion);
    take(data.hostCheckDownloadUrl, context.hostCheckDownloadUrl);
    take(data.redirectUrl, context.redirectUrl);
    take(data.redirectUrlTitle, context.redirectUrlTitle);
    take(data.resourceListPagePath, context.resourceListPagePath);
    context.needClearWebCacheWhenOffline |= data.needClearWebCacheWhenOffline;
    if (!data.forgotPasswordUrl.empty()) {
        keepForgottenPasswordPage(data.forgotPasswordUrl, profile);
    }
    Q_EMIT PagesChanged();
}

void StatusHandler::onResourceList(Data const& data, Profile& profile) {
    profile.context.resourceListPagePath = data.resourceListPagePath;
    Q_EMIT PagesChanged();
}

void StatusHandler::onUrlRedirect(Data const& data, Profile& profile) {
    profile.context.redirectUrl = data.redirectUrl;
    profile.context.redirectUrlTitle = data.redirectUrlTitle;
    profile.context.openedRedirectUrl = data.redirectUrl;
    Q_EMIT PagesChanged();
    if (!data.redirectUrl.empty()) {
        OpenUrlWithHint(prompts_, window_, QString::fromStdString(data.redirectUrl), false);
    }
}

void StatusHandler::openPagesAfterLogin(Profile& profile) {
    std::string const redirect = profile.context.redirectUrl;
    std::uint64_t const attempt = state_.attempt;
    if (!redirect.empty() && redirect != profile.context.openedRedirectUrl) {
        profile.context.openedRedirectUrl = redirect;
        OpenUrlWithHint(prompts_, window_, QString::fromStdString(redirect), false);
    }
    std::string const resources = profile.context.resourceListPagePath;
    if (!resources.empty() && attempt == state_.attempt && !g_quit) {
        OpenUrlWithHint(prompts_, window_, QString::fromStdString(resources), true);
    }
}

void StatusHandler::keepForgottenPasswordPage(std::string const& url, Profile& profile) {
    profile.context.forgotPasswordUrl = url;
    if (profile.forgotPwdUrl != url) {
        profile.forgotPwdUrl = url;
        config_.Save();
        Q_EMIT ProfileChanged(QString::fromStdString(profile.name));
    }
}

void StatusHandler::onOauthPage(Data const& data, Profile& /*profile*/) {
    thirdParty_.Open(data.oauthPagePath);
}

void StatusHandler::onPortalFiles(Data const& data, Profile& /*profile*/) {
    Log().info("Recv update res portal static file");
    if (!QFileInfo(QString::fromStdString(data.AppResourcePortalStaticFilePath)).isFile()) {
        Log().error("App resource portal static file not exists!");
        return;
    }
    Log().warning("Unpacking the portal's pages is not there yet");
}

}  // namespace zorvanelink::ui
