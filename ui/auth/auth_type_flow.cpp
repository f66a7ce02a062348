#include "ui/auth/auth_type_flow.h"

#include <chrono>

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "ui/auth/auth_type_dialog.h"
#include "ui/widgets/automation_hooks.h"

namespace zorvanelink::ui {
namespace {

using components::logger::Log;

// Automation presses the button itself, once the dialog stands.
constexpr std::chrono::milliseconds kAutomaticLoginDelay{50};

}  // namespace

AuthTypeFlow::AuthTypeFlow(Session& session) : session_(session) {
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
    End const end = runDialog(profile, select);
    if (g_quit || end == End::kSuperseded) {
        return;
    }
    if (end == End::kCancelled) {
        Log().info("Failed or cancel process select auth type");
        giveUp(*profile);
        return;
    }
    Log().debug("has send auth type to service");
    session_.config.Save();
    // Queued: what has asked for the choice is left first.
    QMetaObject::invokeMethod(
        this, [this, name = profile->name] { session_.Flow().StartChosen(name); },
        Qt::QueuedConnection);
}

AuthTypeFlow::End AuthTypeFlow::runDialog(std::shared_ptr<Profile> const& profile, bool select) {
    superseded_ = false;
    dialog_ = new AuthTypeDialog(profile, select,
                                 {session_.config, session_.prompts, session_.Certificates()},
                                 session_.window);
    if (auto const refused = session_.secrets.Refused()) {
        dialog_->AskAgainFor(*refused);
    }
    session_.conversation.Open(*this);
    session_.Demand(dialog_->windowTitle());
    bool wanted = false;
    connect(dialog_.data(), &AuthTypeDialog::StartConnect, this, [&wanted] { wanted = true; });
    if (automationHooks().dialogOpened) {
        QTimer::singleShot(kAutomaticLoginDelay, dialog_.data(),
                           &AuthTypeDialog::ClickedConnectButton);
    }
    bool const accepted = dialog_->exec() == QDialog::Accepted;
    delete dialog_.data();
    session_.conversation.Close(*this);
    if (superseded_) {
        return End::kSuperseded;
    }
    return accepted && wanted ? End::kLogin : End::kCancelled;
}

// The way down of the dialog's own profile, whatever came and went while it stood.
void AuthTypeFlow::giveUp(Profile& profile) {
    session_.secrets.Forget(profile);
    if (session_.RunningProfile().get() == &profile) {
        session_.Flow().StopConnect();
    }
}

void AuthTypeFlow::OnEnded() {
    superseded_ = true;
    if (dialog_) {
        dialog_->reject();
    }
}

void AuthTypeFlow::onSelectAuthTypeTimerTimeout() {
    Log().info("Auth type selsect timeout and peer has already disconnected");
    selectAuthTypeTimer_.stop();
    Q_EMIT SelectAuthTypeTimeout();
}

}  // namespace zorvanelink::ui
