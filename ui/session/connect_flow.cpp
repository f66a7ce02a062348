#include "ui/session/connect_flow.h"

#include <QScopedValueRollback>

#include "components/logger/logger.h"
#include "ui/session/start_message.h"
#include "ui/text/texts.h"
#include "ui/widgets/bring_into_view.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

}  // namespace

ConnectFlow::ConnectFlow(SessionCore& core, BoxQueue& boxes)
    : core_(core), boxes_(boxes), state_(core.state) {
    requestTimer_.setSingleShot(true);
    requestTimer_.setInterval(kRequestTime);
    connect(&requestTimer_, &QTimer::timeout, this, &ConnectFlow::onRequestTimeout);
}

void ConnectFlow::onStartConnect(QString const& name, bool queryAuthType) {
    StartOrStopConnect(true, name, queryAuthType);
}

void ConnectFlow::onStopConnect(QString const& name) {
    StartOrStopConnect(false, name, false);
}

void ConnectFlow::Start(std::string const& name) {
    if (!state_.Idle() && state_.currentProfileName == name) {
        return;
    }
    bool queryAuthType = false;
    if (std::shared_ptr<Profile> const profile = core_.config.GetProfile(name)) {
        // A password that was typed for one attempt is asked for again.
        if (profile->tempCredential && !profile->rememberPassword) {
            Log().debug("Clear password when not remember");
            profile->password.clear();
        }
        profile->tempCredential = !profile->rememberPassword;
        queryAuthType = !profile->keepAuthType || profile->authType == SupportedAuthType::kNone;
    }
    core_.secrets.Forget();
    onStartConnect(QString::fromStdString(name), queryAuthType);
}

void ConnectFlow::StartChosen(std::string const& name) {
    if (std::shared_ptr<Profile> const profile = core_.config.GetProfile(name)) {
        profile->tempCredential = !profile->rememberPassword;
    }
    onStartConnect(QString::fromStdString(name), false);
}

void ConnectFlow::StartOrStopConnect(bool start_it, QString const& name, bool queryAuthType) {
    Log().info("{} connect in profile tab", start_it ? "start" : "stop");
    std::string const key = name.toStdString();
    Config& config = core_.config;
    if (start_it && config.GetProfile().size() > Config::kMaxConfigNum) {
        criticalBox(GetTrMsg(MsgCode::UI_ERROR_CONFIG_OVERLIMIT).arg(Config::kMaxConfigNum));
        refuse(key);
        return;
    }
    std::shared_ptr<Profile> const profile = key.empty() ? nullptr : config.GetProfile(key);
    if (!profile) {
        Log().error("Can not find the profile by name [{}]", key);
        criticalBox(GetTrMsg(MsgCode::UI_ERROR_PROFILE_NOT_EXIST));
        refuse(key);
        return;
    }
    if (config.GetDefaultProfileName() != key) {
        config.SetDefaultProfile(key);
        config.Save();
    }
    if (!core_.link.IsReady()) {
        refuseLinkDown(key);
    } else if (!start_it) {
        stop(profile);
        core_.conversation.End();  // who stops has nothing to choose any more
        if (state_.prompting) {
            core_.prompts.CloseAll();  // nor to type
        }
    } else if (mayStart(key)) {
        start(profile, queryAuthType);
    }
}

// One connection at a time, and one attempt at a time: a prompt of the first may still stand.
bool ConnectFlow::mayStart(std::string const& name) {
    if (state_.prompting) {
        return false;
    }
    bool const other_runs = !state_.Idle() && state_.currentProfileName != name;
    if (other_runs) {
        criticalBox(GetTrMsg(MsgCode::UI_ERROR_RUNNING_PROFILE_ALREADY_EXISTS));
        refuse(name);
    }
    return !other_runs;
}

void ConnectFlow::start(std::shared_ptr<Profile> const& profile, bool queryAuthType) {
    Log().info("{} connect profile {}", "Start", profile->name);
    beginAttempt(*profile, queryAuthType);
    Attempt const here = core_.Now();
    bool ready = false;
    {
        QScopedValueRollback<bool> const guard(state_.prompting, true);
        ready = CheckProfile(profile);
    }
    if (!here.Still()) {
        core_.secrets.Forget(*profile);  // what was typed has nowhere to go
        return;
    }
    if (!ready) {
        core_.secrets.Forget(*profile);  // the first of two may have been typed
        if (state_.status == ConnectStatus::Disconnected) {
            refuse(profile->name);
        } else {
            StopConnect();  // the gateway waits for an answer that will not come
        }
        return;
    }
    if (!core_.link.IsReady()) {  // it may have gone while a prompt stood
        refuseLinkDown(profile->name);
        return;
    }
    // What happened behind a prompt may have taken these back.
    state_.currentProfileName = profile->name;
    state_.startingProfileName = profile->name;
    state_.offline = false;
    core_.Announce();
    QString const json = Profile2JsonString(QStringLiteral("start"), profile);
    if (json.isEmpty()) {
        Log().error("NO json string could be get from profile");
        refuse(profile->name);
        selectAnew();
        return;
    }
    profile->credentialPrompted = true;
    state_.manualDisconnected = false;
    state_.errorShown = false;
    core_.secrets.Begin(*profile, queryAuthType);
    core_.Send(json.toStdString());
    requestTimer_.start();
}

