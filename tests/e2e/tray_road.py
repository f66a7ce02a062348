"""With a tray: the window goes and comes, the connection stays, the menu ends it all."""

import subprocess

import road
from waiting import wait_for


class Tray(road.Road):
    tray = True

    def test_closing_hides_and_the_menu_quits(self):
        service, client = self.online()
        wait_for("the tray icon", self.desktop.tray_has_icon, road.SECONDS)
        for close in (
            lambda: client.widgets.press("push button", "Close"),
            lambda: subprocess.run(["xdotool", "key", "alt+F4"], check=True, timeout=20),
        ):
            close()
            client.widgets.gone("push button", "Close", road.SECONDS)
            self.assertTrue(client.alive())
            self.desktop.click_tray_icon()
            self.sees_online(client)
        self.assertEqual(service.messages("stop"), [])

        client.widgets.press("push button", "Close")
        client.widgets.gone("push button", "Close", road.SECONDS)
        self.desktop.click_tray_icon(button=3)
        client.widgets.click("menu item", "Quit", road.SECONDS)
        wait_for("the client's end", lambda: not client.alive(), road.SECONDS)
        self.assertEqual(client.process.returncode, 0)
        wait_for("a stop", lambda: service.messages("stop"), road.SECONDS)
        self.assertEqual(len(service.messages("stop")), 1)


if __name__ == "__main__":
    road.main()
