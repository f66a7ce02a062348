// Stylesheets and other compiled-in resources of the program. GUI thread.
#pragma once

#include <QPixmap>
#include <QString>

namespace zorvanelink::ui {

// Makes images, stylesheets and translations reachable from a static library. Cheap when repeated.
void InitAssets();

// The text of ":/assets/qss/<name>.qss", or of ":/assets/qss/<name>" for a name with a suffix of
// its own; empty, with an error in the log, when there is none.
QString LoadStyle(QString const& name);

// An image with the pixels that the sharpest screen can show; `path` is ":/assets/images/x.png".
QPixmap LoadImage(QString const& path);

}  // namespace zorvanelink::ui
