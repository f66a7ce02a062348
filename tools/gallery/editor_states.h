// The states of the connection editor for the gallery.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace zorvanelink::gallery {

// `save` renders the dialog over a window; called once a state.
void EditorStates(std::function<void(QString const& name, QWidget& dialog)> const& save,
                  QWidget* parent);

}  // namespace zorvanelink::gallery
