// What the window shows for a state of the connection: one pure function, tested as a table.
#pragma once

#include "common/message_catalogue.h"
#include "ui/session/connection_state.h"

namespace zorvanelink::ui {

struct ViewState {
    ConnectStatus status = ConnectStatus::Disconnected;  // picks shield, lamp, dot and tray icon
    common::MsgCode stateLabel{};
    common::MsgCode statusText{};  // of the status bar
    char const* statusIcon = "";   // resource path; empty for none
    bool hasStatusText = true;     // false while the wait form speaks instead
    bool showsTunnel = false;      // the tunnel's views, else the large shield
    bool silent = false;           // the service: what is shown may be out of date
    bool hasWarning = false;
    common::MsgCode warning{};

    bool operator==(ViewState const&) const = default;
};

ViewState viewStateFor(ConnectionState const& state);

}  // namespace zorvanelink::ui
