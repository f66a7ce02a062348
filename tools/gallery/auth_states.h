// The states of the login dialogs for the gallery.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace zorvanelink::gallery {

// `save` renders the dialog over a window; called once a state.
void AuthStates(std::function<void(QString const& name, QWidget& dialog)> const& save,
                QWidget* parent);

}  // namespace zorvanelink::gallery
