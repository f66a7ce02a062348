"""What every end-to-end road stands on: a desktop, the binaries under test, and a report of what
was on the screen and in the logs when a road fails."""

import base64
import json
import os
import resource
import shutil
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts" / "desktop"))

import apart  # noqa: E402
from programs import PORT_FILE, Client, Service, tail  # noqa: E402
from processes import end_on_signals  # noqa: E402
from virtual_desktop import VirtualDesktop  # noqa: E402
from waiting import wait_for  # noqa: E402

BINARIES = Path(os.environ["ZVL_BINARIES"])
FOLDER = Path(os.environ["ZVL_FOLDER"])
SCENARIOS = ROOT / "tools" / "simservice" / "scenarios"
PASSWORDS = ("alice-demo", "bob-demo")  # of the scenarios' users; a road adds what it types
# Sanitizers and a busy machine make everything slow.
SECONDS = 20
CONNECT, DISCONNECT = "(Connect|连接) Head office", "(Disconnect|断开连接) Head office"
LOOKING = "Connecting to the backend service"


class Road(unittest.TestCase):
    """One class a process, since a process has one desktop."""

    tray = False  # whether the desktop has one

    @classmethod
    def setUpClass(cls):
        name = Path(sys.argv[0]).stem
        folder = FOLDER / name
        shutil.rmtree(folder, ignore_errors=True)
        cls.desktop = VirtualDesktop(folder, tray=cls.tray)
        cls.desktop.__enter__()
        cls.addClassCleanup(cls.desktop.__exit__)
        # A core file, if the client left one, would lie among what is searched.
        os.chdir(folder)
        hard = resource.getrlimit(resource.RLIMIT_CORE)[1]
        resource.setrlimit(resource.RLIMIT_CORE, (hard, hard))

    def setUp(self):
        PORT_FILE.unlink(missing_ok=True)
        self.addCleanup(PORT_FILE.unlink, missing_ok=True)
        self._programs = []
        self.addCleanup(self._stop_programs)
        self.addCleanup(self._report_failure)

    # Starting.

    def service(self, *options, name="service"):
        service = self._own(Service(self.desktop, BINARIES, self._name(name)))
        service.start(*options)
        return service

    def client(self, name="client", control=None, start=True):
        client = self._own(Client(self.desktop, BINARIES, self._name(name), control))
        if start:
            client.start()
        return client

    def write_profile(self, *options):
        Service(self.desktop, BINARIES).write_profile(*options)

    def scenario(self, **keys):
        """The options for a service with one quick user and these keys."""
        user = {"name": "alice", "password": PASSWORDS[0], "profile": "Head office"}
        delays = {"answer_ms": 0, "connecting_ms": 100, "online_ms": 100, "stop_ms": 0}
        path = self.desktop.sockets / f"{self._testMethodName}.json"
        path.write_text(json.dumps({"users": [user], "delays": delays, **keys}))
        return "--scenario", str(path)

    def log_in(self, *options, language=2):
        """A service that plays the options, and a client that was told to connect to it."""
        if isinstance(options[0], Path):
            options = ("--scenario", str(options[0]))
        self.write_profile(*options)
        service = self.service(*options)
        client = self.client(control={"LANGUAGE": language, "LOG_LEVEL": "debug"})
        client.settle(SECONDS)
        self.connect(client)
        return service, client

    def connect(self, client):
        client.widgets.click("push button", CONNECT, SECONDS)

    def online(self, *options):
        """A service and a client that is connected to "Head office"."""
        self.write_profile()
        service = self.service(*options)
        client = self.client()
        self.go_online(client)
        return service, client

    def browser(self):
        """Stands in for the desktop's browser; call what it answers for the addresses so far."""
        folder = self.desktop.folder / "browser"
        folder.mkdir(exist_ok=True)
        opened = folder / f"{self._testMethodName}.txt"
        opened.touch()
        program = folder / "xdg-open"
        program.write_text(f'#!/bin/sh\necho "$1" >> "{opened}"\n')
        program.chmod(0o755)
        os.environ["PATH"] = f"{folder}{os.pathsep}{os.environ['PATH']}"
        return lambda: opened.read_text().split()

    # What users do and see.

    def go_online(self, client):
        client.settle(SECONDS)
        client.widgets.click("push button", CONNECT, SECONDS)
        self.sees_online(client)

    def sees_online(self, client):
        self.sees(client, "Connected", "Online")
        client.widgets.usable("push button", DISCONNECT, SECONDS)

    def sees(self, client, *texts):
        """All of the texts stand on the screen at one moment."""

        def probe():
            self.assertTrue(client.alive(), "the client has ended")
            return set(texts) <= set(client.widgets.texts())

        wait_for(" and ".join(texts), probe, SECONDS)

    def reads(self, client, text):
        """A box with that text, and closes it."""
        client.widgets.find("text", text, SECONDS)
        client.widgets.press("push button", "OK|确定")
        client.widgets.gone("text", text)

    def sees_the_end(self, client, service, stops):
        """Nothing of the login is left, and the card can be pressed again."""
        client.widgets.usable("push button", CONNECT, SECONDS)
        wait_for("the stops", lambda: len(service.messages("stop")) == stops, SECONDS)
        self.sees_no_secret(client)

    def sees_no_secret(self, client):
        self.assertEqual(shown(client, PASSWORDS), set())

    def sees_counters_grow(self, client):
        def counters():
            return [text for text in client.widgets.texts() if text.endswith((" KB", " MB"))]

        first = wait_for("counters", counters, SECONDS)
        wait_for("growing counters", lambda: counters() not in ([], first), SECONDS)

    def open_tray_menu(self, client):
        """Not among the accessible widgets: a menu without a window."""
        before = self.desktop.windows_of(client.process.pid)
        self.desktop.click_tray_icon(button=3)
        menu = lambda: self.desktop.windows_of(client.process.pid) - before  # noqa: E731
        wait_for("the tray's menu", menu, SECONDS)

    def press_tab(self, client, name):
        client.widgets.press("check box", name, SECONDS)

    def click_tab(self, client, name):
        client.widgets.click("check box", name, SECONDS)

    # Ending.

    def _own(self, program):
        self._programs.append(program)
        return program

    def _name(self, name):
        return f"{self._testMethodName}-{name}"

    def _stop_programs(self):
        for program in reversed(self._programs):
            if program.process is not None:
                program.stop()
        self.assertEqual(self.kept(PASSWORDS), set())

    def kept(self, secrets):
        """Those that a log, the settings, a record or a core file of the road holds, and where."""
        found = set()
        for path in self.desktop.folder.rglob("*"):
            if path.is_file() and not path.is_symlink() and path.parent.name != "bin":
                found |= {(secret, path.name) for secret in _held(path.read_bytes(), secrets)}
        return found

    def _report_failure(self):
        result = self._outcome.result
        if not any(test is self for test, _ in result.failures + result.errors) and (
            self._outcome.success
        ):
            return
        picture = self.desktop.folder / f"{self._testMethodName}.png"
        self.desktop.screenshot(picture)
        print(f"\n{self.id()} failed. Screenshot: {picture}", file=sys.stderr)
        for program in self._programs:
            print(f"--- {program.log}\n{tail(program.log, 30)}", file=sys.stderr)
            if getattr(program, "widgets", None) is not None:
                print(f"--- on the screen: {program.widgets.texts()}", file=sys.stderr)


def shown(client, secrets):
    """Those that the accessibility tree tells."""
    return _held("\n".join(client.widgets.strings()).encode(), secrets)


def _held(content, secrets):
    """In clear, as the toolkit has it in memory, or in Base64."""

    def forms(secret):
        clear = secret.encode()
        return clear, secret.encode("utf-16-le"), base64.b64encode(clear).rstrip(b"=")

    return {secret for secret in secrets if any(form in content for form in forms(secret))}


def main():
    FOLDER.mkdir(parents=True, exist_ok=True)
    apart.enter(ROOT, BINARIES, FOLDER)
    end_on_signals()
    unittest.main(verbosity=2)
