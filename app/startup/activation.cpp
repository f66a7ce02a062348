#include "app/startup/activation.h"

#include <qpa/qplatformnativeinterface.h>

#include <QGuiApplication>
#include <cstring>

#include "ui/widgets/x11.h"

namespace zorvanelink::ui {
namespace {

constexpr char kShow[] = "show";
constexpr char kX11Mark[] = "DESKTOP_STARTUP_ID";
constexpr char kWaylandMark[] = "XDG_ACTIVATION_TOKEN";
constexpr int kMaxMark = 1024;  // bytes; nobody's is longer

QByteArray markOf(char const* variable) {
    QByteArray const mark = qgetenv(variable);
    return mark.size() <= kMaxMark && !mark.contains('\n') ? mark : QByteArray();
}

// X11, where a window may come forward with the time of the user's click, which ends the mark.
void takeTimeOf(QByteArray const& mark) {
    int const at = mark.lastIndexOf("_TIME");
    xcb_timestamp_t const time = at < 0 ? 0 : mark.mid(at + int{sizeof "_TIME"} - 1).toUInt();
    auto* const native = QGuiApplication::platformNativeInterface();
    // Every such function comes as one type, and this is its own.
    auto const set_time = reinterpret_cast<void (*)(QScreen*, xcb_timestamp_t)>(
        reinterpret_cast<void (*)()>(native->nativeResourceFunctionForScreen("setapptime")));
    if (time != 0 && set_time != nullptr) {
        set_time(QGuiApplication::primaryScreen(), time);
    }
}

// Else the pointer stays busy until the desktop loses its patience. The text goes to the root
// window in messages of 20 bytes, its end included.
void endStart(QByteArray const& mark, QWidget const& window) {
    auto* const connection = X11Connection();
    QByteArray const text = "remove: ID=" + mark + '\0';
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = X11Atom("_NET_STARTUP_INFO_BEGIN");
    for (int at = 0; at < text.size(); at += int{sizeof message.data.data8}) {
        QByteArray const piece = text.mid(at, sizeof message.data.data8);
        message.data = {};
        std::memcpy(message.data.data8, piece.constData(), static_cast<std::size_t>(piece.size()));
        xcb_send_event(connection, 0, X11Root(), XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<char const*>(&message));
        message.type = X11Atom("_NET_STARTUP_INFO");
    }
    xcb_flush(connection);
}

}  // namespace

std::string ShowRequest() {
    return (kShow + ('\n' + markOf(kX11Mark)) + '\n' + markOf(kWaylandMark)).toStdString();
}

std::string AnswerShow(std::string const& request, QWidget const& window,
                       std::function<void()> const& show) {
    QList<QByteArray> const lines = QByteArray::fromStdString(request).split('\n');
    if (lines.value(0) != kShow) {
        return {};
    }
    QByteArray const mark = lines.value(1);
    bool const on_x11 = X11Connection() != nullptr && !mark.isEmpty();
    if (on_x11) {
        takeTimeOf(mark);
    }
    if (!lines.value(2).isEmpty()) {
        qputenv(kWaylandMark, lines.value(2));  // where Qt's Wayland platform looks for it
    }
    show();
    qunsetenv(kWaylandMark);  // good for one time only
    if (on_x11) {
        endStart(mark, window);
    }
    return "ok";
}

}  // namespace zorvanelink::ui
