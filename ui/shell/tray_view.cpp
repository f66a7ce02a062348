#include "ui/shell/tray_view.h"

#include <algorithm>
#include <iterator>

#include "ui/session/view_state.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

struct Row {
    ConnectStatus status;
    MsgCode message;
    bool plainMessage;
};

constexpr Row kRows[] = {
    {ConnectStatus::Disconnected, MsgCode::UI_INFO_DISCONNECTED, false},
    {ConnectStatus::Connecting, MsgCode::UI_INFO_LOWER_CONNECTING, false},
    {ConnectStatus::PrepareReconnecting, MsgCode::UI_INFO_WAIT_RECONNECTING, true},
    {ConnectStatus::Reconnecting, MsgCode::UI_INFO_LOWER_RECONNECTING, true},
    {ConnectStatus::Connected, MsgCode::UI_INFO_LOWER_CONNECTED, false},
};

Row const* rowOf(ConnectStatus status) {
    auto const* const row = std::find_if(std::begin(kRows), std::end(kRows),
                                         [status](Row const& one) { return one.status == status; });
    return row == std::end(kRows) ? nullptr : row;
}

}  // namespace

TrayView trayViewFor(ConnectionState const& state, bool hasSelection) {
    ViewState const shown = viewStateFor(state);
    TrayView view;
    view.status = state.status;
    view.icon = TrayImage(shown.look);
    view.stateLabel = shown.stateLabel;
    view.silent = shown.silent;
    view.message = MsgCode::UI_INFO_NONE;
    if (Row const* const row = rowOf(state.status)) {
        view.message = row->message;
        view.plainMessage = row->plainMessage;
    }
    if (shown.status != ConnectStatus::Disconnected) {
        view.name = state.currentProfileName;
    }
    if (state.status != ConnectStatus::Disconnected) {
        view.told = state.currentProfileName;
    } else if (state.lastEnd) {
        view.told = state.lastEnd->name;
        view.why = state.lastEnd->why;
    }
    view.canConnect =
        hasSelection && state.Idle() && state.link == LinkState::kLinked && state.adapterUsable;
    view.canDisconnect = state.status != ConnectStatus::Disconnected && !state.StopSent();
    return view;
}

}  // namespace zorvanelink::ui
