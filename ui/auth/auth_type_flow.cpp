#include "ui/auth/auth_type_flow.h"

#include <chrono>

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "ui/auth/auth_type_dialog.h"
#include "ui/widgets/automation_hooks.h"
#include "ui/widgets/bring_into_view.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;

// Automation presses the button itself, once the dialog stands.
constexpr std::chrono::milliseconds kAutomaticLoginDelay{50};

}  // namespace

AuthTypeFlow::AuthTypeFlow(Services services, QObject* parent)
    : QObject(parent), services_(services) {
    connect(&selectAuthTypeTimer_, &QTimer::timeout, this,
            &AuthTypeFlow::onSelectAuthTypeTimerTimeout);
}

void AuthTypeFlow::onNeedSelectAuthType(bool select) {
    if (services_.state.currentProfileName.empty()) {
        Log().error("Can not get client");
        return;
    }
    std::shared_ptr<Profile> const profile = services_.flow.RunningProfile();
    if (!profile) {
        Log().error("Can not find the profile on need select auth type");
        return;
    }
    if (services_.dialogs.authTypeDialog) {
        Log().info("Auth type dialog is still running when recving select auth type");
        return;
    }
    bool const accepted = runDialog(profile, select);
    if (g_quit) {
        return;
    }
    if (!accepted) {
        Log().info("Failed or cancel process select auth type");
        services_.flow.ForgetCredentials(*profile);
        giveUp(profile->name);
        return;
    }
    Log().debug("has send auth type to service");
    services_.input.config.Save();
    QMetaObject::invokeMethod(
        this,
        [this, name = QString::fromStdString(profile->name)] { Q_EMIT StartConnect(name, false); },
        Qt::QueuedConnection);
}

// True when the dialog asked for a login.
bool AuthTypeFlow::runDialog(std::shared_ptr<Profile> const& profile, bool select) {
    BringIntoView(services_.dialogParent);
    dialog_ = new AuthTypeDialog(profile, select, services_.input, services_.dialogParent);
    services_.dialogs.authTypeDialog = dialog_.data();
    bool wanted = false;
    connect(dialog_.data(), &AuthTypeDialog::StartConnect, this, [&wanted] { wanted = true; });
    if (automationHooks().dialogOpened) {
        QTimer::singleShot(kAutomaticLoginDelay, dialog_.data(),
                           &AuthTypeDialog::ClickedConnectButton);
    }
    bool const accepted = dialog_->exec() == QDialog::Accepted;
    delete dialog_.data();
    services_.dialogs.authTypeDialog.clear();
    return accepted && wanted;
}

// The way down of the dialog's own profile, whatever came and went while it stood.
void AuthTypeFlow::giveUp(std::string const& name) {
    if (services_.state.currentProfileName == name && services_.flow.RunningProfile()) {
        services_.flow.StopConnect();
    } else {
        services_.updater.AnnounceRefusal(name);
    }
}

void AuthTypeFlow::onCriticalBoxShown() {
    StopSelectAuthTypeTimer();
    if (dialog_) {
        dialog_->ConnectButtonEnable(true);
    }
}

void AuthTypeFlow::onSelectAuthTypeTimerTimeout() {
    Log().info("Auth type selsect timeout and peer has already disconnected");
    selectAuthTypeTimer_.stop();
    Q_EMIT SelectAuthTypeTimeout();
}

}  // namespace zorvanelink::ui
