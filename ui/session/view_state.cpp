#include "ui/session/view_state.h"

namespace zorvanelink::ui {
namespace {

using common::MsgCode;

constexpr char kIconNormal[] = ":/assets/images/normal.png";
constexpr char kIconFailed[] = ":/assets/images/failed.png";
constexpr char kIconConnected[] = ":/assets/images/connectted.png";
constexpr char kIconBusy[] = ":/assets/images/loading_small.gif";
constexpr char kIconCode[] = ":/assets/images/second_auth.png";
constexpr char kIconQuery[] = ":/assets/images/query_type.gif";

MsgCode stateLabelOf(ConnectStatus status) {
    switch (status) {
        case ConnectStatus::Disconnected:
            return MsgCode::UI_INFO_DISCONNECT;
        case ConnectStatus::Connecting:
            return MsgCode::UI_INFO_CONNECTING;
        case ConnectStatus::PrepareReconnecting:
        case ConnectStatus::Reconnecting:
            return MsgCode::UI_INFO_RECONNECTING;
        case ConnectStatus::Connected:
            return MsgCode::UI_INFO_CONNECTED;
    }
    return MsgCode::UI_INFO_NONE;
}

struct StatusBarText {
    MsgCode text;
    char const* icon;
};

StatusBarText sessionTextOf(ConnectionState const& state) {
    if (state.secondFactor) {
        return {MsgCode::UI_TR_SECOND_AUTH, kIconCode};
    }
    switch (state.status) {
        case ConnectStatus::Connecting:
            return state.queryingAuthType
                       ? StatusBarText{MsgCode::UI_TR_CHECK_AUTH_TYPE, kIconQuery}
                       : StatusBarText{MsgCode::CONNECTING, kIconBusy};
        case ConnectStatus::PrepareReconnecting:
            return {MsgCode::UI_INFO_WAIT_RECONNECTING, kIconBusy};
        case ConnectStatus::Reconnecting:
            return {MsgCode::UI_INFO_LOWER_RECONNECTING, kIconBusy};
        case ConnectStatus::Connected:
            return {MsgCode::UI_TR_STATE_CONNECTTED, kIconConnected};
        case ConnectStatus::Disconnected:
            break;
    }
    if (!state.startingProfileName.empty()) {
        return state.queryingAuthType ? StatusBarText{MsgCode::UI_TR_CHECK_AUTH_TYPE, kIconQuery}
                                      : StatusBarText{MsgCode::CONNECTING, kIconBusy};
    }
    return {state.sessionEnded ? MsgCode::UI_TR_STATE_DISCONNECT : MsgCode::UI_TR_STATE_NORMAL,
            kIconNormal};
}

// The link and the adapter speak before the session: without them nothing else is true.
StatusBarText statusBarTextOf(ConnectionState const& state) {
    if (state.link == LinkState::kReconnecting) {
        return {MsgCode::UI_INFO_CONNECTING_SERVICE, kIconBusy};
    }
    if (!state.adapterUsable) {
        return {MsgCode::UI_TR_STATE_VNIC_ERROR, kIconFailed};
    }
    return sessionTextOf(state);
}

}  // namespace

ViewState viewStateFor(ConnectionState const& state) {
    ViewState view;
    view.status = state.status;
    view.stateLabel = stateLabelOf(state.status);
    view.hasStatusText = state.link != LinkState::kFirstConnect;
    if (view.hasStatusText) {
        auto const [text, icon] = statusBarTextOf(state);
        view.statusText = text;
        view.statusIcon = icon;
    }
    view.showsTunnel = state.status == ConnectStatus::PrepareReconnecting ||
                       state.status == ConnectStatus::Reconnecting ||
                       state.status == ConnectStatus::Connected;
    view.silent = view.showsTunnel && state.silentSince.has_value();
    if (!state.pendingWarnings.empty()) {
        view.hasWarning = true;
        view.warning = static_cast<MsgCode>(state.pendingWarnings.front());
    }
    return view;
}

}  // namespace zorvanelink::ui
