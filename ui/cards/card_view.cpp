#include "ui/cards/card_view.h"

namespace zorvanelink::ui {

using common::MsgCode;

CardView cardViewFor(ConnectStatus own, bool otherRuns, bool adapterUsable) {
    CardView view;
    view.action = CardAction::kDisconnect;
    view.buttonText = MsgCode::UI_INFO_LOWER_DISCONNECT;
    switch (own) {
        case ConnectStatus::Disconnected:
            view.menuEnabled = true;
            view.action = CardAction::kConnect;
            view.buttonText = MsgCode::UI_INFO_CONNECT;
            view.buttonEnabled = !otherRuns && adapterUsable;
            break;
        case ConnectStatus::Connecting:
            view.stateText = MsgCode::UI_INFO_LOWER_CONNECTING;
            view.lamp = "lamp_connecting";
            view.stateName = "connecting";
            view.buttonEnabled = true;
            break;
        case ConnectStatus::PrepareReconnecting:
        case ConnectStatus::Reconnecting:
            view.stateText = MsgCode::UI_INFO_RECONNECTING;
            view.lamp = "lamp_reconnecting";
            view.stateName = "reconnecting";
            break;
        case ConnectStatus::Connected:
            view.stateText = MsgCode::UI_INFO_ONLINE;
            view.lamp = "lamp_connected";
            view.stateName = "online";
            view.buttonEnabled = true;
            break;
    }
    return view;
}

}  // namespace zorvanelink::ui
