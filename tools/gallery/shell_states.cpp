#include "tools/gallery/shell_states.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QTimer>

#include "tools/gallery/sample_window.h"

namespace zorvanelink::gallery {
namespace {

using Save = std::function<void(QString const&, QWidget&, std::vector<QWidget*> const&)>;

QMenu& openMore(ui::MainWindow& window) {
    auto* const button = window.findChild<QToolButton*>(QStringLiteral("btn_main_more_"));
    button->click();
    auto& menu = *qobject_cast<QMenu*>(QApplication::activePopupWidget());
    // The offscreen platform's screen is smaller than the window.
    QPoint const corner = button->mapToGlobal(button->rect().bottomRight());
    menu.move(corner.x() - menu.width() + 1, corner.y() + 2);
    return menu;
}

void menus(Save const& save) {
    SampleWindow sample;
    QMenu& menu = openMore(sample.Window());
    menu.setActiveAction(menu.actions().at(2));
    save(QStringLiteral("menu-more"), sample.Window(), {&menu});
    QMenu& levels = *menu.actions().front()->menu();
    menu.setActiveAction(menu.actions().front());
    levels.popup({});
    levels.move(menu.x() - levels.width(), menu.y());
    save(QStringLiteral("menu-log-level"), sample.Window(), {&menu, &levels});
    menu.close();

    auto* const quit = sample.Window().findChild<QAction*>(QStringLiteral("tray_quit_"));
    auto* const tray = qobject_cast<QMenu*>(quit->associatedWidgets().first());
    tray->popup({});
    tray->move(sample.Window().geometry().center());
    save(QStringLiteral("menu-tray"), sample.Window(), {tray});
    tray->close();
}

// What an entry of the menu opens runs an event loop of its own.
void entry(Save const& save, char const* action, char const* name) {
    SampleWindow sample;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr) {
            look.stop();
            save(QLatin1String(name), sample.Window(), {dialog});
            dialog->reject();
        }
    });
    look.start(1);
    sample.Window().findChild<QAction*>(QLatin1String(action))->trigger();
    QApplication::processEvents();
}

}  // namespace

void ShellStates(Save const& save) {
    menus(save);
    entry(save, "more_settings_", "settings");
    entry(save, "more_about_", "box-about");
    entry(save, "more_help_", "box-help");
}

}  // namespace zorvanelink::gallery