// Queued: the start that failed is left first.
void ConnectFlow::selectAnew() {
    auto tell = [this, here = core_.Now()] {
        if (here.NotBegunAnew()) {
            auto const select = [this, here](int) {
                if (here.NotBegunAnew()) {
                    Q_EMIT core_.NeedSelectAuthType(false);
                }
            };
            boxes_.Tell(OkBox(BoxKind::kCritical, GetTrMsg(MsgCode::UI_ERROR_NO_CERT)), select);
        }
    };
    QMetaObject::invokeMethod(this, std::move(tell), Qt::QueuedConnection);
}

void ConnectFlow::beginAttempt(Profile& profile, bool queryAuthType) {
    core_.conversation.End();
    requestTimer_.stop();
    ++state_.attempt;
    ++state_.starts;
    state_.currentProfileName = profile.name;
    state_.startingProfileName = profile.name;
    state_.queryingAuthType = queryAuthType;
    if (state_.stop) {
        state_.stop->overtaken = true;
    }
    state_.reconnectingSeen = false;
    state_.offline = false;
    state_.beenOnline = false;
    state_.untoldFailure.clear();
    state_.endReason.clear();
    state_.lastEnd.reset();
    state_.since = QDateTime::currentDateTime();
    state_.pendingWarnings.clear();
    core_.context = Context();
    core_.context.needQueryAuthType = queryAuthType;
    if (queryAuthType && !profile.keepAuthType) {
        profile.authType = SupportedAuthType::kNone;
    }
    core_.Announce();
}

void ConnectFlow::stop(std::shared_ptr<Profile> const& profile) {
    if (state_.StopSent() && state_.currentProfileName == profile->name) {
        return;
    }
    Log().info("{} connect profile {}", "Stop", profile->name);
    core_.context.redirectUrl.clear();
    state_.currentProfileName = profile->name;
    state_.stop.reset();
    Q_EMIT core_.Stopping();
    if (core_.Send(Profile2JsonString(QStringLiteral("stop"), profile).toStdString())) {
        state_.stop = UnansweredStop{profile->name};
        requestTimer_.start();
    }
    core_.Announce();
}

void ConnectFlow::refuseLinkDown(std::string const& name) {
    // However often the user clicks while the box stands.
    if (!telling_link_down_) {
        QScopedValueRollback<bool> const guard(telling_link_down_, true);
        criticalBox(GetTrMsg(MsgCode::UI_INFO_CONNECT_SERVER_FAIL));
        Log().info("Update profile {} status to disconnect", name);
    }
    refuse(name);
}

void ConnectFlow::refuse(std::string const& name) {
    if (state_.startingProfileName == name) {
        state_.startingProfileName.clear();
    }
    if (state_.status != ConnectStatus::Disconnected && state_.currentProfileName == name) {
        core_.UpdateConnectStatus(name, ConnectStatus::Disconnected);
        return;
    }
    state_.offline = state_.offline || state_.Idle();
    core_.Announce();
}

void ConnectFlow::StopConnect() {
    if (stopping_) {
        return;
    }
    QScopedValueRollback<bool> const guard(stopping_, true);
    bool const link_up = core_.link.IsReady();
    std::shared_ptr<Profile> const profile = core_.RunningProfile();
    Attempt const here = core_.Now();
    PopDisconnectErrorForDialog();  // may show a text
    if (!profile) {
        Log().error("Can not get client");
        return;
    }
    if (!here.NoStartSince()) {
        return;
    }
    // The service's own OFFLINE may have come behind the text.
    if (state_.currentProfileName == profile->name) {
        Log().info("Profile [{}] will disconnect", profile->name);
        if (!state_.Idle()) {
            core_.UpdateConnectStatus(profile->name, ConnectStatus::Disconnected);
        }
        if (!state_.manualDisconnected && link_up && !state_.StopSent()) {
            stop(profile);
        }
    }
    endSession();
}

// Who is typing into a dialog of the login learns that the connection behind it is gone.
void ConnectFlow::PopDisconnectErrorForDialog() {
    Log().debug("Pop disconnect error for dialog");
    core_.conversation.OnLost();
}

// The views have been cleared with the state.
void ConnectFlow::endSession() {
    Context& context = core_.context;
    if (!core_.conversation.OutlivesSession()) {
        core_.secrets.Forget();
    }
    context.redirectUrl.clear();
    context.redirectUrlTitle.clear();
    context.resourceListPagePath.clear();
    if (!state_.manualDisconnected && context.needClearWebCacheWhenOffline) {
        ClearWebCache();
    }
    state_.manualDisconnected = true;
    core_.Announce();
}

void ConnectFlow::ClearWebCache() {
    Log().warning("Clearing of the browser's cache is not there yet");
}

void ConnectFlow::OnLinkLost() {
    state_.stop.reset();
    ++state_.starts;
    if (!state_.Idle()) {
        core_.NoteReason(
            Translate(QT_TRANSLATE_NOOP("ui", "The link to the backend service was lost")));
    }
    StopConnect();
}

// No status has come: the request may be repeated.
void ConnectFlow::onRequestTimeout() {
    if (state_.StopSent() && state_.status != ConnectStatus::Disconnected) {
        state_.manualDisconnected = false;
    }
    state_.stop.reset();
    state_.startingProfileName.clear();
    core_.Announce();
}

void ConnectFlow::criticalBox(QString const& text) {
    BringIntoView(core_.window);
    core_.prompts.Error(core_.window, text);
}

}  // namespace zorvanelink::ui
