"""A panel that ends while the window is in its tray, and starts again."""

import road
from waiting import wait_for


class Tray(road.Road):
    tray = True

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
