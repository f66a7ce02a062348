#!/usr/bin/python3
"""Namespaces of its own for a program that drives a virtual desktop: process table, network, /tmp.

Then neither the one port file nor a process of the same name is shared with anything else on the
machine. As a command it says by its exit code, 0 or 1, whether the machine allows that.
"""

import os
import signal
import subprocess
import sys
from pathlib import Path

from processes import die_with_parent, end_on_signals

_INSIDE = "ZVL_APART"  # set between the two halves of enter()
_UNSHARE = ["unshare", "--net", "--pid", "--mount", "--ipc", "--fork", "--kill-child", "--mount-proc"]
_OLD_TMP = "/mnt"  # where the machine's own /tmp stands for a moment


def possible():
    return _command() is not None


def enter(*keep):
    """Goes on in namespaces of its own, with a printed line where the machine does not allow them.

    The folders of `keep` stay to be seen, also below /tmp.
    """
    if os.environ.pop(_INSIDE, None):
        _private_tmp(keep)
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
        _reap_for_child()
    elif command := _command():
        _run_inside([*command, sys.executable, "-B", *sys.argv])
    else:
        print("No namespaces here: this shares its port file with the machine.", flush=True)


def _command():
    """What makes the namespaces: as root, else with the help of a user namespace; None if nothing."""
    for command in (_UNSHARE, [*_UNSHARE, "--map-root-user"]):
        probe = [*command, "ip", "link", "set", "lo", "up"]
        try:
            if subprocess.run(probe, capture_output=True, check=False, timeout=20).returncode == 0:
                return command
        except FileNotFoundError:
            return None
    return None


def _run_inside(argv):
    end_on_signals()
    environment = {**os.environ, _INSIDE: "1"}
    with subprocess.Popen(argv, env=environment, preexec_fn=die_with_parent) as process:
        try:
            code = process.wait()
        finally:
            process.kill()  # and with it everything in its namespaces
    sys.exit(code)


def _private_tmp(keep):
    places = [Path(place).resolve() for place in keep]
    below = [place.relative_to("/tmp") for place in places if place.is_relative_to("/tmp")]
    _mount("--rbind", "/tmp", _OLD_TMP)
    _mount("-t", "tmpfs", "-o", "mode=1777", "tmpfs", "/tmp")
    for place in below:
        new = Path("/tmp", place)
        new.mkdir(parents=True, exist_ok=True)
        _mount("--rbind", Path(_OLD_TMP, place), new)
    subprocess.run(["umount", "--lazy", _OLD_TMP], check=True)


def _mount(*words):
    subprocess.run(["mount", *words], check=True)


def _reap_for_child():
    """The first process of a process table reaps what is left to it, and its end is the end of all;
    so the program itself goes on as its child."""
    child = os.fork()
    if child == 0:
        return
    signal.signal(signal.SIGINT, signal.SIG_IGN)  # the terminal tells the child as well
    while True:
        ended, status = os.wait()
        if ended == child:
            os._exit(os.waitstatus_to_exitcode(status) & 0xFF)


if __name__ == "__main__":
    sys.exit(0 if possible() else 1)
