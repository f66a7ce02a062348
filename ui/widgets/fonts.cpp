#include "ui/widgets/fonts.h"

#include <QApplication>
#include <QFont>

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

}  // namespace zorvanelink::ui
