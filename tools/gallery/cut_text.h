// Finds texts that do not fit the place they have on the screen.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

namespace zorvanelink::gallery {

// One line for each visible label, button, line edit or box text below root whose text is wider or
// higher than its rectangle, and for whatever else is painted past the edge of its place. A text
// that is shortened on purpose (an ellipsis, with the whole text in the tooltip) is none.
std::vector<std::string> CutTexts(QWidget& root);

}  // namespace zorvanelink::gallery
