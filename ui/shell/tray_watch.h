// Notices that the desktop's tray may have come or gone, so that nobody asks in vain: an X11 tray
// announces itself to all and its window's end is an event; on D-Bus a name and two signals tell.
// GUI thread.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QTimer>

namespace zorvanelink::ui {

class TrayWatch : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    TrayWatch();

    // Whether the desktop has a tray now. The toolkit keeps its first no about D-Bus for good, so
    // it is asked only when a look of our own has found one.
    static bool DesktopHasTray();

    bool nativeEventFilter(QByteArray const& type, void* message, long* result) override;

  Q_SIGNALS:
    // Once for events that come together, after Qt has seen them too.
    void MayHaveChanged();

  private Q_SLOTS:
    void tell() { soon_.start(); }

  private:
    void watchBus();

    QTimer soon_;
};

}  // namespace zorvanelink::ui
