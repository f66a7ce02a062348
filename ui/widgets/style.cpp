#include "ui/widgets/style.h"

#include <png.h>

#include <QApplication>
#include <QFile>
#include <QHash>

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

namespace {

// Qt's own reader loads the plug-ins of every other format before it looks at a picture.
QImage readPng(QString const& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QByteArray const bytes = file.readAll();
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&png, bytes.constData(),
                                         static_cast<std::size_t>(bytes.size())) == 0) {
        return {};
    }
    png.format = PNG_FORMAT_RGBA;
    QImage image(static_cast<int>(png.width), static_cast<int>(png.height),
                 QImage::Format_RGBA8888);
    bool const read =
        png_image_finish_read(&png, nullptr, image.bits(), image.bytesPerLine(), nullptr) != 0;
    return read ? image : QImage();
}

QPixmap readImage(QString const& path, bool sharper) {
    if (sharper) {
        QString sharp = path;
        sharp.insert(sharp.lastIndexOf(QLatin1Char('.')), QStringLiteral("@2x"));
        if (QImage image = readPng(sharp); !image.isNull()) {
            image.setDevicePixelRatio(2.0);
            return QPixmap::fromImage(std::move(image));
        }
    }
    return QPixmap::fromImage(readPng(path));
}

// The states of the window share a few small pictures; Qt's own cache is off, for its timer.
QHash<QString, QPixmap>* images = nullptr;

}  // namespace

QPixmap LoadImage(QString const& path) {
    InitAssets();
    if (images == nullptr) {
        images = new QHash<QString, QPixmap>;
        qAddPostRoutine([] { delete std::exchange(images, nullptr); });
    }
    bool const sharper = qApp->devicePixelRatio() > 1.0;
    QString const key = sharper ? path + QLatin1Char('@') : path;
    auto const known = images->constFind(key);
    return known != images->constEnd() ? *known : *images->insert(key, readImage(path, sharper));
}

}  // namespace zorvanelink::ui
