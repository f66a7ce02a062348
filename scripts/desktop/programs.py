"""The client and the simulated service as a test meets them."""

import json
import os
import shutil
import socket
import subprocess
from pathlib import Path

from waiting import wait_for
from widgets import Program

PORT_FILE = Path("/tmp//zlinkipc")
CLIENT_NAME = "zorvanelink"
SERVICE_NAME = "zvl-simservice"


class Service:
    """zvl-simservice with a record of what it was sent and a socket for orders."""

    def __init__(self, desktop, binaries, name="service"):
        self._desktop = desktop
        self._program = str(Path(binaries, SERVICE_NAME))
        self.record = desktop.folder / f"{name}-record.jsonl"
        self.log = desktop.log(name)
        self._control = desktop.sockets / f"{name}.sock"
        self.process = None

    def write_profile(self, *options):
        """The connections of the scenario's users, with stored passwords, as the client's settings."""
        folder = Path(os.environ["XDG_CONFIG_HOME"], "ZorvaneLink")
        argv = [self._program, "--write-profile", str(folder), "--force", *options]
        subprocess.run(argv, check=True, capture_output=True, timeout=20)

    def start(self, *options):
        argv = [self._program, "--record", str(self.record), "--control", str(self._control)]
        argv += ["--log-dir", str(self._desktop.folder / "service-log"), *options]
        self._control.unlink(missing_ok=True)
        self.process = self._desktop.processes.start(argv, self.log)
        wait_for("the service's control socket", self._answers, 10)

    def stop(self):
        return self._desktop.processes.stop(self.process)

    def kill(self):
        self.process.kill()
        self._desktop.processes.stop(self.process)

    def order(self, line):
        """Carries out one control line; raises when the service refuses it."""
        with socket.socket(socket.AF_UNIX) as peer:
            peer.settimeout(10)
            peer.connect(str(self._control))
            peer.sendall(line.encode() + b"\n")
            answer = b""
            while not (answer.endswith(b"\n") and _is_last(answer)):
                part = peer.recv(4096)
                if not part:
                    break
                answer += part
        text = answer.decode()
        if "error:" in text:
            raise RuntimeError(f"{line}: {text}")
        return text

    def messages(self, kind=None):
        """What the client sent, oldest first: dicts whose keys keep their order."""
        if not self.record.exists():
            return []
        # A line that is still being written has no end yet.
        lines = self.record.read_text().split("\n")[:-1]
        records = [json.loads(line) for line in lines]
        return [
            record["message"]
            for record in records
            if "message" in record and kind in (None, record.get("type"))
        ]

    def port(self):
        return int(PORT_FILE.read_text())

    def _answers(self):
        if self.process.poll() is not None:
            raise RuntimeError(f"the service ended: {tail(self.log)}")
        try:
            return "ok" in self.order("state")
        except OSError:
            return False


def _is_last(answer):
    return answer.rstrip(b"\n").rsplit(b"\n", 1)[-1].startswith((b"ok", b"error:"))


class Client:
    """The client, in a program folder of its own so that its resources are ours to choose."""

    def __init__(self, desktop, binaries, name="client", control=None):
        """`control`: what the application control file says, a dict, or text taken as it stands."""
        self._desktop = desktop
        self._output = desktop.log(name)
        self.log = Path(os.environ["XDG_DATA_HOME"], "ZorvaneLink", "log", "uizlink.log")
        root = desktop.folder / f"{name}-program"
        self.resources = root / "resources"
        self.path = root / "bin" / CLIENT_NAME
        self.path.parent.mkdir(parents=True, exist_ok=True)
        self.resources.mkdir(exist_ok=True)
        _place(Path(binaries, CLIENT_NAME), self.path)
        if control is not None:
            text = control if isinstance(control, str) else json.dumps(control)
            (self.resources / "AppCtrl.json").write_text(text)
        self.process = None
        self.widgets = None
        self._earlier = 0

    def start(self, *launcher):
        """`launcher`: what starts the client as its child, as words ahead of its path."""
        self._earlier = len(self._log_text())
        self.process = self._desktop.processes.start([*launcher, str(self.path)], self._output)
        pid = self.process.pid
        if launcher:
            pid = wait_for("the launched client", lambda: child_of(self.process.pid), 10)
        self.widgets = Program(pid)

    def stop(self):
        return self._desktop.processes.stop(self.process)

    def settle(self, seconds):
        """Waits for the end of the first contact with the service: then the cards are made anew."""
        told = "Auto login is"
        wait_for("settled cards", lambda: told in self._log_text()[self._earlier :], seconds)

    def _log_text(self):
        return self.log.read_text(errors="replace") if self.log.exists() else ""

    def alive(self):
        return self.process.poll() is None


def child_of(pid):
    children = Path(f"/proc/{pid}/task/{pid}/children").read_text().split()
    return int(children[0]) if children else None


def _place(source, target):
    target.unlink(missing_ok=True)
    try:
        os.link(source, target)
    except OSError:  # another file system
        shutil.copy2(source, target)


def tail(path, lines=12):
    path = Path(path)
    text = path.read_text(errors="replace") if path.exists() else ""
    return "\n".join(text.splitlines()[-lines:])
