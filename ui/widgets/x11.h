// The X server behind Qt, for what Qt has no call for. GUI thread.
#pragma once

#include <xcb/xcb.h>

namespace zorvanelink::ui {

// Null where windows do not live on X11.
xcb_connection_t* X11Connection();
xcb_window_t X11Root();
// Waits for the server's answer.
xcb_atom_t X11Atom(char const* name);

}  // namespace zorvanelink::ui
