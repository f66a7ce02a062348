"""Two ways to use a program: with the mouse, and with the keyboard alone. Both write with keys."""

import subprocess

from gi.repository import GLib

import road
from waiting import NotSeen, wait_for

_FIELDS = ("text", "password text")
_RADIO = "radio button"
_MOST_TABS = 60  # more than any window of ours has places for the focus


def keys(*names):
    subprocess.run(["xdotool", "key", "--clearmodifiers", *names], check=True, timeout=20)


def write(text):
    subprocess.run(["xdotool", "type", "--clearmodifiers", text], check=True, timeout=20)


class Mouse:
    def __init__(self, client):
        self._widgets = client.widgets

    def press(self, role, name):
        self._widgets.click(role, name, road.SECONDS)

    def fill(self, name, text):
        field = wait_for(f"field {name!r}", lambda: _field(self._widgets, name), road.SECONDS)
        wait_for(f"{name!r} in front", field.in_front, road.SECONDS)
        field.click()
        wait_for(f"focus in {name!r}", field.focused, road.SECONDS)
        _replace(text)

    def close(self):
        self.press("push button", "Close")


class Keyboard:
    """Goes from place to place with the tabulator, as long as it takes."""

    def __init__(self, client):
        self._widgets = client.widgets

    def press(self, role, name):
        self._widgets.usable(role, name, road.SECONDS)
        self._walk_to((role,), name)
        keys("space")

    def fill(self, name, text):
        wait_for(f"field {name!r}", lambda: _field(self._widgets, name), road.SECONDS)
        self._walk_to(_FIELDS, name)
        _replace(text)

    def close(self):
        """Again until it is heard: the focus may still be on its way back from a dialog."""

        def closed():
            keys("alt+F4")
            return self._widgets.look("push button", "Close") is None

        wait_for("a closed window", closed, road.SECONDS)

    def _walk_to(self, roles, name):
        passed = []

        def step():
            here = self._widgets.focus()
            if here is None:
                return False
            if here.role in roles and here.matches(name):
                return True
            passed.append(f"{here.role} {here.name!r}")
            assert len(passed) <= _MOST_TABS, f"no way to {roles} {name!r}: {passed}"
            # One place of the focus holds a whole group of them.
            among = here.role == _RADIO and _RADIO in roles
            keys("Right" if among else "Tab")
            _wait_for_move(here)
            return False

        wait_for(f"the focus on {name!r}", step, 3 * road.SECONDS)


def _field(widgets, name):
    for role in _FIELDS:
        field = widgets.look(role, name)
        if field is not None and field.enabled():
            return field
    return None


def _replace(text):
    keys("ctrl+a")
    write(text)


def _wait_for_move(before):
    def moved():
        try:
            return not before.focused()
        except GLib.Error:
            return True

    try:
        wait_for("a move of the focus", moved, 2)
    except NotSeen:
        pass  # the only place of its window
