#include "ui/widgets/fonts.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include "app/environment/app_ctrl.h"

namespace zorvanelink::ui {

void SetApplicationFont() {
    QString const latin = QStringLiteral("Noto Sans");
    QString const chinese = QStringLiteral("Noto Sans CJK SC");
    // The Chinese family has Latin letters as well, at the price of a file of 20 MB.
    QStringList families =
        IsChineseDisplayLangguage() ? QStringList{chinese, latin} : QStringList{latin, chinese};
    QString const own = QStringLiteral("Alibaba PuHuiTi");
    if (QFontDatabase().hasFamily(own)) {
        families.prepend(own);
    }
    QFont font = QApplication::font();
    font.setFamily(families.first());  // setFamilies alone leaves the old name standing
    font.setFamilies(families);
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
