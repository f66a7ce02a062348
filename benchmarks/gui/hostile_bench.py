#!/usr/bin/python3
"""What it costs the client when a peer sends too much: the longest stall of the window, and memory.

usage: hostile_bench.py FOLDER-OF-THE-PROGRAMS FOLDER-FOR-THE-RESULTS
Exit code 0 when every figure is within its limit and the client understood what came next.
"""

import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts" / "desktop"))

import apart  # noqa: E402
from figures import Table  # noqa: E402
from hostile_peer import Peer, floods  # noqa: E402
from processes import end_on_signals  # noqa: E402
from programs import Client, Service  # noqa: E402
from virtual_desktop import VirtualDesktop  # noqa: E402
from waiting import wait_for  # noqa: E402

RUNS = 3
SECONDS = 20
STALL_LIMIT = 100  # ms
MEMORY_LIMIT = 150  # MiB, the peak of what was resident


def peak_mib(pid):
    text = Path(f"/proc/{pid}/status").read_text()
    return int(re.search(r"^VmHWM:\s+(\d+) kB", text, re.MULTILINE).group(1)) / 1024


def no_browser(desktop):
    """Pages open in a program that does nothing."""
    folder = desktop.folder / "browser"
    folder.mkdir()
    (folder / "xdg-open").symlink_to("/bin/true")
    os.environ["PATH"] = f"{folder}{os.pathsep}{os.environ['PATH']}"


def endure(desktop, binaries, frames):
    """The longest stall and the peak of memory of a client that is sent the frames while online,
    and then understands that it is not any more."""
    client = Client(desktop, binaries)
    client.start()
    peer = Peer()
    try:
        client.settle(SECONDS)
        peer.go_online(client, SECONDS)
        pid = client.process.pid
        window = wait_for("the window", lambda: desktop.windows_of(pid), SECONDS).pop()
        with subprocess.Popen(
            [binaries / "window_pulse", window],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
        ) as pulse:
            pulse.stdout.readline()  # it answers
            peer.send(*frames)
            peer.go_offline(client, SECONDS)
            stall, _ = pulse.communicate(timeout=SECONDS)
        return float(stall), peak_mib(pid)
    finally:
        peer.close()
        client.stop()


def measure(desktop, binaries, table):
    Service(desktop, binaries).write_profile()
    no_browser(desktop)
    for name, frames in {"nothing": [], **floods()}.items():
        stalls, peaks = zip(*(endure(desktop, binaries, frames) for _ in range(RUNS)))
        # What else the machine does only adds to a stall.
        table.add(f"{name}: stall", min(stalls), "ms", STALL_LIMIT, STALL_LIMIT)
        table.add(f"{name}: memory", max(peaks), "MiB", MEMORY_LIMIT, MEMORY_LIMIT)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    binaries, results = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
    shutil.rmtree(results, ignore_errors=True)
    results.mkdir(parents=True)
    apart.enter(ROOT, binaries, results)
    end_on_signals()
    with VirtualDesktop(results) as desktop:
        table = Table("A peer that sends too much: longest stall of the window, peak of memory")
        measure(desktop, binaries, table)
    return 0 if table.good else 1


if __name__ == "__main__":
    sys.exit(main())
