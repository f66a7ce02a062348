#include "ui/widgets/elide.h"

#include <QApplication>
#include <QFontMetrics>
#include <QTextDocument>

namespace zorvanelink::ui {

QString GetElideText(QString const& text, int fontSize, int width, bool& elided) {
    QFont font = QApplication::font();
    font.setPixelSize(fontSize);
    QString const shown = QFontMetrics(font).elidedText(text, Qt::ElideRight, width);
    elided = shown != text;
    return shown;
}

QString PlainToolTip(QString const& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

}  // namespace zorvanelink::ui
