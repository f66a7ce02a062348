#!/usr/bin/python3
"""What ./run does without a display: one session in each language on a virtual desktop.

usage: headless_run.py FOLDER-OF-THE-PROGRAMS FOLDER-FOR-THE-RESULTS
"""

import shutil
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

import apart
from processes import end_on_signals
from programs import Client, Service
from steps import Steps
from virtual_desktop import VirtualDesktop
from waiting import NotSeen, wait_for

_ONLINE_SECONDS = 15
_SCENARIO = Path(__file__).resolve().parents[2] / "tools/simservice/scenarios/first-look.json"
_CODE, _PASSWORD, _NEW_PASSWORD = "246810", "alice-demo", "Horse-battery-9"  # of the scenario
_START_KEYS = (
    "type userDataPath systemTextCode clientType profileName needQueryAuthType keepAuthType "
    "lastTimeSupportedAuthType uiUUID UIAdmin server port enableGMSSL authType user "
    "encryptedPassword enableSPA commOptimMode logLevel concurrentTestNum heartbeatTimeout "
    "optimalChannel gatewayDetect perferredGatewayName enableVerifyServerCert enableAutoReconnect "
    "enableAutoUpdate hasPromotedUpdate gatewayList clusterList"
).split()


@dataclass(frozen=True)
class Language:
    """What the client says, in the order in which a session shows it."""

    suffix: str
    number: int  # of "LANGUAGE" in the application control file
    wait: str
    ready: str
    disconnected: str
    connect: str
    connecting: str
    online: str
    disconnect: str
    code: str  # names of fields, dialogs and buttons
    change: str
    passwords: tuple
    changed: str
    ok: str


_LANGUAGES = (
    Language("", 2, "Connecting to the backend service", "Ready", "Disconnected", "Connect",
             "Connecting", "Online", "Disconnect",
             "Enter the verification code received by your mobile phone:", "Change Password",
             ("Current Password", "New Password", "Confirm Password"),
             "Your password is changed successfully", "OK"),
    Language("-chinese", 1, "正在连接后台服务", "就绪", "未连接", "连接",
             "正在连接", "在线", "断开连接",
             "请输入手机收到的验证码：", "修改密码", ("当前密码", "新密码", "确认密码"),
             "密码修改成功", "确定"),
)  # fmt: skip


class Session:
    """One session of the client: from its window to the end of its process."""

    def __init__(self, steps, desktop, binaries, results, language):
        self._see = steps.see
        self._desktop = desktop
        self._results = results
        self._say = language
        self._service = Service(desktop, binaries, f"service{language.suffix}")
        self._client = Client(
            desktop, binaries, f"client{language.suffix}", {"LANGUAGE": language.number}
        )
        self._service.write_profile("--scenario", str(_SCENARIO))

    def run(self):
        self._start()
        self._connect()
        self._stay_online()
        self._change_password()
        self._disconnect()
        self._check_record()
        self._client.stop()
        self._service.stop()

    def _start(self):
        say = self._say
        self._client.start()
        self._label("the window waits for the service", say.wait)
        self._screenshot("waiting")
        self._service.start("--scenario", str(_SCENARIO))
        self._label("the service is found", say.ready)
        self._label("not connected", say.disconnected)
        self._client.settle(_ONLINE_SECONDS)
        self._screenshot("disconnected")

    def _connect(self):
        say = self._say
        button = f"{say.connect} Head office"
        widgets = self._client.widgets
        self._see(
            f'click on "{say.connect}" of the card "Head office"',
            lambda: widgets.click("push button", button),
        )
        self._label("the session begins", say.connecting)
        self._see("the gateway wants a code", lambda: self._fill(say.code, _CODE, "code"))
        widgets.click("push button", say.ok)
        self._label("the session stands", say.online)

    def _stay_online(self):
        def counters():
            return [text for text in self._client.widgets.texts() if text.endswith(("KB", "MB"))]

        self._see("counters of the tunnel", lambda: wait_for("counters", counters, _ONLINE_SECONDS))
        for _ in range(2):
            before = counters()
            self._see(
                "counters grow",
                lambda: wait_for("other counters", lambda: counters() != before, _ONLINE_SECONDS),
            )
        self._screenshot("online")

    def _change_password(self):
        say = self._say
        widgets = self._client.widgets
        widgets.click("push button", say.change)
        for name, text in zip(say.passwords, (_PASSWORD, _NEW_PASSWORD, _NEW_PASSWORD)):
            self._see(f'"{name}" is asked for', lambda: self._fill(name, text))
        self._screenshot("password")
        widgets.click("push button", say.ok)
        self._see("the password is changed", lambda: widgets.find("text", say.changed))
        widgets.press("push button", say.ok)
        self._label("the session goes on", say.online)

    def _fill(self, name, text, picture=None):
        """Types into the field of that name, whatever its role."""

        def field():
            found = [w for w in self._client.widgets.all() if w.name == name and "text" in w.role]
            return next((widget for widget in found if widget.in_front()), None)

        widget = wait_for(f"field {name!r}", field, _ONLINE_SECONDS)
        if picture:
            self._screenshot(picture)
        widget.click()
        wait_for(f"focus in {name!r}", widget.focused, _ONLINE_SECONDS)
        subprocess.run(["xdotool", "type", "--clearmodifiers", text], check=True, timeout=20)

    def _disconnect(self):
        say = self._say
        button = f"{say.disconnect} Head office"
        self._client.widgets.click("push button", button)
        self._label("the session has ended", say.disconnected)
        self._screenshot("ended")

    def _check_record(self):
        def start():
            messages = self._service.messages("start")
            assert len(messages) == 1, f"{len(messages)} start messages"
            keys = list(messages[0])
            assert keys == _START_KEYS, f"keys of the start message: {keys}"

        def stop():
            count = len(self._service.messages("stop"))
            assert count == 1, f"{count} stop messages"

        self._see("the service got one start, its keys in order", start)
        self._see("the service got one stop", stop)

    def _label(self, meaning, text):
        widgets = self._client.widgets
        self._see(f'"{text}": {meaning}', lambda: widgets.find("label", text))

    def _screenshot(self, name):
        self._desktop.screenshot(self._results / f"{name}{self._say.suffix}.png")


def _run(binaries, results):
    steps = Steps()
    folder = results / "desktop"
    shutil.rmtree(folder, ignore_errors=True)
    try:
        with VirtualDesktop(folder, size="1100x760", ground="-wr") as desktop:
            try:
                for language in _LANGUAGES:
                    Session(steps, desktop, binaries, results, language).run()
            except (NotSeen, AssertionError):
                desktop.screenshot(results / "failed.png")
    except (NotSeen, OSError, RuntimeError, subprocess.SubprocessError) as problem:
        steps.failed = True
        print(f"    {problem}", flush=True)
    steps.total()
    print(f"Screenshots and logs: {results}", flush=True)
    return 1 if steps.failed else 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    binaries, results = map(Path, sys.argv[1:])
    results.mkdir(parents=True, exist_ok=True)
    apart.enter(Path(__file__).parent, binaries, results)
    end_on_signals()
    sys.exit(_run(binaries, results))
