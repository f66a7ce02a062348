// What the connection knows about itself. One object, owned by the main window and shared by
// reference; GUI thread. What is enabled, visible, lit or labelled follows from it.
#pragma once

#include <cstdint>
#include <list>
#include <string>

#include "ui/config/connect_status.h"
#include "ui/link/service_link.h"

namespace zorvanelink::ui {

struct ConnectionState {
    std::string currentProfileName;     // what the last start or stop was for
    bool online = false;                // between ONLINE and the next status that is not online
    bool offline = true;                // while true, failures of the tunnel raise no box
    bool manualDisconnected = true;     // a start clears it, the end of the way down sets it
    bool errorShown = false;            // a box for this attempt is up or was shown
    bool reconnectingSeen = false;      // Reconnecting was shown in this connection
    std::string connectingProfileName;  // the name that CONNECTING must carry; empty: the current
    bool lastNetConfigHasGateway = false;  // routes of the last netconfig have a gateway
    std::list<int> pendingWarnings;  // codes that came with ONLINE, shown in the warning strip

    ConnectStatus status = ConnectStatus::Disconnected;
    bool stopSent = false;            // a "stop" has left for this connection
    bool beenOnline = false;          // in this attempt
    std::string untoldFailure;        // of this attempt, for its end if nothing else was shown
    bool sessionEnded = false;        // "Offline" stands in the status bar instead of "Ready"
    std::string startingProfileName;  // between a user's start and its first status
    bool queryingAuthType = false;    // that start asks the gateway for its types
    std::uint64_t attempt = 0;        // rises with each start, ONLINE and OFFLINE
    std::uint64_t starts = 0;  // rises with each start: a failure's tail outlives its OFFLINE

    LinkState link = LinkState::kFirstConnect;
    bool adapterUsable = true;

    bool Idle() const {
        return status == ConnectStatus::Disconnected && startingProfileName.empty();
    }
};

}  // namespace zorvanelink::ui
