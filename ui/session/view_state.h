// What the window shows for a state of the connection: one pure function, tested as a table.
#pragma once

#include "common/message_catalogue.h"
#include "ui/session/connection_state.h"
#include "ui/widgets/look.h"

namespace zorvanelink::ui {

struct ViewState {
    // A start counts as connecting before the service has said so.
    ConnectStatus status = ConnectStatus::Disconnected;
    Look look = Look::kDisconnected;
    common::MsgCode stateLabel{};  // of window and tray
    common::MsgCode statusText{};  // of the status bar
    char const* statusIcon = "";   // resource path; empty for none
    bool hasStatusText = true;     // false while the wait form speaks instead
    bool showsTunnel = false;      // the tunnel's views
    bool serviceGone = false;      // the link to it is being made again
    bool silent = false;           // the service: what is shown may be out of date
    bool hasWarning = false;
    common::MsgCode warning{};

    bool operator==(ViewState const&) const = default;
};

ViewState viewStateFor(ConnectionState const& state);

}  // namespace zorvanelink::ui
