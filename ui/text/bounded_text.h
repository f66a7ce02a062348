// What a peer wrote, before it becomes a box or a prompt. Any thread.
#pragma once

#include <QString>

namespace zorvanelink::ui {

inline constexpr int kUnbrokenRun = 200;
inline constexpr int kMaxBoxText = 2000;

// At most `length` characters, an ellipsis in place of the rest; a longer run without a blank than
// `run` characters may be wrapped after each `run` of them, at a mark that has no width.
QString BoundedText(QString const& text, int run = kUnbrokenRun, int length = kMaxBoxText);

}  // namespace zorvanelink::ui
