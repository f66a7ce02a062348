// Cutting texts to a width.
#pragma once

#include <QString>

namespace zorvanelink::ui {

// The text in the application's font at fontSize pixels, cut with an ellipsis to width pixels.
// `elided` tells whether it was cut.
QString GetElideText(QString const& text, int fontSize, int width, bool& elided);

}  // namespace zorvanelink::ui
