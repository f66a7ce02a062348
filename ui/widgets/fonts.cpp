#include "ui/widgets/fonts.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include "app/environment/app_ctrl.h"
#include "ui/widgets/focus_ring.h"

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
    QPalette palette = style->standardPalette();
    palette.setColor(QPalette::PlaceholderText, QColor(0x68, 0x71, 0x7C));  // no sheet can say it
    palette.setColor(QPalette::Link, QColor(0x16, 0x65, 0xD8));
    QApplication::setPalette(palette);
    FocusRing::Install();
}

}  // namespace zorvanelink::ui
