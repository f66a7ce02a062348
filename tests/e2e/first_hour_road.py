"""From the first start to daily use without touching a file, once with the mouse and once by
keyboard alone."""

import os
import shutil
import subprocess

import road
from hands import Keyboard, Mouse, keys, write
from waiting import wait_for

SCENARIO = road.SCENARIOS / "choose-type.json"
PASSWORD, PIN = road.PASSWORDS[0], "rosebud-pin"
road.PASSWORDS += (PIN,)


class FirstHour(road.Road):
    tray = True

    def test_with_the_mouse(self):
        self._first_hour(Mouse)

    def test_by_keyboard_alone(self):
        self._first_hour(Keyboard)

    def _first_hour(self, hands_of):
        self._forget_settings()
        service = self.service("--scenario", str(SCENARIO))
        client = self.client()
        client.settle(road.SECONDS)
        hands = hands_of(client)
        self._add_connection(hands)
        hands.press("push button", "Cancel")  # of the choice of the login's type
        self.sees(client, "Disconnected", "Offline")
        hands.press("push button", road.CONNECT)
        self._choose_type(hands, client)
        self._login(hands, "no password")
        hands.press("push button", "OK")
        hands.press("check box", "Remember Password")
        self._login(hands, PASSWORD)
        self.sees_online(client)
        self._check_record(service)
        self.desktop.click_tray_icon()  # the window has made place

        self._switch_automatic_login_on(hands)
        self._close_and_restore(hands, client)
        self._quit(client, service)

        client = self.client("second-day")
        self.sees_online(client)
        self._quit(client, service)

    def _check_record(self, service):
        starts = service.messages("start")
        types = [start["authType"] for start in starts]
        self.assertEqual(types, ["none", "none", "pwdWithCert", "pwdWithCert"])
        self.assertEqual({start["user"] for start in starts[2:]}, {"alice"})

    def _switch_automatic_login_on(self, hands):
        hands.press("push button", "More")
        keys("Down", "Down", "Down", "Return")  # level, updates, settings
        hands.press("check box", "Connect automatically at start")
        hands.press("push button", "OK")

    def _close_and_restore(self, hands, client):
        hands.close()
        client.widgets.gone("push button", "Close", road.SECONDS)
        self.assertTrue(client.alive())
        self.desktop.click_tray_icon()
        self.sees_online(client)

    def _quit(self, client, service):
        stops = len(service.messages("stop"))
        self.open_tray_menu(client)
        keys("Up", "Return")  # its last entry
        wait_for("the client's end", lambda: not client.alive(), road.SECONDS)
        self.assertEqual(client.process.returncode, 0)
        wait_for("a stop", lambda: len(service.messages("stop")) > stops, road.SECONDS)
        self.assertEqual(len(service.messages("stop")), stops + 1)

    def _add_connection(self, hands):
        hands.press("push button", "Add Connection")
        hands.fill("Connection Name", "Head office")
        hands.fill("Server.*", "vpn.example.com")
        hands.press("push button", "Next Step")

    def _choose_type(self, hands, client):
        hands.press("radio button", "Username \\+ Certificate")
        hands.fill("Username", "alice")
        hands.press("push button", "Select Certificate")
        keys("Return")  # the first of the kinds: a file
        hands.press("push button", "Import")
        hands.fill("File name:", str(self._certificate()))
        keys("Return")
        client.widgets.gone("text", "File name:", road.SECONDS)
        hands.fill("Please input the password.*", PIN)
        hands.press("push button", "OK")
        hands.press("check box", "Alice Example")
        hands.press("push button", "OK")

    def _login(self, hands, password):
        hands.fill("Password", password)
        hands.press("push button", "Login")

    def _certificate(self):
        """A PKCS#12 file, made for this road."""
        folder = self.desktop.sockets
        key, cert, file = (folder / name for name in ("key.pem", "cert.pem", "alice.p12"))
        subprocess.run(
            ["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2"]
            + ["-subj", "/CN=Alice Example", "-keyout", key, "-out", cert],
            check=True, capture_output=True, timeout=60,
        )  # fmt: skip
        argv = ["openssl", "pkcs12", "-export", "-inkey", key, "-in", cert, "-out", file]
        subprocess.run([*argv, "-passout", "stdin"], input=PIN.encode(), check=True, timeout=60)
        return file

    def _forget_settings(self):
        shutil.rmtree(os.environ["XDG_CONFIG_HOME"], ignore_errors=True)


if __name__ == "__main__":
    road.main()
