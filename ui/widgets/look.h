// What a state looks like, everywhere: shield, lamp, dot and tray icon change together, and each
// has a shape of its own, so that none is told by its colour alone.
#pragma once

#include <QString>

namespace zorvanelink::ui {

enum class Look { kDisconnected, kConnecting, kReconnecting, kConnected, kWarning, kFailed };

QString ShieldImage(Look look, bool large);
// Below ":/assets/images/", without its suffix.
char const* LampName(Look look);
// Of the status bar: a lamp, or an animation, which stands for the spinner.
char const* DotImage(Look look);
char const* TrayImage(Look look);

}  // namespace zorvanelink::ui
