"""Logins that want a code: sent to a phone, to an address, or shown by a token."""

import base64
import signal

import road
from hands import Keyboard, Mouse, keys
from waiting import wait_for

SMS, RESENT = "246810", "135791"  # of the scenarios
TOKEN, MAIL, WRONG = "TK-480-516", "MX-246-810", "000-111-00"
road.PASSWORDS += (SMS, RESENT, TOKEN, MAIL, WRONG)
PROMPT = "Enter the verification code.*"


class SecondFactor(road.Road):
    def test_a_code_by_sms_wrong_resent_and_right(self):
        service, client = self.log_in(road.SCENARIOS / "second-factor.json")
        self.sees(client, "Secondary authentication")
        hands = Mouse(client)
        hands.fill(PROMPT, WRONG)
        hands.press("push button", "OK")
        self.reads(client, "The verification code is invalid. Try again.")
        client.widgets.usable("push button", "Resend", 80)  # after a minute
        client.widgets.press("push button", "Resend")
        hands.fill(PROMPT, f" {RESENT} ")
        keys("Return")
        self.sees_online(client)
        self.assertNotIn("Secondary authentication", client.widgets.texts())
        sent = [message["subtype"] for message in service.messages("set")]
        self.assertEqual(sent, ["smsCode", "requestSmsCode", "smsCode"])
        self.assertEqual({m["secondAuthCode"] for m in service.messages("set")}, {"****"})
        self.sees_no_secret(client)
        self._the_search_is_not_blind(service, client)

    def _the_search_is_not_blind(self, service, client):
        """What the masks do not know is found by the same search, in a log and on the screen."""
        clear, wrapped = planted = {"planted-secret", "planted-and-wrapped"}
        encoded = base64.b64encode(wrapped.encode())
        copy = self.desktop.folder / "copy.log"
        for secret, form in ((wrapped, encoded), (clear, clear.encode("utf-16-le"))):
            copy.write_bytes(client.log.read_bytes() + form)
            self.assertEqual(self.kept(planted), {(secret, copy.name)})
        service.order(f"message {clear} {encoded.decode()}")
        client.widgets.find("text", f"{clear}.*", road.SECONDS)
        self.assertEqual(road.shown(client, planted), planted)

    def test_a_token_with_a_long_prompt_by_keyboard_in_chinese(self):
        service, client = self.log_in(road.SCENARIOS / "token.json", language=1)
        Keyboard(client).fill("请在您随身携带的动态令牌.*", TOKEN)
        keys("Return")
        self.sees(client, "已连接", "在线")
        self.assertEqual([m["subtype"] for m in service.messages("set")], ["tokenCode"])
        self.sees_no_secret(client)
        client.widgets.click("push button", road.DISCONNECT, road.SECONDS)
        self.sees_the_end(client, service, stops=1)

    def test_a_code_by_mail_until_the_limit_with_the_mouse_in_chinese(self):
        service, client = self.log_in(road.SCENARIOS / "limited-code.json", language=1)
        hands, prompt = Mouse(client), ".*邮箱 a.*@example.com 收到的验证码："
        for text in ("验证码错误，请重试", "重试次数已达到上限，请重新登录"):
            hands.fill(prompt, WRONG)
            hands.press("push button", "确定")
            self.reads(client, text)
        self.sees(client, "未连接", "离线")
        self.sees_the_end(client, service, stops=1)

        self.connect(client)
        hands.fill(prompt, MAIL)
        client.process.send_signal(signal.SIGABRT)  # with a code in its memory
        wait_for("the client's end", lambda: not client.alive(), road.SECONDS)


if __name__ == "__main__":
    road.main()
