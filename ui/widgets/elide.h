// Cutting texts to a width.
#pragma once

#include <QString>

namespace zorvanelink::ui {

// The text in the application's font at fontSize pixels, cut with an ellipsis to width pixels.
// `elided` tells whether it was cut.
QString GetElideText(QString const& text, int fontSize, int width, bool& elided);

// A tool tip of this text, which a tool tip would otherwise read as markup where it looks so.
QString PlainToolTip(QString const& text);

}  // namespace zorvanelink::ui
