"""A private desktop: X server, session bus, accessibility bus and window manager."""

import os
import shutil
import subprocess
import tempfile
from pathlib import Path

from processes import Processes
from waiting import NotSeen, wait_for

_START_SECONDS = 20
_TRAY_HEIGHT = 24  # pixels; an icon is as wide as it is high
_BUS_LAUNCHER = "/usr/libexec/at-spi-bus-launcher"


class VirtualDesktop:
    """Use it in a `with` statement; one in the life of a process: the accessibility library keeps
    the bus that it found first.

    Everything that the desktop and its programs write lies below `folder`, except sockets, whose
    paths must be short: they are in a folder of their own that goes with the desktop.
    """

    def __init__(self, folder, size="1280x800", dpi=96, accessibility=True, tray=False,
                 ground="-br"):  # black behind the windows; -wr: white
        self.folder = Path(folder)
        self.processes = Processes()
        self._screen = ["-screen", "0", f"{size}x24", "-dpi", str(dpi), ground]
        self._accessibility = accessibility
        self._tray = tray
        self._saved = dict(os.environ)

    def __enter__(self):
        self.folder.mkdir(parents=True, exist_ok=True)
        self.sockets = Path(tempfile.mkdtemp(prefix="zvl-"))
        try:
            self._set_folders()
            self._start_display()
            self._start_session_bus()
            if self._accessibility:
                self._start_accessibility()
            self._start_window_manager()
            if self._tray:
                self.start_tray()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.processes.__exit__()
        shutil.rmtree(self.sockets, ignore_errors=True)
        os.environ.clear()
        os.environ.update(self._saved)

    def screenshot(self, path):
        Path(path).parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(["import", "-window", "root", str(path)], check=True, timeout=20)

    def log(self, name):
        return self.folder / f"{name}.log"

    def _set_folders(self):
        home = self.folder / "home"
        for variable in ("WAYLAND_DISPLAY", "XAUTHORITY", "LANGUAGE", "LC_ALL", "SESSION_MANAGER"):
            os.environ.pop(variable, None)
        os.environ.update(
            HOME=str(home),
            XDG_CONFIG_HOME=str(home / "config"),
            XDG_DATA_HOME=str(home / "data"),
            XDG_CACHE_HOME=str(home / "cache"),
            XDG_RUNTIME_DIR=str(self.sockets),
            LANG="C.UTF-8",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1" if self._accessibility else "0",
        )
        home.mkdir(exist_ok=True)

    def _start_display(self):
        reader, writer = os.pipe()
        try:
            argv = ["Xvfb", "-displayfd", str(writer), *self._screen]
            argv += ["-nolisten", "tcp", "-noreset"]
            self.processes.start(argv, self.log("xvfb"), pass_fds=[writer])
        finally:
            os.close(writer)
        number = _first_line(reader, "Xvfb", self.log("xvfb"))
        os.environ["DISPLAY"] = f":{number}"

    def _start_session_bus(self):
        reader, writer = os.pipe()
        try:
            argv = ["dbus-daemon", "--session", "--nofork", f"--print-address={writer}"]
            argv += [f"--address=unix:dir={self.sockets}"]
            self.processes.start(argv, self.log("dbus"), pass_fds=[writer])
        finally:
            os.close(writer)
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = _first_line(
            reader, "dbus-daemon", self.log("dbus")
        )

    def _start_accessibility(self):
        self.processes.start([_BUS_LAUNCHER, "--launch-immediately"], self.log("at-spi"))
        wait_for("the accessibility bus", _accessibility_bus, _START_SECONDS)

    def _start_window_manager(self):
        self.processes.start(["openbox"], self.log("openbox"))
        wait_for("the window manager", _manages_windows, _START_SECONDS)

    def start_tray(self):
        # At the top edge: below a menu at the bottom the pointer would close it at once.
        argv = ["trayer", "--edge", "top", "--align", "right", "--widthtype", "request"]
        argv += ["--height", str(_TRAY_HEIGHT)]
        self._tray_process = self.processes.start(argv, self.log("tray"))
        wait_for("the tray", _tray_box, _START_SECONDS)

    def stop_tray(self):
        self.processes.stop(self._tray_process)

    def windows_of(self, pid):
        """The windows of a process that show, menus included."""
        argv = ["xdotool", "search", "--onlyvisible", "--pid", str(pid)]
        answer = subprocess.run(argv, capture_output=True, text=True, check=False, timeout=20)
        return set(answer.stdout.split())

    def tray_has_icon(self):
        return _tray_box()["WIDTH"] >= _TRAY_HEIGHT // 2

    def click_tray_icon(self, button=1):
        """On the one icon of the tray, in the middle."""
        wait_for("an icon in the tray", self.tray_has_icon, _START_SECONDS)
        box = _tray_box()
        at = (box["X"] + box["WIDTH"] // 2, box["Y"] + box["HEIGHT"] // 2)
        argv = ["xdotool", "mousemove", *map(str, at), "click", str(button)]
        subprocess.run(argv, check=True, timeout=20)


def _first_line(reader, program, log):
    with os.fdopen(reader) as pipe:
        line = pipe.readline().strip()
    if not line:
        raise NotSeen(f"{program} did not start, see {log}")
    return line


def _manages_windows():
    answer = subprocess.run(
        ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], capture_output=True, text=True, check=False
    )
    return "window id" in answer.stdout


def _tray_box():
    """Where the tray stands, or None while it does not."""
    argv = ["xdotool", "search", "--name", "^panel$", "getwindowgeometry", "--shell"]
    answer = subprocess.run(argv, capture_output=True, text=True, check=False, timeout=20)
    lines = [line.split("=") for line in answer.stdout.split()]
    return {name: int(value) for name, value in lines} or None


def _accessibility_bus():
    # Asking the bus and not the launcher: a call would have the bus start a second one.
    argv = ["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus"]
    argv += ["/", "org.freedesktop.DBus.NameHasOwner", "string:org.a11y.Bus"]
    answer = subprocess.run(argv, capture_output=True, text=True, check=False)
    return "true" in answer.stdout
