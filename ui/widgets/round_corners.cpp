#include "ui/widgets/round_corners.h"

#include <qpa/qplatformnativeinterface.h>

#include <QGuiApplication>
#include <QPainterPath>

namespace zorvanelink::ui {
namespace {

constexpr int kRadius = 7;  // pixels, one less than in the stylesheets: the border stays whole

bool desktopBlendsWindows() {
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        return true;
    }
    auto* const native = QGuiApplication::platformNativeInterface();
    return native->nativeResourceForScreen("compositingEnabled",
                                           QGuiApplication::primaryScreen()) != nullptr;
}

}  // namespace

void PrepareRoundCorners(QWidget& window) {
    window.setAttribute(Qt::WA_TranslucentBackground, desktopBlendsWindows());
}

void CutRoundCorners(QWidget& window) {
    if (window.isMaximized()) {
        window.clearMask();
    } else if (!window.testAttribute(Qt::WA_TranslucentBackground)) {
        QPainterPath outline;
        outline.addRoundedRect(window.rect(), kRadius, kRadius);
        window.setMask(QRegion(outline.toFillPolygon().toPolygon()));
    }
}

}  // namespace zorvanelink::ui
