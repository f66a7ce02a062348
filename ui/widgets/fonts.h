// The application's font and style. GUI thread, once, before the first window.
#pragma once

namespace zorvanelink::ui {

// Sets the family (with the fall-backs that a plain Debian has) and the body size of 13 pixels.
void SetApplicationFont();

// One widget style with its light palette, whatever the desktop's theme: what our stylesheets
// leave open must not turn white on white.
void SetApplicationStyle();

}  // namespace zorvanelink::ui
