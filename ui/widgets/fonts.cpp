#include "ui/widgets/fonts.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace zorvanelink::ui {

void SetApplicationFont() {
    QFont font = QApplication::font();
    font.setFamilies({QStringLiteral("Alibaba PuHuiTi"), QStringLiteral("Noto Sans CJK SC"),
                      QStringLiteral("Noto Sans")});
    font.setPixelSize(13);
    font.setStyleStrategy(QFont::PreferAntialias);
    font.setHintingPreference(QFont::PreferNoHinting);
    QApplication::setFont(font);
}

void SetApplicationStyle() {
    QStyle* style = QStyleFactory::create(QStringLiteral("Fusion"));
    QApplication::setStyle(style);
    QApplication::setPalette(style->standardPalette());
}

}  // namespace zorvanelink::ui
