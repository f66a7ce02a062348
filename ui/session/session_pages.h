// What a session offers to its user: pages of the server, and the change of the password. GUI
// thread.
#pragma once

#include <QMetaType>
#include <QString>
#include <vector>

#include "ui/session/connection_state.h"
#include "ui/session/context.h"

namespace zorvanelink::ui {

struct SessionPage {
    QString title;
    QString address;
    bool local = false;     // a file below the data folder, else an address of the web
    bool password = false;  // for a new password; without an address it is asked for here

    bool operator==(SessionPage const&) const = default;
};

// Here, by the user's own wish.
bool MayChangePassword(ConnectionState const& state, Context const& context);

// An interruption takes them away until the tunnel is back; the end of the session for good.
std::vector<SessionPage> pagesFor(ConnectionState const& state, Context const& context);

}  // namespace zorvanelink::ui

Q_DECLARE_METATYPE(zorvanelink::ui::SessionPage)  // queued on its way from a card
