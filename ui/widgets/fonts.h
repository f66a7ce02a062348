// The application's font. GUI thread, once, before the first window.
#pragma once

namespace zorvanelink::ui {

// Sets the family (with the fall-backs that a plain Debian has) and the body size of 13 pixels.
void SetApplicationFont();

}  // namespace zorvanelink::ui
