// What the window says about a state in whole sentences.
#pragma once

#include <QString>

#include "ui/session/view_state.h"

namespace zorvanelink::ui {

// "Office: Connected".
QString NamedText(QString const& name, QString const& text);
// "Connect (Office)".
QString InBrackets(QString const& text, QString const& name);
// What the strip says; empty hides it.
QString StripText(ViewState const& view, ConnectionState const& state);
// "Office ended at 10:41 after 01:12:34: Ctrl Timeout".
QString EndText(SessionEnd const& end, QString const& name);
QString ServiceGoneHint();
QString SilentText();
// "Logging in, 12 s"; `answering` while the login waits for its user.
QString ProgressText(ConnectionState const& state, bool answering);

}  // namespace zorvanelink::ui
