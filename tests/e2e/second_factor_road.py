"""Logins that want a code: sent to a phone, to an address, or shown by a token."""

import base64
from pathlib import Path

import road
from hands import Keyboard, Mouse, keys
from waiting import wait_for

SCENARIOS = Path(road.ROOT, "tools", "simservice", "scenarios")
CODES = ("246810", "135791", "TK-480-516", "000111")
road.PASSWORDS += CODES


class SecondFactor(road.Road):
    def test_a_code_by_sms_wrong_resent_and_right(self):
        service, client = self._begin("second-factor.json")
        self.sees(client, "Secondary authentication")
        hands = Mouse(client)
        hands.fill("Enter the verification code.*", "000111")
        hands.press("push button", "OK")
        self._read(client, "The verification code is invalid. Try again.")
        # The pause is a minute; a service that is asked anew sends the next code.
        service.order('send {"type": "reply", "subtype": "connectStatus", "statusCode": 40961, '
                      '"profileName": "Head office"}')  # fmt: skip
        client.widgets.usable("push button", "Resend", 80)
        client.widgets.press("push button", "Resend")
        hands.fill("Enter the verification code.*", "135791")
        keys("Return")
        self.sees_online(client)
        sent = [message["subtype"] for message in service.messages("set")]
        self.assertEqual(sent, ["smsCode", "requestSmsCode", "smsCode"])
        self.assertEqual({m["secondAuthCode"] for m in service.messages("set")}, {"****"})
        self._no_code_to_see(client)

    def test_a_token_with_a_long_prompt_by_keyboard_in_chinese(self):
        service, client = self._begin("token.json", language=1)
        Keyboard(client).fill("请在您随身携带的动态令牌.*", "TK-480-516")
        keys("Return")
        self.sees(client, "已连接", "在线")
        self.assertEqual([m["subtype"] for m in service.messages("set")], ["tokenCode"])
        self._no_code_to_see(client)

    def test_a_code_by_mail_until_the_limit(self):
        factor = {"kind": "email", "codes": ["246810"], "tries": 2}
        service, client = self._begin(options=self.scenario(secondFactor=factor))
        for text in ("The verification code is invalid. Try again.",
                     "The number of retries has reached the upper limit.*"):  # fmt: skip
            Keyboard(client).fill("Enter the verification code.*", "000111")
            keys("Return")
            self._read(client, text)
        self.sees(client, "Disconnected", "Offline")
        client.widgets.usable("push button", road.CONNECT, road.SECONDS)
        wait_for("a stop", lambda: len(service.messages("stop")) == 1, road.SECONDS)
        self._no_code_to_see(client)

    def test_the_search_for_secrets_finds_one(self):
        trap = self.desktop.folder / "trap.log"
        for form in (CODES[0].encode(), base64.b64encode(road.PASSWORDS[0].encode())):
            trap.write_bytes(b"x" + form + b"x")
            with self.assertRaises(AssertionError):
                self._no_secret()
        trap.unlink()

    def _begin(self, scenario=None, options=None, language=2):
        options = options or ("--scenario", str(SCENARIOS / scenario))
        self.write_profile(*options)
        service = self.service(*options)
        client = self.client(control={"LANGUAGE": language})
        client.settle(road.SECONDS)
        client.widgets.click("push button", "(Connect|连接) Head office", road.SECONDS)
        return service, client

    def _read(self, client, text):
        client.widgets.find("text", text, road.SECONDS)
        client.widgets.press("push button", "OK")
        client.widgets.gone("text", text)

    def _no_code_to_see(self, client):
        seen = " ".join(widget.name for widget in client.widgets.all())
        for code in CODES:
            self.assertNotIn(code, seen)


if __name__ == "__main__":
    road.main()
