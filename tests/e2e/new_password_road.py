"""A password that is over, one that the user wants to change, and a service that goes away over it."""

import road
from hands import Keyboard, Mouse, keys

OLD, NEW = road.PASSWORDS[0], "Horse-battery-9"
BEFORE, SIMPLE, CODE = "Alice-Demo-0", "too-simple", "246810"
road.PASSWORDS += (NEW, BEFORE, SIMPLE, CODE)


class NewPassword(road.Road):
    tray = True

    def test_an_expired_one_with_the_mouse(self):
        service, client = self.log_in(road.SCENARIOS / "new-password.json")
        client.widgets.find("label", "Change Password at Expiration", road.SECONDS)
        hands = Mouse(client)
        for password, answer in ((SIMPLE, "Please follow the password policy"),
                                 (BEFORE, "Do not use the historical.*"),
                                 (NEW, "Your password is changed successfully. Please log in.*")):  # fmt: skip
            self._fill(hands, OLD, password)
            hands.press("push button", "OK")
            self.reads(client, answer)
        self.sees(client, "Disconnected")
        self.sees_the_end(client, service, stops=1)
        client.process.kill()
        client.stop()

        # The new one stands in the profile, whatever ended the program: nothing is asked for.
        client = self.client("second-day")
        client.settle(road.SECONDS)
        self.connect(client)
        self.sees_online(client)
        self.assertEqual({m["newPassword"] for m in service.messages("set")}, {"****"})
        self.sees_no_secret(client)

    def test_one_of_the_users_own_will_by_keyboard_from_the_tray_in_chinese(self):
        service, client = self.log_in(road.SCENARIOS / "expiring.json", language=1)
        warning = "账号将在 20 天后过期，密码将在 5 天后过期"
        self.reads(client, warning)
        self.sees(client, "已连接", "在线")
        client.widgets.usable("push button", "修改密码 URL Head office", road.SECONDS)
        self.open_tray_menu(client)
        keys("Up", "Up", "Up", "Return")  # above the address and the end
        self._fill(Keyboard(client), OLD, NEW)
        keys("Return")
        self.reads(client, "密码修改成功")
        self.sees(client, "已连接", "在线")
        self.sees_no_secret(client)
        client.widgets.click("push button", road.DISCONNECT, road.SECONDS)
        self.sees_the_end(client, service, stops=1)

        self.connect(client)
        self.reads(client, warning)
        self.sees(client, "已连接", "在线")

    def test_a_service_that_goes_away_over_a_password_and_over_a_code(self):
        service, client = self.log_in(road.SCENARIOS / "unstable-login.json")
        hands, lost = Mouse(client), "The client is disconnected"
        self._fill(hands, OLD, NEW)
        keys("Return")
        self.reads(client, lost)
        self.sees_the_end(client, service, stops=0)

        self.connect(client)
        self._fill(hands, OLD, NEW)
        keys("Return")
        self.reads(client, "Your password is changed successfully. Please log in.*")
        self.connect(client)
        self.reads(client, lost)
        self.sees_the_end(client, service, stops=1)

        self.connect(client)
        hands.fill("Enter the verification code.*", CODE)
        keys("Return")
        self.sees_online(client)
        self.sees_no_secret(client)

    def _fill(self, hands, current, password):
        names = ("Current Password|当前密码", "New Password|新密码", "Confirm Password|确认密码")
        for name, text in zip(names, (current, password, password)):
            hands.fill(name, text)


if __name__ == "__main__":
    road.main()
