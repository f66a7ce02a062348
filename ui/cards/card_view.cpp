#include "ui/cards/card_view.h"

#include "ui/session/view_state.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

CardView idleView(ConnectionState const& state, std::string const& name) {
    CardView view;
    view.current = state.currentProfileName == name;
    view.logName = "DISCONNECT";
    view.buttonEnabled =
        state.Idle() && state.adapterUsable && state.link != LinkState::kReconnecting;
    view.menuEnabled = state.startingProfileName != name;
    if (state.startingProfileName == name) {
        view.stateText = MsgCode::UI_INFO_LOWER_CONNECTING;
        view.lamp = LampName(Look::kConnecting);
        view.stateName = "connecting";
    }
    return view;
}

CardView runningView(ConnectStatus status) {
    CardView view;
    switch (status) {
        case ConnectStatus::Connecting:
            view.stateText = MsgCode::UI_INFO_LOWER_CONNECTING;
            view.stateName = "connecting";
            view.logName = "CONNECTING";
            break;
        case ConnectStatus::PrepareReconnecting:
        case ConnectStatus::Reconnecting:
            view.stateText = MsgCode::UI_INFO_RECONNECTING;
            view.stateName = "reconnecting";
            view.logName =
                status == ConnectStatus::Reconnecting ? "RECONNECTING" : "Prepare RECONNECTING";
            break;
        case ConnectStatus::Connected:
            view.stateText = MsgCode::UI_INFO_ONLINE;
            view.stateName = "online";
            view.logName = "CONNECTED";
            break;
        default:
            view.logName = "UNKNOWN";
            break;
    }
    view.action = CardAction::kDisconnect;
    view.buttonText = MsgCode::UI_INFO_LOWER_DISCONNECT;
    view.menuEnabled = false;
    view.current = true;
    return view;
}

}  // namespace

CardView cardViewFor(ConnectionState const& state, std::string const& name) {
    bool const own = state.currentProfileName == name;
    if (!own || state.status == ConnectStatus::Disconnected) {
        return idleView(state, name);
    }
    CardView view = runningView(state.status);
    view.lamp = LampName(viewStateFor(state).look);
    // One that was told to stop is told once; one that logs in anew waits for its status.
    view.buttonEnabled = !state.StopSent() && state.startingProfileName.empty();
    return view;
}

}  // namespace zorvanelink::ui
