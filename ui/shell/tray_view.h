// What the tray shows for a state of the connection: one pure function, tested as a table.
#pragma once

#include "common/message_catalogue.h"
#include "ui/session/connection_state.h"

namespace zorvanelink::ui {

struct TrayView {
    ConnectStatus status = ConnectStatus::Disconnected;
    char const* icon = "";         // resource path; empty: as it was
    common::MsgCode stateLabel{};  // of the tool tip
    common::MsgCode message{};     // once this status is reached
    bool plainMessage = false;     // with the desktop's own picture instead of the tray's
    bool canConnect = false;
    bool canDisconnect = false;

    bool operator==(TrayView const&) const = default;
};

// `hasSelection`: there is a card that Connect would start.
TrayView trayViewFor(ConnectionState const& state, bool hasSelection);

}  // namespace zorvanelink::ui
