// What the connection knows about itself. One object, owned by the session; GUI thread. What is
// enabled, visible, lit or labelled follows from it.
#pragma once

#include <QDateTime>
#include <cstdint>
#include <list>
#include <optional>
#include <string>

#include "ui/config/connect_status.h"
#include "ui/link/service_link.h"

namespace zorvanelink::ui {

// A "stop" that has left and that no OFFLINE has answered yet.
struct UnansweredStop {
    std::string profileName;
    bool overtaken = false;  // that connection has been started again since
};

// How the last session or login ended.
struct SessionEnd {
    std::string name;
    QDateTime at;
    QDateTime since;  // when it was up; invalid for a login
    std::string why;  // one line; empty when the user has ended it, or nobody knows
};

struct ConnectionState {
    std::string currentProfileName;     // what the last start or stop was for
    bool online = false;                // between ONLINE and the next status that is not online
    bool offline = true;                // while true, failures of the tunnel raise no box
    bool manualDisconnected = true;     // no stop is owed: nothing was started or reported since
    bool errorShown = false;            // a box for this attempt is up or was shown
    bool reconnectingSeen = false;      // Reconnecting was shown in this connection
    std::string connectingProfileName;  // the name that CONNECTING must carry; empty: the current
    std::list<int> pendingWarnings;     // codes that came with ONLINE, shown in the warning strip

    ConnectStatus status = ConnectStatus::Disconnected;
    std::string startingProfileName;     // between a start and its first status
    bool prompting = false;              // a prompt of an attempt stands, no start of it has left
    std::optional<UnansweredStop> stop;  // at most one at a time
    bool queryingAuthType = false;       // the start asks the gateway for its types
    bool beenOnline = false;             // in this attempt
    bool secondFactor = false;           // the user is typing a code
    std::string untoldFailure;           // of this attempt, for its end if nothing else was shown
    std::string endReason;               // why the present connection is about to end
    std::optional<SessionEnd> lastEnd;   // until the next start
    QDateTime since;  // of the status, a start or an interruption counted from its beginning
    bool sessionEnded = false;  // "Offline" stands in the status bar instead of "Ready"

    std::uint64_t attempt = 0;  // rises with each start, ONLINE and OFFLINE
    std::uint64_t starts = 0;   // rises with each start and each lost link

    LinkState link = LinkState::kFirstConnect;
    std::optional<QDateTime> silentSince;  // a service that spoke all the time says nothing
    bool adapterUsable = true;

    bool Idle() const {
        return status == ConnectStatus::Disconnected && startingProfileName.empty();
    }
    // The present connection has been told to stop.
    bool StopSent() const {
        return stop && !stop->overtaken && stop->profileName == currentProfileName;
    }
    // What the service says is still of the attempt before this one.
    bool OfAttemptBefore() const {
        return prompting || (stop && stop->overtaken && stop->profileName == currentProfileName);
    }
    // Nothing of a login can fail.
    bool LoginIsOver() const { return online && !secondFactor; }
    // The service may still be asked and answered: not down, and not told to go down.
    bool SessionStands() const { return !offline && !StopSent(); }
};

}  // namespace zorvanelink::ui
