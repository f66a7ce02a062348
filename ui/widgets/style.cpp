#include "ui/widgets/style.h"

#include <QApplication>
#include <QFile>

#include "components/logger/logger.h"

// The macro declares functions of the global namespace.
static void initResources() {
    Q_INIT_RESOURCE(zvl);
    Q_INIT_RESOURCE(zvl_translations);
}

namespace zorvanelink::ui {

void InitAssets() {
    static bool const done = [] {
        initResources();
        QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
        return true;
    }();
    Q_UNUSED(done);
}

QString LoadStyle(QString const& name) {
    InitAssets();
    QString const suffix = name.contains(QLatin1Char('.')) ? QString() : QStringLiteral(".qss");
    QFile file(QStringLiteral(":/assets/qss/") + name + suffix);
    if (!file.open(QIODevice::ReadOnly)) {
        components::logger::Log().error("Failed to load style {}", name.toStdString());
        return {};
    }
    return QString::fromUtf8(file.readAll());
}

QPixmap LoadImage(QString const& path) {
    InitAssets();
    qreal const ratio = qApp->devicePixelRatio();
    if (ratio > 1.0) {
        QString sharp = path;
        sharp.insert(sharp.lastIndexOf(QLatin1Char('.')), QStringLiteral("@2x"));
        QPixmap image(sharp);
        if (!image.isNull()) {
            image.setDevicePixelRatio(2.0);
            return image;
        }
    }
    return QPixmap(path);
}

}  // namespace zorvanelink::ui
