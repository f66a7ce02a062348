"""With a tray: the window goes and comes, the connection stays, the menu ends it all."""

import subprocess

import road
from waiting import wait_for


class Tray(road.Road):
    tray = True

    def keys(self, *keys):
        subprocess.run(["xdotool", "key", *keys], check=True, timeout=20)

    def quits_by_keys(self, client):
        self.keys("Up", "Return")
        return not client.alive()

    def test_closing_hides_and_the_menu_quits(self):
        service, client = self.online()
        wait_for("the tray icon", self.desktop.tray_has_icon, road.SECONDS)
        for close in (
            lambda: client.widgets.press("push button", "Close"),
            lambda: self.keys("alt+F4"),
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
        # A menu without a window is not among the accessible widgets: Quit is its last entry.
        wait_for("the client's end", lambda: self.quits_by_keys(client), road.SECONDS)
        self.assertEqual(client.process.returncode, 0)
        wait_for("a stop", lambda: service.messages("stop"), road.SECONDS)
        self.assertEqual(len(service.messages("stop")), 1)

    def test_the_tray_goes_and_comes_back(self):
        _, client = self.online()
        wait_for("the tray icon", self.desktop.tray_has_icon, road.SECONDS)
        client.widgets.press("push button", "Close")
        client.widgets.gone("push button", "Close", road.SECONDS)
        self.desktop.stop_tray()
        self.sees_online(client)
        self.desktop.start_tray()
        wait_for("the tray icon again", self.desktop.tray_has_icon, road.SECONDS)


if __name__ == "__main__":
    road.main()
