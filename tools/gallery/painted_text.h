// Every text that a window paints, whatever paints it: labels, cells, entries of menus, delegates.
#pragma once

#include <QColor>
#include <QRegion>
#include <QString>
#include <vector>

class QWidget;

namespace zorvanelink::gallery {

struct PaintedText {
    QString text;
    QRegion where;  // in the window, as far as it is not clipped
    int clipped;    // pixels of its width
    QColor color;
    QWidget* widget;  // that painted it
};

std::vector<PaintedText> PaintedTexts(QWidget& window);

}  // namespace zorvanelink::gallery
