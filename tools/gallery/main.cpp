// Renders windows and dialogs in their states to PNG files, and tells of texts that are cut.
// zvl_gallery FOLDER en|zh SCALE [NAME]
#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QPainter>
#include <QTranslator>
#include <cstdio>

#include "app/environment/app_ctrl.h"
#include "tools/gallery/contrast.h"
#include "tools/gallery/cut_text.h"
#include "tools/gallery/stage.h"
#include "ui/widgets/fonts.h"
#include "ui/widgets/style.h"

namespace zorvanelink::gallery {
namespace {

constexpr int kMargin = 32;  // of backdrop around a window

QString g_folder;
QString g_suffix;

void drawShadow(QPainter& painter, QRect const& window) {
    painter.setPen(Qt::NoPen);
    for (int i = 20; i > 0; i -= 2) {
        QColor shade(Qt::black);
        shade.setAlphaF(0.012);
        painter.setBrush(shade);
        painter.drawRoundedRect(window.adjusted(-i, -i + 6, i, i + 6), 8 + i, 8 + i);
    }
}

// What stands, the last on top, on a backdrop.
void save(QString const& name, std::vector<QWidget*> const& shown) {
    QWidget const& window = *shown.front();
    QRect area = window.geometry();
    for (QWidget* front : shown) {
        // The offscreen platform's screen is smaller than some windows, so dialogs land askew.
        if (front != &window && qobject_cast<QDialog*>(front) != nullptr) {
            front->move(window.geometry().center() - front->rect().center());
        }
        area = area.united(front->geometry());
    }
    qreal const ratio = qApp->devicePixelRatio();
    QImage image((area.size() + QSize(2 * kMargin, 2 * kMargin)) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(QColor(Qt::lightGray).lighter(108));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QPoint(kMargin, kMargin) - area.topLeft());
    for (QWidget* widget : shown) {
        drawShadow(painter, widget->geometry());
        widget->render(&painter, widget->pos(), {}, QWidget::DrawChildren);
    }
    painter.end();
    image.save(QStringLiteral("%1/%2%3.png").arg(g_folder, name, g_suffix));
}

void installTranslators() {
    ui::InitAssets();
    if (!ui::IsChineseDisplayLangguage()) {
        return;
    }
    for (auto const* name : {":/translations/zh_Hans.qm", ":/translations/qt_zh_CN.qm"}) {
        auto* translator = new QTranslator(qApp);
        if (translator->load(QLatin1String(name))) {
            QCoreApplication::installTranslator(translator);
        }
    }
}

}  // namespace
}  // namespace zorvanelink::gallery

int main(int argc, char** argv) {
    using namespace zorvanelink;
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication const application(argc, argv);
    QStringList const arguments = QApplication::arguments();
    if (arguments.size() < 4) {
        std::fputs("zvl_gallery FOLDER en|zh SCALE [NAME]\n", stderr);
        return 2;
    }
    gallery::g_folder = arguments[1];
    gallery::g_suffix = QStringLiteral("-%1-%2x").arg(arguments[2], arguments[3]);
    bool const chinese = arguments[2] == QLatin1String("zh");
    ui::AppCtrl::Instance().language =
        chinese ? ui::SysLang::kSimplifiedChinese : ui::SysLang::kEnglish;
    gallery::installTranslators();
    ui::SetApplicationFont();
    ui::SetApplicationStyle();
    for (gallery::Row const& row : gallery::AllRows()) {
        if (arguments.size() > 4 && arguments[4] != QLatin1String(row.name)) {
            continue;
        }
        gallery::Stage stage(true);
        row.set(stage);
        stage.Settle();
        gallery::save(QLatin1String(row.name), stage.Shown());
        for (std::string const& text : gallery::CutTexts(*stage.Shown().back())) {
            std::fprintf(stderr, "%s: cut text: %s\n", row.name, text.c_str());
        }
        for (std::string const& thing : gallery::FaintThings(*stage.Shown().back())) {
            std::fprintf(stderr, "%s: faint: %s\n", row.name, thing.c_str());
        }
    }
    return 0;
}
