"""A password that is over, and one that the user wants to change."""

from pathlib import Path

import road
from hands import Keyboard, Mouse, keys
from waiting import wait_for

SCENARIO = Path(road.ROOT, "tools", "simservice", "scenarios", "new-password.json")
OLD, NEW, NEXT = road.PASSWORDS[0], "Horse-battery-9", "Staple-battery-8"
road.PASSWORDS += (NEW, NEXT, "Alice-Demo-0", "too-simple")


class NewPassword(road.Road):
    tray = True

    def test_an_expired_one_then_one_of_the_users_own_will(self):
        options = ("--scenario", str(SCENARIO))
        self.write_profile(*options)
        service = self.service(*options)
        client = self.client()
        client.settle(road.SECONDS)
        client.widgets.click("push button", road.CONNECT, road.SECONDS)
        hands = Mouse(client)
        client.widgets.find("label", "Change Password at Expiration", road.SECONDS)
        for password, answer in (("too-simple", "Please follow the password policy"),
                                 ("Alice-Demo-0", "Do not use the historical.*")):  # fmt: skip
            self._fill(hands, OLD, password)
            self._read(client, answer)
        self._fill(hands, OLD, NEW)
        self._read(client, "Your password is changed successfully. Please log in.*")
        self.sees(client, "Disconnected")
        wait_for("a stop", lambda: len(service.messages("stop")) == 1, road.SECONDS)

        client.widgets.click("push button", road.CONNECT, road.SECONDS)
        self._read(client, ".*about to expire.*")
        self.sees_online(client)
        client.widgets.usable("push button", "Change Password URL Head office", road.SECONDS)
        client.widgets.click("push button", "Change Password Head office", road.SECONDS)
        self._fill(Keyboard(client), NEW, NEXT)
        self._read(client, "Your password is changed successfully")
        self.sees_online(client)
        self.assertEqual(len(service.messages("stop")), 1)

        client.widgets.click("push button", road.DISCONNECT, road.SECONDS)
        client.widgets.usable("push button", road.CONNECT, road.SECONDS)
        client.widgets.click("push button", road.CONNECT, road.SECONDS)
        self._read(client, ".*about to expire.*")
        self.sees_online(client)  # with the one that the profile now holds
        for message in service.messages("set"):
            self.assertEqual(message["newPassword"], "****")

    def _fill(self, hands, current, password):
        hands.fill("Current Password", current)
        hands.fill("New Password", password)
        hands.fill("Confirm Password", password)
        keys("Return")

    def _read(self, client, text):
        client.widgets.find("text", text, road.SECONDS)
        client.widgets.press("push button", "OK")
        client.widgets.gone("text", text)


if __name__ == "__main__":
    road.main()
