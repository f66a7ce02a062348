#include "ui/session/status_updater.h"

#include <optional>

#include "app/environment/globals.h"
#include "components/logger/logger.h"
#include "ui/text/texts.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;
using components::logger::Log;

// What a state does to the connection; an empty optional leaves the flag as it is.
struct Effect {
    ConnectStatus status;
    bool clears_all;
    std::optional<bool> online;
    std::optional<bool> offline;
};

constexpr Effect kEffects[] = {
    {ConnectStatus::Disconnected, true, false, true},
    {ConnectStatus::Connecting, false, false, {}},
    {ConnectStatus::PrepareReconnecting, false, {}, false},
    {ConnectStatus::Reconnecting, false, false, false},
    {ConnectStatus::Connected, false, true, false},
};

Effect const* effectOf(ConnectStatus status) {
    for (Effect const& effect : kEffects) {
        if (effect.status == status) {
            return &effect;
        }
    }
    return nullptr;
}

}  // namespace

StatusUpdater::StatusUpdater(ConnectionState& state, QObject* parent)
    : QObject(parent), state_(state) {
    qRegisterMetaType<ConnectStatus>("ConnectStatus");  // as the signal writes it
}

void StatusUpdater::UpdateConnectStatus(std::string const& name, ConnectStatus status) {
    Effect const* const effect = effectOf(status);
    Q_EMIT DisplayInfoCleared(effect == nullptr || effect->clears_all);
    bool const was_idle = state_.Idle();
    state_.status = status;
    state_.startingProfileName.clear();
    if (effect != nullptr) {
        state_.online = effect->online.value_or(state_.online);
        state_.offline = effect->offline.value_or(state_.offline);
    }
    switch (status) {
        case ConnectStatus::Disconnected:
            state_.sessionEnded = state_.sessionEnded || !was_idle;
            state_.pendingWarnings.clear();
            g_running_client = 0;
            break;
        case ConnectStatus::Connecting:
            state_.offline = state_.offline && state_.stopSent;
            break;
        case ConnectStatus::Reconnecting:
            state_.reconnectingSeen = true;
            break;
        case ConnectStatus::Connected:
            Q_EMIT WentOnline(QString::fromStdString(name));
            break;
        case ConnectStatus::PrepareReconnecting:
            break;
    }
    if (!state_.pendingWarnings.empty()) {
        int const code = state_.pendingWarnings.front();
        Log().warning("Recv warning code {} and msg{}", code,
                      GetTrMsg(static_cast<MsgCode>(code)).toStdString());
    }
    if (effect != nullptr) {
        Q_EMIT NotifyConnectStatus(QString::fromStdString(name), status);
    }
    Q_EMIT StateChanged();
}

void StatusUpdater::AnnounceRefusal(std::string const& name) {
    if (state_.startingProfileName == name) {
        state_.startingProfileName.clear();
    }
    Q_EMIT NotifyConnectStatus(QString::fromStdString(name), ConnectStatus::Disconnected);
    g_running_client = state_.Idle() ? 0 : 1;
    Q_EMIT StateChanged();
}

}  // namespace zorvanelink::ui
