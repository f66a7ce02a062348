// The state of a connection, as the service reports it and every view shows it.
#pragma once

#include <cstdint>

namespace zorvanelink::ui {

enum class ConnectStatus : std::uint16_t {
    Disconnected = 0,
    Connecting = 1,
    PrepareReconnecting = 2,
    Reconnecting = 3,
    Connected = 4,
};

}  // namespace zorvanelink::ui
