#include "ui/session/connect_flow.h"

#include <QScopedValueRollback>

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "components/utils/log_filter.h"
#include "components/utils/sensitive_value.h"
#include "core/message_log.h"
#include "ui/session/start_message.h"
#include "ui/text/texts.h"
#include "ui/widgets/bring_into_view.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using components::logger::LOG_LEVEL;
namespace utils = components::utils;

// As long as the service may take to report the end of a connection that was stopped.
constexpr std::chrono::seconds kLateAnswerTime{2};

}  // namespace

ConnectFlow::ConnectFlow(Services services, QObject* parent)
    : QObject(parent),
      state_(services.state),
      updater_(services.updater),
      config_(services.config),
      link_(services.link),
      prompts_(services.prompts),
      dialog_parent_(services.dialog_parent),
      has_tab_(std::move(services.has_tab)) {
}

std::shared_ptr<Profile> ConnectFlow::RunningProfile() const {
    std::string const& name = state_.currentProfileName;
    if (name.empty() || !has_tab_(name)) {
        return nullptr;
    }
    return config_.GetProfile(name);
}

void ConnectFlow::onStartConnect(QString const& name, bool queryAuthType) {
    StartOrStopConnect(true, name, queryAuthType);
}

void ConnectFlow::onStopConnect(QString const& name) {
    StartOrStopConnect(false, name, false);
}

void ConnectFlow::StartOrStopConnect(bool start_it, QString const& name, bool queryAuthType) {
    std::string const key = name.toStdString();
    if (start_it && config_.GetProfile().size() > Config::kMaxConfigNum) {
        criticalBox(GetErrMsg(MsgCode::UI_ERROR_CONFIG_OVERLIMIT).arg(Config::kMaxConfigNum));
        refuse(key);
        return;
    }
    std::shared_ptr<Profile> const profile = config_.GetProfile(key);
    if (!profile || key.empty()) {
        Log().error("Can not find the profile by name [{}]", key);
    } else if (!has_tab_(key)) {
        Log().error("Can not find the profile tab");
    } else {
        if (config_.SetDefaultProfile(key)) {
            config_.Save();
        }
        if (!link_.IsReady()) {
            refuseLinkDown(key);
        } else if (!start_it) {
            stop(profile);
        } else if (mayStart(key)) {
            start(profile, queryAuthType);
        }
        return;
    }
    criticalBox(GetErrMsg(MsgCode::UI_ERROR_PROFILE_NOT_EXIST));
    refuse(key);
}

// One connection at a time, and one attempt at a time: a prompt of the first may still stand.
bool ConnectFlow::mayStart(std::string const& name) {
    if (prompting_) {
        if (name != state_.currentProfileName) {
            updater_.AnnounceRefusal(name);
        }
        return false;
    }
    bool const other_runs = !state_.Idle() && state_.currentProfileName != name;
    if (other_runs) {
        criticalBox(GetErrMsg(MsgCode::UI_ERROR_RUNNING_PROFILE_ALREADY_EXISTS));
        refuse(name);
    }
    return !other_runs;
}

void ConnectFlow::start(std::shared_ptr<Profile> const& profile, bool queryAuthType) {
    Log().info("{} connect profile {}", "Start", profile->name);
    Q_EMIT RequestBegun();
    beginAttempt(*profile, queryAuthType);
    std::uint64_t const attempt = state_.attempt;
    bool ready = false;
    {
        QScopedValueRollback<bool> const guard(prompting_, true);
        ready = CheckProfile(profile);
    }
    if (g_quit || attempt != state_.attempt) {
        return;
    }
    if (!ready) {
        if (state_.status == ConnectStatus::Disconnected) {
            refuse(profile->name);
        } else {
            StopConnect();  // the gateway waits for an answer that will not come
        }
        return;
    }
    if (!link_.IsReady()) {  // it may have gone while a prompt stood
        refuseLinkDown(profile->name);
        return;
    }
    // What happened behind a prompt may have taken these back.
    state_.currentProfileName = profile->name;
    state_.startingProfileName = profile->name;
    state_.offline = false;
    g_running_client = 1;
    updater_.AnnounceRequest();
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
    forgetCredentials(*profile, queryAuthType);
    Send(json.toStdString());
}

// Queued: the start that failed is left first.
void ConnectFlow::selectAnew() {
    auto select = [this, attempt = state_.attempt] {
        auto const current = [this, attempt] { return !g_quit && attempt == state_.attempt; };
        if (current()) {
            criticalBox(GetErrMsg(MsgCode::UI_ERROR_NO_CERT));
        }
        if (current()) {
            Q_EMIT NeedSelectAuthType(false);
        }
    };
    QMetaObject::invokeMethod(this, std::move(select), Qt::QueuedConnection);
}

void ConnectFlow::beginAttempt(Profile& profile, bool queryAuthType) {
    ++state_.attempt;
    ++state_.starts;
    state_.currentProfileName = profile.name;
    state_.startingProfileName = profile.name;
    state_.queryingAuthType = queryAuthType;
    state_.stopSent = false;
    state_.reconnectingSeen = false;
    state_.offline = false;
    state_.beenOnline = false;
    state_.untoldFailure.clear();
    state_.pendingWarnings.clear();
    profile.context = Context();
    profile.context.needQueryAuthType = queryAuthType;
    if (queryAuthType && !profile.keepAuthType) {
        profile.authType = SupportedAuthType::kNone;
    }
    updater_.AnnounceRequest();
}

