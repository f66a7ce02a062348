// How well things stand out from what they lie on, after the formula of WCAG 2.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

namespace zorvanelink::gallery {

// What a reader with weak eyes would miss: texts below 4.5 (what is written on buttons and entries
// that do nothing may be fainter), borders of fields and of boxes without a mark below 3. A line
// each.
std::vector<std::string> FaintThings(QWidget& window);

// Whether the control, which has the focus, looks different without it, by at least 3.
bool ShowsFocus(QWidget& window, QWidget& control);

// Whether all four sides of the window are seen on a white desktop.
bool HasEdge(QWidget& window);

}  // namespace zorvanelink::gallery
