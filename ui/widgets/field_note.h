// Lines under the fields of a form. GUI thread.
#pragma once

#include <QLineEdit>

namespace zorvanelink::ui {

// Kinds of line; each field has at most one of each.
enum class NoteKind { kHint, kFault };

// The field must stand in a vertical layout. An empty text takes the line away.
void SetFieldNote(QLineEdit& field, QString const& text, NoteKind kind);

// Marks what has been refused, by its border, the reason below it and, for who cannot see, its
// description, until the field is changed.
void MarkRefused(QLineEdit& field, QString const& reason);
// Earlier, when what was wrong is right although the text is the same.
void TakeMark(QLineEdit& field);

}  // namespace zorvanelink::ui
