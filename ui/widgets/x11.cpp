#include "ui/widgets/x11.h"

#include <qpa/qplatformnativeinterface.h>

#include <QGuiApplication>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace zorvanelink::ui {
namespace {

void* resource(char const* name) {
    return QGuiApplication::platformNativeInterface()->nativeResourceForIntegration(name);
}

}  // namespace

xcb_connection_t* X11Connection() {
    bool const there = QGuiApplication::platformName() == QLatin1String("xcb");
    return there ? static_cast<xcb_connection_t*>(resource("connection")) : nullptr;
}

xcb_window_t X11Root() {
    return static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(resource("rootwindow")));
}

xcb_atom_t X11Atom(char const* name) {
    auto* const connection = X11Connection();
    auto const length = static_cast<std::uint16_t>(std::strlen(name));
    std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> const reply(
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, length, name), nullptr),
        &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace zorvanelink::ui