// The message has been built: what the user does not want kept leaves the profile now.
void ConnectFlow::forgetCredentials(Profile& profile, bool queryAuthType) {
    profile.context.once = {profile.password, profile.systemCert.pin, profile.gmCert.pin};
    if (!profile.rememberPassword) {
        if (!queryAuthType) {
            Log().debug("Clear password when not remember");
        }
        profile.password.clear();
    }
    if (queryAuthType) {
        return;
    }
    if (!profile.rememberTlsPin) {
        Log().debug("Clear tls pincode when not remember");
        profile.fileCert.pin.clear();
        profile.systemCert.pin.clear();
    }
    if (!profile.rememberGmPin) {
        Log().debug("Clear gmssl pincode when not remember");
        profile.gmCert.pin.clear();
    }
}

void ConnectFlow::ForgetCredentials(Profile& profile) {
    forgetCredentials(profile, false);
    profile.context.once = {};
}

void ConnectFlow::stop(std::shared_ptr<Profile> const& profile) {
    if (state_.stopSent && state_.currentProfileName == profile->name) {
        return;
    }
    Log().info("{} connect profile {}", "Stop", profile->name);
    Q_EMIT RequestBegun();
    state_.currentProfileName = profile->name;
    stop_time_ = std::chrono::steady_clock::now();
    state_.stopSent = Send(Profile2JsonString(QStringLiteral("stop"), profile).toStdString());
    updater_.AnnounceRequest();
}

bool ConnectFlow::BelongsToOldAttempt() const {
    return !state_.startingProfileName.empty() &&
           std::chrono::steady_clock::now() - stop_time_ < kLateAnswerTime;
}

bool ConnectFlow::Send(std::string const& json) {
    bool const sent = link_.SendToService(json.data(), json.size());
    if (Log().level() <= LOG_LEVEL::debug) {
        Log().debug("send to: {}, length: {}",
                    utils::FilterJsonStr(utils::g_filter_word, core::MaskSecrets(json)),
                    json.size());
    }
    return sent;
}

void ConnectFlow::refuseLinkDown(std::string const& name) {
    // However often the user clicks while the box stands.
    if (!telling_link_down_) {
        QScopedValueRollback<bool> const guard(telling_link_down_, true);
        criticalBox(GetErrMsg(MsgCode::UI_INFO_CONNECT_SERVER_FAIL));
        Log().info("Update profile {} status to disconnect", name);
    }
    refuse(name);
}

void ConnectFlow::refuse(std::string const& name) {
    if (state_.status != ConnectStatus::Disconnected && state_.currentProfileName == name) {
        updater_.UpdateConnectStatus(name, ConnectStatus::Disconnected);
    } else {
        updater_.AnnounceRefusal(name);
    }
}

void ConnectFlow::StopConnect() {
    if (stopping_) {
        return;
    }
    QScopedValueRollback<bool> const guard(stopping_, true);
    bool const link_up = link_.IsReady();
    std::shared_ptr<Profile> const profile = RunningProfile();
    std::uint64_t const starts = state_.starts;
    Q_EMIT SessionEnding();  // may show a text
    if (!profile) {
        Log().error("Can not get client");
        return;
    }
    if (starts != state_.starts) {
        return;
    }
    // The service's own OFFLINE may have come behind the text.
    if (state_.currentProfileName == profile->name) {
        Log().info("Profile [{}] will disconnect", profile->name);
        updater_.UpdateConnectStatus(profile->name, ConnectStatus::Disconnected);
        if (!state_.manualDisconnected && link_up && !state_.stopSent) {
            stop(profile);
        }
    }
    endSession(*profile);
}

// The views have been cleared with the state.
void ConnectFlow::endSession(Profile& profile) {
    profile.context.once = {};
    profile.context.redirectUrl.clear();
    profile.context.redirectUrlTitle.clear();
    profile.context.resourceListPagePath.clear();
    if (!state_.manualDisconnected && profile.context.needClearWebCacheWhenOffline) {
        ClearWebCache();
    }
    state_.manualDisconnected = true;
    Q_EMIT SessionEnded();
}

void ConnectFlow::ClearWebCache() {
    Log().warning("Clearing of the browser's cache is not there yet");
}

void ConnectFlow::ForgetPendingRequest(QString const& name) {
    if (state_.currentProfileName != name.toStdString()) {
        return;
    }
    state_.stopSent = false;
    std::string const starting = std::exchange(state_.startingProfileName, {});
    if (!starting.empty() && state_.status == ConnectStatus::Disconnected) {
        updater_.AnnounceRefusal(starting);
    } else {
        updater_.AnnounceRequest();
    }
}

void ConnectFlow::criticalBox(QString const& text) {
    BringIntoView(dialog_parent_);
    prompts_.Critical(dialog_parent_, GetErrMsg(MsgCode::UI_ERROR), text,
                      GetErrMsg(MsgCode::UI_INFO_OK));
}

}  // namespace zorvanelink::ui
