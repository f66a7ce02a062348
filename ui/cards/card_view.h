// What a card shows, as a pure function of what is known.
#pragma once

#include <optional>

#include "common/message_catalogue.h"
#include "ui/config/connect_status.h"

namespace zorvanelink::ui {

enum class CardAction { kConnect, kDisconnect };

struct CardView {
    std::optional<common::MsgCode> stateText;  // none: no label
    char const* lamp = nullptr;                // image below ":/assets/images/"; null: hidden
    bool menuEnabled = false;
    CardAction action = CardAction::kConnect;
    common::MsgCode buttonText = common::MsgCode::UI_INFO_CONNECT;
    std::optional<bool> buttonEnabled;  // none: stays as it is
    char const* stateName = "";         // what the stylesheet colours the label by
};

// `own` is this card's state; `otherRuns` whether another card's connection is in any state but
// Disconnected; `adapterUsable` whether a connection could be started at all.
CardView cardViewFor(ConnectStatus own, bool otherRuns, bool adapterUsable);

}  // namespace zorvanelink::ui
