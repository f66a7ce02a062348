"""The widgets of a program as its accessibility tree shows them.

Use it only inside a VirtualDesktop: the library takes its bus from os.environ when it first asks.
"""

import re
import subprocess

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  (the version has to be required first)

from waiting import wait_for  # noqa: E402

_FRAME = 40  # pixels that a window manager may put around a window
SECONDS = 10  # how long a widget is waited for, unless told


class Widget:
    def __init__(self, node):
        self._node = node
        self.role = node.get_role_name()
        self.name = node.get_name() or ""

    def shows(self):
        return self._has(Atspi.StateType.SHOWING)

    def enabled(self):
        return self._has(Atspi.StateType.SENSITIVE)

    def focused(self):
        return self._has(Atspi.StateType.FOCUSED)

    def active(self):
        """Whether it is the window that the keyboard goes to."""
        return self._has(Atspi.StateType.ACTIVE)

    def in_front(self):
        """Whether its window is a menu, or stands as the active one where the program thinks that
        it does: it can be clicked."""
        node = self._node
        while node.get_parent().get_role() != Atspi.Role.APPLICATION:
            node = node.get_parent()
        window = Widget(node)
        if window.role == "popup menu":
            return True
        places = zip(window.place(), _place_of_active_window())
        return window.active() and all(abs(told - real) <= _FRAME for told, real in places)

    def place(self):
        """Left, top, width and height on the screen."""
        box = self._node.get_extents(Atspi.CoordType.SCREEN)
        return box.x, box.y, box.width, box.height

    def matches(self, name):
        return re.fullmatch(name, self.name) is not None

    def _has(self, state):
        try:
            return self._node.get_state_set().contains(state)
        except GLib.Error:  # it is gone
            return False

    def press(self):
        """By its accessible action, as a screen reader would."""
        # Qt names what a button does first, then what every widget does.
        if not self._node.do_action(0):
            raise LookupError(f"{self.role} {self.name!r} cannot be pressed")

    def click(self, times=1):
        """With the mouse, in the middle; one right after the other."""
        left, top, width, height = self.place()
        at = [str(left + width // 2), str(top + height // 2)]
        argv = ["xdotool", "mousemove", *at, "click", "--repeat", str(times), "--delay", "50", "1"]
        subprocess.run(argv, check=True, timeout=20)

    def strings(self):
        yield self.name
        yield self._node.get_description() or ""
        if "Text" in self._node.get_interfaces():
            yield Atspi.Text.get_text(self._node, 0, -1)

    def children(self):
        for index in range(self._node.get_child_count()):
            child = self._node.get_child_at_index(index)
            if child is not None:
                yield Widget(child)


class Program:
    """The widgets of the process `pid`."""

    def __init__(self, pid):
        self._pid = pid

    def all(self):
        """Every widget of the program that shows at the moment."""
        return _shown_below([self._root()])

    def focus(self):
        """The widget that the keyboard goes to, or None between two windows."""
        root = self._root()
        windows = list(root.children()) if root is not None else []
        shown = _shown_below([window for window in windows if window.active()])
        return next((widget for widget in shown if widget.focused()), None)

    def texts(self):
        return [widget.name for widget in self.all() if widget.role == "label" and widget.name]

    def strings(self):
        """All that a screen reader may hear, of what shows and of what does not."""
        root = self._root()
        pending = [root] if root is not None else []
        while pending:
            widget = pending.pop()
            try:
                yield from widget.strings()
                pending += widget.children()
            except GLib.Error:  # it went away while we looked
                continue

    def look(self, role, name):
        """The first shown widget of that role whose whole name matches the pattern, or None."""
        for widget in self.all():
            if widget.role == role and widget.matches(name):
                return widget
        return None

    def find(self, role, name, seconds=SECONDS):
        """As look, but waits for it."""
        return wait_for(f"{role} {name!r}", lambda: self.look(role, name), seconds)

    def click(self, role, name, seconds=SECONDS):
        """Clicks it once it can be used and its window is in front."""
        self._once_usable(_click_in_front, role, name, seconds)

    def press(self, role, name, seconds=SECONDS):
        """Presses it once it can be used."""
        self._once_usable(Widget.press, role, name, seconds)

    def usable(self, role, name, seconds=SECONDS):
        self._once_usable(lambda widget: None, role, name, seconds)

    def _once_usable(self, act, role, name, seconds):
        def attempt():
            widget = self.look(role, name)
            if widget is None or not widget.enabled():
                return False
            try:
                return act(widget) is not False
            except GLib.Error:  # replaced by another one since we looked
                return False

        wait_for(f"usable {role} {name!r}", attempt, seconds)

    def gone(self, role, name, seconds=SECONDS):
        wait_for(f"end of {role} {name!r}", lambda: self.look(role, name) is None, seconds)

    def _root(self):
        # What the library remembers of the desktop is out of date without a main loop.
        desktop = Atspi.get_desktop(0)
        desktop.set_cache_mask(Atspi.Cache.NONE)
        desktop.clear_cache()
        for index in range(desktop.get_child_count()):
            program = desktop.get_child_at_index(index)
            try:
                if program is not None and program.get_process_id() == self._pid:
                    return Widget(program)
            except GLib.Error:
                continue
        return None


def _place_of_active_window():
    argv = ["xdotool", "getactivewindow", "getwindowgeometry", "--shell"]
    answer = subprocess.run(argv, capture_output=True, text=True, check=False, timeout=20)
    box = dict(line.split("=") for line in answer.stdout.split())
    return tuple(int(box.get(name, 0)) for name in ("X", "Y", "WIDTH", "HEIGHT"))


def _click_in_front(widget):
    if not widget.in_front():
        return False
    widget.click()
    return True


def _shown_below(roots):
    found = []
    pending = [root for root in roots if root is not None]
    while pending:
        try:
            children = list(pending.pop().children())
            shown = [child for child in children if child.shows()]
        except GLib.Error:  # it went away while we looked
            continue
        found += shown
        pending += shown
    return found
