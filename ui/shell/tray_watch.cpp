#include "ui/shell/tray_watch.h"

#include <qpa/qplatformnativeinterface.h>
#include <xcb/xcb.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <QSystemTrayIcon>
#include <QWidget>

namespace zorvanelink::ui {
namespace {

constexpr auto kWatcher = "org.kde.StatusNotifierWatcher";
constexpr int kSentByClient = 0x80;  // bit of an event's type

bool isForeign(xcb_window_t window) {
    return QWidget::find(window) == nullptr;
}

// Somebody keeps the list of tray icons, and somebody shows it.
bool hasTrayOnBus() {
    constexpr int kWaitMs = 500;
    QString const service = QLatin1String(kWatcher);
    auto const bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(service)) {
        return false;
    }
    auto ask = QDBusMessage::createMethodCall(service, QStringLiteral("/StatusNotifierWatcher"),
                                              QStringLiteral("org.freedesktop.DBus.Properties"),
                                              QStringLiteral("Get"));
    ask << service << QStringLiteral("IsStatusNotifierHostRegistered");
    QDBusReply<QVariant> const shown = bus.call(ask, QDBus::Block, kWaitMs);
    return shown.isValid() && shown.value().toBool();
}

bool hasTrayOnX11() {
    auto* const native = QGuiApplication::platformNativeInterface();
    return native != nullptr && native->nativeResourceForScreen(
                                    "traywindow", QGuiApplication::primaryScreen()) != nullptr;
}

}  // namespace

TrayWatch::TrayWatch() {
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, &TrayWatch::MayHaveChanged);
    QCoreApplication::instance()->installNativeEventFilter(this);
    watchBus();
}

bool TrayWatch::DesktopHasTray() {
    return (hasTrayOnBus() || hasTrayOnX11()) && QSystemTrayIcon::isSystemTrayAvailable();
}

void TrayWatch::watchBus() {
    QString const service = QLatin1String(kWatcher);
    auto bus = QDBusConnection::sessionBus();
    auto* const owners =
        new QDBusServiceWatcher(service, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(owners, &QDBusServiceWatcher::serviceOwnerChanged, this, &TrayWatch::tell);
    // From any sender: naming one would ask the bus for its owner and wait for the answer.
    for (char const* const signal :
         {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus.connect({}, QStringLiteral("/StatusNotifierWatcher"), service, QLatin1String(signal),
                    this, SLOT(tell()));
    }
}

bool TrayWatch::nativeEventFilter(QByteArray const& type, void* message, long* /*result*/) {
    if (type != "xcb_generic_event_t") {
        return false;
    }
    auto const* const event = static_cast<xcb_generic_event_t const*>(message);
    switch (event->response_type & ~kSentByClient) {
        case XCB_CLIENT_MESSAGE:  // to the root window: a manager of the desktop has come
            if (isForeign(static_cast<xcb_client_message_event_t const*>(message)->window)) {
                tell();
            }
            break;
        case XCB_DESTROY_NOTIFY:  // of others, Qt follows the tray's window only
            if (isForeign(static_cast<xcb_destroy_notify_event_t const*>(message)->window)) {
                tell();
            }
            break;
        default:
            break;
    }
    return false;
}

}  // namespace zorvanelink::ui
