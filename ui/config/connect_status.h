// The states of a connection, as everything that shows one knows them.
#pragma once

#include <QMetaType>
#include <cstdint>

namespace zorvanelink::ui {

enum class ConnectStatus : std::uint16_t {
    Disconnected = 0,         // no tunnel and none being made
    Connecting = 1,           // the login is under way
    PrepareReconnecting = 2,  // the tunnel broke, the service waits before it tries again
    Reconnecting = 3,         // the service is logging in again
    Connected = 4,            // tunnel up
};

}  // namespace zorvanelink::ui

Q_DECLARE_METATYPE(zorvanelink::ui::ConnectStatus)
