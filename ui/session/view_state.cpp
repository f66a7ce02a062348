#include "ui/session/view_state.h"

#include <algorithm>
#include <iterator>

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

constexpr char kIconCode[] = ":/assets/images/second_auth.png";
constexpr char kIconQuery[] = ":/assets/images/query_type.gif";

struct Row {
    ConnectStatus status;
    Look look;
    MsgCode label;
    MsgCode text;
    bool tunnel;
};

constexpr Row kRows[] = {
    {ConnectStatus::Disconnected, Look::kDisconnected, MsgCode::UI_INFO_DISCONNECT,
     MsgCode::UI_TR_STATE_NORMAL, false},
    {ConnectStatus::Connecting, Look::kConnecting, MsgCode::UI_INFO_CONNECTING, MsgCode::CONNECTING,
     false},
    {ConnectStatus::PrepareReconnecting, Look::kReconnecting, MsgCode::UI_INFO_RECONNECTING,
     MsgCode::UI_INFO_RECONNECTING, true},
    {ConnectStatus::Reconnecting, Look::kReconnecting, MsgCode::UI_INFO_RECONNECTING,
     MsgCode::UI_INFO_RECONNECTING, true},
    {ConnectStatus::Connected, Look::kConnected, MsgCode::UI_INFO_CONNECTED,
     MsgCode::UI_TR_STATE_CONNECTTED, true},
};
constexpr Row kUnknown{ConnectStatus::Disconnected, Look::kDisconnected, MsgCode::UI_INFO_NONE,
                       MsgCode::UI_TR_STATE_NORMAL, false};

Row const& rowOf(ConnectStatus status) {
    auto const* const row = std::find_if(std::begin(kRows), std::end(kRows),
                                         [status](Row const& one) { return one.status == status; });
    return row == std::end(kRows) ? kUnknown : *row;
}

void showSession(ConnectionState const& state, ViewState& view) {
    Row const& row = rowOf(view.status);
    view.look = row.look;
    view.stateLabel = row.label;
    view.statusText = row.text;
    view.showsTunnel = row.tunnel;
    if (state.secondFactor && view.look != Look::kDisconnected) {
        view.statusText = MsgCode::UI_TR_SECOND_AUTH;
    } else if (view.look == Look::kDisconnected && state.sessionEnded) {
        view.statusText = MsgCode::UI_TR_STATE_DISCONNECT;
    } else if (view.look == Look::kConnecting && state.queryingAuthType) {
        view.statusText = MsgCode::UI_TR_CHECK_AUTH_TYPE;
    }
}

void showTrouble(Look look, MsgCode text, ViewState& view) {
    view.look = look;
    view.stateLabel = text;
    view.statusText = text;
}

}  // namespace

ViewState viewStateFor(ConnectionState const& state) {
    bool const starting =
        state.status == ConnectStatus::Disconnected && !state.startingProfileName.empty();
    ViewState view;
    view.status = starting ? ConnectStatus::Connecting : state.status;
    showSession(state, view);
    view.serviceGone = state.link == LinkState::kReconnecting;
    // The link and the adapter speak before the session: without them nothing else is true.
    if (view.serviceGone) {
        showTrouble(Look::kWarning, MsgCode::UI_INFO_CONNECTING_SERVICE, view);
    } else if (!state.adapterUsable) {
        showTrouble(Look::kFailed, MsgCode::UI_TR_STATE_VNIC_ERROR, view);
    } else if (view.showsTunnel && state.silentSince) {
        view.silent = true;
        view.look = Look::kWarning;
    }
    view.hasStatusText = state.link != LinkState::kFirstConnect;
    if (view.hasStatusText) {
        view.statusIcon = view.statusText == MsgCode::UI_TR_CHECK_AUTH_TYPE ? kIconQuery
                          : view.statusText == MsgCode::UI_TR_SECOND_AUTH   ? kIconCode
                                                                            : DotImage(view.look);
    } else {
        view.statusText = {};
    }
    if (!state.pendingWarnings.empty()) {
        view.hasWarning = true;
        view.warning = static_cast<MsgCode>(state.pendingWarnings.front());
    }
    return view;
}

}  // namespace zorvanelink::ui
