#include "ui/session/session_core.h"

#include <optional>

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "components/utils/log_filter.h"
#include "core/message_log.h"
#include "ui/text/texts.h"
#include "ui/widgets/bring_into_view.h"
#include "ui/widgets/zvl_message_box.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;
using components::logger::LOG_LEVEL;
namespace utils = components::utils;

// Pages that nobody clicked.
constexpr std::chrono::seconds kUnaskedPeriod{10};
constexpr std::size_t kMaxUnasked = 3;  // in that time

// What a status does to the two flags; an empty optional leaves the flag as it is.
struct Effect {
    ConnectStatus status;
    std::optional<bool> online;
    std::optional<bool> offline;
};

constexpr Effect kEffects[] = {
    {ConnectStatus::Disconnected, false, true},      {ConnectStatus::Connecting, false, {}},
    {ConnectStatus::PrepareReconnecting, {}, false}, {ConnectStatus::Reconnecting, false, false},
    {ConnectStatus::Connected, true, false},
};

std::string firstLine(QString const& text) {
    constexpr int kMost = 160;  // characters
    QString const head = text.section(QLatin1String(kMessageSeparator), 0, 0).simplified();
    return (head.size() > kMost ? head.left(kMost) + QChar(0x2026) : head).toStdString();
}

bool isInterrupted(ConnectStatus status) {
    return status == ConnectStatus::PrepareReconnecting || status == ConnectStatus::Reconnecting;
}

// A start and its login are one time, and so are the steps of an interruption.
bool timeGoesOn(ConnectStatus status, ConnectionState const& state) {
    bool const login = status == ConnectStatus::Connecting && !state.startingProfileName.empty();
    return login || status == state.status ||
           (isInterrupted(status) && isInterrupted(state.status));
}

void apply(ConnectStatus status, ConnectionState& state) {
    bool const was_idle = state.Idle();
    if (!timeGoesOn(status, state)) {
        state.since = QDateTime::currentDateTime();
    }
    state.status = status;
    state.startingProfileName.clear();
    for (Effect const& effect : kEffects) {
        if (effect.status == status) {
            state.online = effect.online.value_or(state.online);
            state.offline = effect.offline.value_or(state.offline);
        }
    }
    if (status == ConnectStatus::Disconnected) {
        state.sessionEnded = state.sessionEnded || !was_idle;
        state.pendingWarnings.clear();
        return;
    }
    state.reconnectingSeen |= status == ConnectStatus::Reconnecting;
    if (status == ConnectStatus::Connecting) {
        state.offline = state.offline && state.StopSent();
    }
    if (!state.StopSent()) {
        state.manualDisconnected = false;  // what the service reports is owed a stop
    }
}

}  // namespace

SessionCore::SessionCore(Environment const& environment)
    : config(environment.config),
      prompts(environment.prompts),
      link(environment.link),
      window(environment.window),
      clock(environment.clock) {
    qRegisterMetaType<ConnectStatus>("ConnectStatus");  // as the signal writes it
}

std::shared_ptr<Profile> SessionCore::RunningProfile() const {
    // An empty name would stand for the default profile.
    return state.currentProfileName.empty() ? nullptr : config.GetProfile(state.currentProfileName);
}

std::shared_ptr<Profile> SessionCore::Addressee(std::string const& profileName) const {
    std::shared_ptr<Profile> profile = RunningProfile();
    if (!profile) {
        Log().error("Can not get client");
        Log().debug("current client is offline");
        return nullptr;
    }
    if (profile->name != profileName) {
        Log().debug("current client profile name: {}", profile->name);
        Log().debug("object client profile name: {}", profileName);
        Log().debug("result: not match");
        return nullptr;
    }
    return profile;
}

bool SessionCore::Send(std::string const& json) {
    bool const sent = link.SendToService(json.data(), json.size());
    if (Log().level() <= LOG_LEVEL::debug) {
        Log().debug("send to: {}, length: {}",
                    utils::FilterJsonStr(utils::g_filter_word, core::MaskSecrets(json)),
                    json.size());
    }
    return sent;
}

bool SessionCore::MayOpenUnasked() {
    auto const now = std::chrono::steady_clock::now();
    std::erase_if(openedUnasked_, [now](auto const& then) { return now - then > kUnaskedPeriod; });
    if (openedUnasked_.size() >= kMaxUnasked) {
        return false;
    }
    openedUnasked_.push_back(now);
    return true;
}

// Who has ended it needs no reason.
void SessionCore::noteEnd(std::string const& name) {
    std::string why = std::exchange(state.endReason, {});
    if (state.StopSent()) {
        why.clear();
    } else if (why.empty()) {
        why = firstLine(QString::fromStdString(state.untoldFailure));
    }
    if (state.beenOnline || !why.empty()) {
        state.lastEnd = SessionEnd{name, QDateTime::currentDateTime(),
                                   state.beenOnline ? context.connectTime : QDateTime(), why};
    }
}

void SessionCore::NoteReason(QString const& text) {
    state.endReason = firstLine(text);
}

void SessionCore::UpdateConnectStatus(std::string const& name, ConnectStatus status) {
    if (status == ConnectStatus::Disconnected && !state.Idle()) {
        noteEnd(name);
    }
    apply(status, state);
    if (!state.pendingWarnings.empty()) {
        int const code = state.pendingWarnings.front();
        Log().warning("Recv warning code {} and msg{}", code,
                      GetTrMsg(static_cast<MsgCode>(code)).toStdString());
    }
    link.WatchSilence(status != ConnectStatus::Disconnected);
    Q_EMIT NotifyConnectStatus(QString::fromStdString(name), status);
    Announce();
}

void SessionCore::Demand(QString const& what) {
    BringForward(window);
    Q_EMIT Demanded(what);
}

void SessionCore::Announce() {
    g_running_client = state.Idle() ? 0 : 1;
    g_vnic_state = state.adapterUsable;
    Q_EMIT Changed();
}

}  // namespace zorvanelink::ui
