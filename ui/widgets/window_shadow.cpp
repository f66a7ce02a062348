#include "ui/widgets/window_shadow.h"

#include <xcb/shape.h>

#include <qdrawutil.h>
#include <QEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>

#include "ui/widgets/round_corners.h"
#include "ui/widgets/x11.h"

namespace zorvanelink::ui {
namespace {

// Pixels, before scaling.
constexpr int kMargin = 32;
constexpr int kDrop = 6;  // how much lower than the window its shadow lies
constexpr int kRadius = 8;
constexpr int kCorner = kMargin + kRadius + kDrop;  // of the picture, which is stretched between
constexpr qreal kDarkest = 0.15;

// The first kilobytes hold what any window manager lists.
bool windowManagerKnowsExtents() {
    static bool const knows = [] {
        constexpr std::uint32_t kWords = 1024;
        auto* const connection = X11Connection();
        if (connection == nullptr) {
            return false;
        }
        xcb_atom_t const wanted = X11Atom("_GTK_FRAME_EXTENTS");
        std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> const reply(
            xcb_get_property_reply(
                connection,
                xcb_get_property(connection, 0, X11Root(), X11Atom("_NET_SUPPORTED"), XCB_ATOM_ATOM,
                                 0, kWords),
                nullptr),
            &std::free);
        if (!reply || reply->format != 32) {
            return false;
        }
        auto const* const atoms =
            static_cast<xcb_atom_t const*>(xcb_get_property_value(reply.get()));
        auto const* const end = atoms + xcb_get_property_value_length(reply.get()) / 4;
        return std::find(atoms, end, wanted) != end;
    }();
    return knows;
}

// How far a point lies outside the window's outline.
qreal distance(qreal x, qreal y, qreal size) {
    qreal const half = size / 2 - kMargin - kRadius;
    qreal const across = qMax(qAbs(x - size / 2) - half, 0.0);
    qreal const along = qMax(qAbs(y - kDrop - size / 2) - half, 0.0);
    return std::hypot(across, along) - kRadius;
}

// Corners and a strip between them.
QPixmap shadowPicture() {
    constexpr int kSize = 2 * kCorner + 1;
    constexpr qreal kReach = kMargin - kDrop;
    QImage image(kSize, kSize, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            qreal const out = distance(x + 0.5, y + 0.5, kSize) / kReach;
            qreal const rest = qBound(0.0, 1 - out, 1.0);
            image.setPixel(x, y, qRgba(0, 0, 0, qRound(255 * kDarkest * rest * rest)));
        }
    }
    return QPixmap::fromImage(image);
}

bool fillsScreen(QWidget const& window) {
    QRect const frame = window.geometry().marginsRemoved(window.contentsMargins());
    QRect const visible = window.screen()->availableGeometry();
    return window.isMaximized() || window.isFullScreen() ||
           (frame.top() <= visible.top() && frame.bottom() >= visible.bottom());
}

}  // namespace

void WindowShadow::Give(QWidget& window) {
    if (window.testAttribute(Qt::WA_TranslucentBackground) && windowManagerKnowsExtents()) {
        new WindowShadow(window);
    }
}

WindowShadow::WindowShadow(QWidget& window)
    : QObject(&window), window_(window), picture_(shadowPicture()) {
    window.setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    window.installEventFilter(this);
}

// Before the window manager sees the window, and at each change of its size. In the server's
// pixels: of the margins, and of what takes clicks.
void WindowShadow::tellExtents() {
    qreal const ratio = window_.devicePixelRatioF();
    auto const margin = static_cast<std::uint32_t>(std::lround(kMargin * ratio));
    std::array<std::uint32_t, 4> const extents{margin, margin, margin, margin};
    QRect const frame = QRectF(QPointF(window_.contentsRect().topLeft()) * ratio,
                               QSizeF(window_.contentsRect().size()) * ratio)
                            .toRect();
    xcb_rectangle_t const takes{
        static_cast<std::int16_t>(frame.x()), static_cast<std::int16_t>(frame.y()),
        static_cast<std::uint16_t>(frame.width()), static_cast<std::uint16_t>(frame.height())};
    static xcb_atom_t const property = X11Atom("_GTK_FRAME_EXTENTS");
    auto const id = static_cast<xcb_window_t>(window_.internalWinId());
    auto* const connection = X11Connection();
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, id, property, XCB_ATOM_CARDINAL, 32,
                        extents.size(), extents.data());
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                         XCB_CLIP_ORDERING_UNSORTED, id, 0, 0, 1, &takes);
}

bool WindowShadow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show) {
        tellExtents();
    } else if (event->type() == QEvent::Paint) {
        paint();
    }
    return QObject::eventFilter(watched, event);
}

void WindowShadow::paint() {
    // What blends windows may end before they do: then the margins would be black.
    if (blended_ != DesktopBlendsWindows()) {
        blended_ = !blended_;
        CutRoundCorners(window_);
    }
    if (blended_ && !fillsScreen(window_)) {
        constexpr QMargins kParts(kCorner, kCorner, kCorner, kCorner);
        QPainter painter(&window_);
        qDrawBorderPixmap(&painter, window_.rect(), kParts, picture_, picture_.rect(), kParts);
    }
}

}  // namespace zorvanelink::ui
