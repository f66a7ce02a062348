"""A login that goes on in a real browser, against the simulated service's pages."""

import os
from pathlib import Path

import road
from pages import Page
from waiting import wait_for


class BrowserLogin(road.Road):
    def test_a_no_and_then_a_yes_in_chinese(self):
        opened = self.browser()
        service, client = self.log_in(road.SCENARIOS / "third-party.json", language=1)
        self.sees(client, "请在浏览器中继续")
        self._answer(opened, 1, "Refuse")
        self.reads(client, "未知错误，请联系管理员")
        self.sees(client, "未连接")
        self.assertNotIn("请在浏览器中继续", client.widgets.texts())
        self.sees_the_end(client, service, stops=1)

        self.connect(client)
        self._answer(opened, 2, "Log in")
        self.sees(client, "已连接", "在线")
        self.sees_no_secret(client)
        folder = Path(os.environ["XDG_DATA_HOME"], "ZorvaneLink", "oauth")
        self.assertTrue((folder / "auth_data.js").read_text().startswith("var auth_data={"))
        self.assertEqual(len(service.messages("stop")), 1)

    def test_a_page_opened_again_and_a_provider_that_is_not_understood(self):
        opened = self.browser()
        service, client = self.log_in(road.SCENARIOS / "third-party-broken.json")
        wait_for("the page", opened, road.SECONDS)
        client.widgets.click("push button", "Open the page again", road.SECONDS)
        client.widgets.find("label", "Log in on the page.*Time left: 8:.*", road.SECONDS)
        self._answer(opened, 2, "Log in")
        self.reads(client, "Failed to parse access token.*")
        self.sees(client, "Disconnected")
        self.sees_the_end(client, service, stops=1)

    def _answer(self, opened, count, button):
        """On the page that was opened last, of so many."""
        wait_for(f"{count} pages", lambda: len(opened()) == count, road.SECONDS)
        page = Page(self.desktop, opened()[-1])
        page.press(button)
        page.close()


if __name__ == "__main__":
    road.main()
