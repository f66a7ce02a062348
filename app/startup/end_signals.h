// Turns the signals by which a session, a terminal or an administrator ends a program into a call
// on the GUI thread.
#pragma once

#include <QObject>
#include <functional>

namespace zorvanelink::ui {

// Calls leave for SIGTERM, SIGINT and SIGHUP, as often as they come, as long as the owner lives.
// One that our starter has us ignore (nohup) stays ignored. Once in a process, GUI thread.
void LeaveOnSignals(QObject& owner, std::function<void()> const& leave);

}  // namespace zorvanelink::ui
