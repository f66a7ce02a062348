// Finds texts and borders that are too faint for their ground.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

namespace zorvanelink::gallery {

// One line for each label, button or field below root whose text has a contrast below 4.5, and for
// each field or box without a mark whose border has one below 3. Measured on the pixels that are
// painted. A button or box that cannot be used has no claim.
std::vector<std::string> FaintThings(QWidget& root);

}  // namespace zorvanelink::gallery
