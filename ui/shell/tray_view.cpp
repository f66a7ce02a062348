#include "ui/shell/tray_view.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

struct Row {
    ConnectStatus status;
    char const* icon;
    MsgCode stateLabel;
    MsgCode message;
    bool plainMessage;
};

constexpr char kDisconnected[] = ":/assets/images/disconnected.ico";
constexpr char kConnecting[] = ":/assets/images/connecting.ico";
constexpr char kConnected[] = ":/assets/images/connected.ico";

constexpr Row kRows[] = {
    {ConnectStatus::Disconnected, kDisconnected, MsgCode::UI_INFO_DISCONNECT,
     MsgCode::UI_INFO_DISCONNECTED, false},
    {ConnectStatus::Connecting, kConnecting, MsgCode::UI_INFO_CONNECTING,
     MsgCode::UI_INFO_LOWER_CONNECTING, false},
    {ConnectStatus::PrepareReconnecting, kConnecting, MsgCode::UI_INFO_RECONNECTING,
     MsgCode::UI_INFO_WAIT_RECONNECTING, true},
    {ConnectStatus::Reconnecting, kConnecting, MsgCode::UI_INFO_RECONNECTING,
     MsgCode::UI_INFO_LOWER_RECONNECTING, true},
    {ConnectStatus::Connected, kConnected, MsgCode::UI_INFO_CONNECTED,
     MsgCode::UI_INFO_LOWER_CONNECTED, false},
};

}  // namespace

TrayView trayViewFor(ConnectionState const& state, bool hasSelection) {
    TrayView view;
    view.status = state.status;
    view.stateLabel = MsgCode::UI_INFO_NONE;
    view.message = MsgCode::UI_INFO_NONE;
    for (Row const& row : kRows) {
        if (row.status == state.status) {
            view.icon = row.icon;
            view.stateLabel = row.stateLabel;
            view.message = row.message;
            view.plainMessage = row.plainMessage;
        }
    }
    view.canConnect =
        hasSelection && state.Idle() && state.link == LinkState::kLinked && state.adapterUsable;
    view.canDisconnect = state.status != ConnectStatus::Disconnected && !state.StopSent();
    return view;
}

}  // namespace zorvanelink::ui
