// The one way of a secret from an edit field into the program. GUI thread.
#pragma once

#include <QLineEdit>
#include <string>

namespace zorvanelink::ui {

// The field's text as a sensitive value. The field is emptied, and every clear copy made on the
// way is overwritten.
std::string TakeSensitiveValue(QLineEdit& field);

// The same, and the field stays as it is.
std::string SensitiveValueOf(QLineEdit const& field);

// As if the user had typed that; no copy of it is left outside the field.
void TypeInto(QLineEdit& field, std::string const& clear);

// Empties the field and overwrites what stood in it.
void WipeField(QLineEdit& field);

// Shows what is typed, or hides it. In both modes no input method learns it, guesses it or turns
// its first letter into a capital.
void SetSecretEcho(QLineEdit& field, QLineEdit::EchoMode mode);

// What the field holds in bytes of UTF-8, counted without leaving a clear copy.
int Utf8Length(QLineEdit const& field);

}  // namespace zorvanelink::ui
