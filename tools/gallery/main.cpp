// Renders windows and dialogs in their states to PNG files, and tells what of them is cut or faint.
// zvl_gallery FOLDER en|zh LABEL [NAME...]
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

// What stands, the last on top, on a backdrop.
void save(QString const& name, std::vector<QWidget*> const& shown) {
    QWidget const& window = *shown.front();
    QRect area = window.geometry();
    for (QWidget const* const front : shown) {
        area = area.united(front->geometry());
    }
    qreal const ratio = qApp->devicePixelRatio();
    QImage image((area.size() + QSize(2 * kMargin, 2 * kMargin)) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);  // where an edge is hardest to see
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QPoint(kMargin, kMargin) - area.topLeft());
    for (QWidget* widget : shown) {
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
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication const application(argc, argv);
    QStringList const arguments = QApplication::arguments();
    if (arguments.size() < 4) {
        std::fputs("zvl_gallery FOLDER en|zh LABEL [NAME...]\n", stderr);
        return 2;
    }
    gallery::g_folder = arguments[1];
    gallery::g_suffix = QStringLiteral("-%1-%2").arg(arguments[2], arguments[3]);
    bool const chinese = arguments[2] == QLatin1String("zh");
    ui::AppCtrl::Instance().language =
        chinese ? ui::SysLang::kSimplifiedChinese : ui::SysLang::kEnglish;
    gallery::installTranslators();
    ui::SetApplicationFont();
    ui::SetApplicationStyle();
    for (gallery::Row const& row : gallery::AllRows()) {
        if (arguments.size() > 4 && arguments.indexOf(QLatin1String(row.name), 4) < 0) {
            continue;
        }
        gallery::Stage stage(true);
        row.set(stage);
        stage.Settle();
        gallery::save(QLatin1String(row.name), stage.Shown());
        for (QWidget* const window : stage.Shown()) {
            for (std::string const& text : gallery::CutTexts(*window)) {
                std::fprintf(stderr, "%s: cut text: %s\n", row.name, text.c_str());
            }
            for (std::string const& thing : gallery::FaintThings(*window)) {
                std::fprintf(stderr, "%s: faint: %s\n", row.name, thing.c_str());
            }
        }
    }
    return 0;
}
