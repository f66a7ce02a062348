"""The gateway tells how one may log in, and the user chooses."""

import subprocess

import road


class AuthType(road.Road):
    def asked(self):
        """A service and a client whose user is asked for the way to log in."""
        self.write_profile()
        for settings in self.desktop.folder.rglob("AppConfig.ini"):
            text = settings.read_text()
            self.assertIn("LastAuthType=1", text)
            settings.write_text(text.replace("LastAuthType=1", "LastAuthType=0"))
        service = self.service()
        client = self.client()
        client.settle(road.SECONDS)
        client.widgets.click("push button", road.CONNECT, road.SECONDS)
        client.widgets.usable("push button", "Login", road.SECONDS)
        return service, client

    def test_wrong_password_asks_again_and_cancel_goes_offline(self):
        service, client = self.asked()
        subprocess.run(["xdotool", "type", "wrong"], check=True, timeout=20)
        client.widgets.press("push button", "Login")
        client.widgets.press("push button", "OK", road.SECONDS)
        client.widgets.usable("push button", "Login", road.SECONDS)
        client.widgets.press("push button", "Cancel")
        self.sees(client, "Disconnected", "Offline")
        client.widgets.usable("push button", road.CONNECT, road.SECONDS)
        self.assertEqual(len(service.messages("start")), 2)


if __name__ == "__main__":
    road.main()
