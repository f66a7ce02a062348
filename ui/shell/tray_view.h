// What the tray shows for a state of the connection: one pure function, tested as a table.
#pragma once

#include <string>

#include "common/message_catalogue.h"
#include "ui/session/connection_state.h"

namespace zorvanelink::ui {

struct TrayView {
    ConnectStatus status = ConnectStatus::Disconnected;
    char const* icon = "";         // resource path
    common::MsgCode stateLabel{};  // of the tool tip and of the menu's head
    bool silent = false;           // the service; that is said instead of the label
    std::string name;              // of the connection that it is said of; empty: of none
    common::MsgCode message{};     // once this status is reached
    std::string told;              // the connection that the message is about
    std::string why;               // it has ended
    bool plainMessage = false;     // with the desktop's own picture instead of the tray's
    bool canConnect = false;
    bool canDisconnect = false;

    bool operator==(TrayView const&) const = default;
};

// `hasSelection`: there is a card that Connect would start.
TrayView trayViewFor(ConnectionState const& state, bool hasSelection);

}  // namespace zorvanelink::ui
