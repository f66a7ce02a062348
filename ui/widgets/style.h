// Stylesheets and other compiled-in resources of the program. GUI thread.
#pragma once

#include <QString>

namespace zorvanelink::ui {

// Makes images, stylesheets and translations reachable from a static library. Cheap when repeated.
void InitAssets();

// The text of ":/assets/qss/<name>.qss"; empty, with an error in the log, when there is none.
QString LoadStyle(QString const& name);

}  // namespace zorvanelink::ui
