// What a card shows, as a pure function of the connection's state.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "common/message_catalogue.h"
#include "ui/session/connection_state.h"

namespace zorvanelink::ui {

enum class CardAction { kConnect, kDisconnect };

struct CardView {
    std::optional<common::MsgCode> stateText;  // none: no label
    std::string_view lamp;                     // image below ":/assets/images/"; empty: hidden
    std::string_view stateName;                // what the stylesheet colours the label by
    CardAction action = CardAction::kConnect;  // what the button does
    common::MsgCode buttonText = common::MsgCode::UI_INFO_CONNECT;
    bool buttonEnabled = true;
    bool menuEnabled = true;
    bool current = false;      // of the connection that the state tells of
    std::string_view logName;  // of the status, in the log

    bool operator==(CardView const&) const = default;
};

// Of the connection of that name.
CardView cardViewFor(ConnectionState const& state, std::string const& name);

}  // namespace zorvanelink::ui
