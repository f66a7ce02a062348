#include "ui/auth/auth_type_flow.h"

#include <chrono>

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "ui/widgets/automation_hooks.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;

// Automation presses the button itself, once the dialog stands.
constexpr std::chrono::milliseconds kAutomaticLoginDelay{50};

}  // namespace

AuthTypeFlow::AuthTypeFlow(Session& session) : DialogFlow(session) {
    connect(&session_, &Session::NeedSelectAuthType, this, &AuthTypeFlow::onNeedSelectAuthType);
    connect(&selectAuthTypeTimer_, &QTimer::timeout, this,
            &AuthTypeFlow::onSelectAuthTypeTimerTimeout);
}

void AuthTypeFlow::onNeedSelectAuthType(bool select) {
    if (session_.state.currentProfileName.empty()) {
        Log().error("Can not get client");
        return;
    }
    std::shared_ptr<Profile> const profile = session_.RunningProfile();
    if (!profile) {
        Log().error("Can not find the profile on need select auth type");
        return;
    }
    if (dialog_) {
        Log().info("Auth type dialog is still running when recving select auth type");
        return;
    }
    begin();
    profile_ = profile;
    auto* const dialog = new AuthTypeDialog(
        profile, select, {session_.config, session_.prompts, session_.Certificates()},
        session_.window);
    run(*dialog);
    if (auto const refused = session_.secrets.Refused()) {
        dialog->AskAgainFor(*refused);
    }
    // Queued: the dialog is gone first.
    connect(dialog, &AuthTypeDialog::StartConnect, this, &AuthTypeFlow::onStartConnect,
            Qt::QueuedConnection);
    if (automationHooks().dialogOpened) {
        QTimer::singleShot(kAutomaticLoginDelay, dialog, &AuthTypeDialog::ClickedConnectButton);
    }
    session_.Demand(dialog->windowTitle());
    show();
}

void AuthTypeFlow::onStartConnect(QString const& name) {
    if (!g_quit) {
        session_.Flow().StartChosen(name.toStdString());
    }
}

void AuthTypeFlow::onFinished(int result, bool itself) {
    std::shared_ptr<Profile> const profile = std::exchange(profile_, nullptr);
    if (result == QDialog::Accepted) {
        Log().debug("has send auth type to service");
        session_.config.Save();
    } else if (itself && !g_quit) {
        Log().info("Failed or cancel process select auth type");
        // The way down of the dialog's own profile, whatever came and went while it stood.
        session_.secrets.Forget(*profile);
        if (session_.RunningProfile() == profile) {
            session_.Flow().StopConnect();
        }
    }
}

void AuthTypeFlow::onSelectAuthTypeTimerTimeout() {
    Log().info("Auth type selsect timeout and peer has already disconnected");
    selectAuthTypeTimer_.stop();
    Q_EMIT SelectAuthTypeTimeout();
}

}  // namespace zorvanelink::ui
