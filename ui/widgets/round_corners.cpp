#include "ui/widgets/round_corners.h"

#include <qpa/qplatformnativeinterface.h>

#include <QGuiApplication>
#include <QPainterPath>

namespace zorvanelink::ui {
namespace {

constexpr int kRadius = 7;  // pixels, one less than in the stylesheets: the border stays whole

}  // namespace

bool DesktopBlendsWindows() {
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        return true;
    }
    auto* const native = QGuiApplication::platformNativeInterface();
    return native->nativeResourceForScreen("compositingEnabled",
                                           QGuiApplication::primaryScreen()) != nullptr;
}

void PrepareRoundCorners(QWidget& window) {
    window.setAttribute(Qt::WA_TranslucentBackground, DesktopBlendsWindows());
}

void CutRoundCorners(QWidget& window) {
    QRect const frame = window.contentsRect();
    bool const blended =
        window.testAttribute(Qt::WA_TranslucentBackground) && DesktopBlendsWindows();
    if (blended || (window.isMaximized() && frame == window.rect())) {
        window.clearMask();
    } else {
        QPainterPath outline;
        int const radius = window.isMaximized() ? 0 : kRadius;
        outline.addRoundedRect(frame, radius, radius);
        window.setMask(QRegion(outline.toFillPolygon().toPolygon()));
    }
}

}  // namespace zorvanelink::ui
