// The application's font and style. GUI thread, once, before the first window.
#pragma once

namespace zorvanelink::ui {

// Sets the family and the body size of 13 pixels: the product's own family where it is installed or
// was loaded, else the display language's of a plain Debian, with the other one behind it.
void SetApplicationFont();

// One widget style with its light palette, whatever the desktop's theme: what our stylesheets
// leave open must not turn white on white.
void SetApplicationStyle();

}  // namespace zorvanelink::ui
