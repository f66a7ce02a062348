"""A page in a real browser without a window, whose buttons can be pressed."""

import json
import os
import select

import road
from waiting import wait_for

_BROWSER = "chromium-headless-shell"


class Page:
    """What a desktop's browser makes of the address; ends with the road's desktop."""

    def __init__(self, desktop, address):
        folder = desktop.folder / "browser"
        options = ["--no-sandbox", "--disable-gpu", f"--user-data-dir={folder / 'profile'}"]
        reader, self._out = os.pipe()
        self._in, writer = os.pipe()
        # The browser is told on its descriptor 3 and tells on 4.
        self._process = desktop.processes.start(
            ["sh", "-c", f'exec "$0" "$@" 3<&{reader} 4>&{writer}', _BROWSER, *options]
            + ["--remote-debugging-pipe", address],
            desktop.log("browser"),
            pass_fds=[reader, writer],
        )
        os.close(reader)
        os.close(writer)
        self._desktop = desktop
        self._unread = b""
        self._number = 0
        self._session = {}
        page = wait_for("the page", self._target, road.SECONDS)
        told = self._ask("Target.attachToTarget", targetId=page, flatten=True)
        self._session = {"sessionId": told["sessionId"]}

    def press(self, text):
        """The button with that text, and waits for the page that says thanks."""
        buttons = f"[...document.querySelectorAll('button')].filter(b => b.innerText == '{text}')"
        click = f"{buttons}.map(b => b.click()).length == 1"
        wait_for(f"button {text!r}", lambda: self._run(click), road.SECONDS)
        thanks = "document.body.innerText.includes('Done')"
        wait_for("an answer", lambda: self._run(thanks), road.SECONDS)

    def close(self):
        self._desktop.processes.stop(self._process)
        os.close(self._in)
        os.close(self._out)

    def _target(self):
        targets = self._ask("Target.getTargets")["targetInfos"]
        return next((each["targetId"] for each in targets if each["type"] == "page"), None)

    def _run(self, expression):
        """None while one page gives way to another."""
        told = self._ask("Runtime.evaluate", expression=expression)
        return told.get("result", {}).get("value")

    def _ask(self, method, **params):
        self._number += 1
        message = {"id": self._number, "method": method, "params": params, **self._session}
        os.write(self._out, json.dumps(message).encode() + b"\0")
        while (answer := self._read()).get("id") != self._number:
            pass  # an event
        return answer.get("result", {})

    def _read(self):
        while b"\0" not in self._unread:
            ready, _, _ = select.select([self._in], [], [], road.SECONDS)
            part = os.read(self._in, 1 << 16) if ready else b""
            assert part, "the browser says nothing"
            self._unread += part
        message, _, self._unread = self._unread.partition(b"\0")
        return json.loads(message)
