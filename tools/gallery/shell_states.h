// The menus and boxes of the shell for the gallery.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

namespace zorvanelink::gallery {

// `save` renders the window with what stands in front of it, the last one on top; called once a
// state.
void ShellStates(std::function<void(QString const& name, QWidget& window,
                                    std::vector<QWidget*> const& fronts)> const& save);

}  // namespace zorvanelink::gallery
