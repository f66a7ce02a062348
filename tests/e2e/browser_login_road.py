"""A login that goes on in a real browser, against the simulated service's pages."""

import os
from pathlib import Path

import road
from waiting import wait_for

BROWSER = "chromium-headless-shell"


class BrowserLogin(road.Road):
    def test_a_user_whom_the_provider_knows(self):
        service, client = self._begin(signedOn=True)
        self.sees_online(client)
        folder = Path(os.environ["XDG_DATA_HOME"], "ZorvaneLink", "oauth")
        self.assertTrue((folder / "auth_data.js").read_text().startswith("var auth_data={"))
        self.assertEqual(service.messages("stop"), [])

    def test_a_page_that_nobody_answers_and_a_broken_one(self):
        service, client = self._begin()
        self.sees(client, "Continue in the browser")
        opened = service.log.read_text().count("asks to log in")
        client.widgets.click("push button", "Open the page again", road.SECONDS)
        client.widgets.find("label", "Log in on the page.*Time left: 8:.*", road.SECONDS)
        self.assertEqual(service.log.read_text().count("asks to log in"), opened)
        service.order("status ERR_OAUTH_ACCESS_TOKEN_PARSE_FAILED")
        client.widgets.find("text", "Failed to parse access token.*", road.SECONDS)
        client.widgets.press("push button", "OK")
        self.sees(client, "Disconnected")
        client.widgets.usable("push button", road.CONNECT, road.SECONDS)
        wait_for("a stop", lambda: len(service.messages("stop")) == 1, road.SECONDS)

    def _begin(self, **rules):
        options = self.scenario(authTypes=["oauth"], thirdParty={"server": True, **rules})
        self.write_profile(*options)
        self._browse()
        service = self.service(*options)
        client = self.client()
        client.settle(road.SECONDS)
        client.widgets.click("push button", road.CONNECT, road.SECONDS)
        return service, client

    def _browse(self):
        """The desktop's browser is the real one, without a window."""
        folder = self.desktop.folder / "bin-browser"
        folder.mkdir(exist_ok=True)
        program = folder / "xdg-open"
        home = folder / "profile"
        program.write_text(
            f'#!/bin/sh\nexec {BROWSER} --no-sandbox --disable-gpu --user-data-dir="{home}" '
            f'--timeout=15000 --dump-dom "$1" > "{folder}/page.html" 2> "{folder}/browser.log"\n'
        )
        program.chmod(0o755)
        os.environ["PATH"] = f"{folder}{os.pathsep}{os.environ['PATH']}"


if __name__ == "__main__":
    road.main()
