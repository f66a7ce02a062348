#!/usr/bin/python3
"""Start, memory and idle cost of the client beside an empty Qt program.

usage: gui_bench.py FOLDER-OF-THE-PROGRAMS FOLDER-FOR-THE-RESULTS
Exit code 0 when every figure is within its limit.
"""

import os
import re
import shutil
import signal
import statistics
import subprocess
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts" / "desktop"))

from figures import Table  # noqa: E402
from processes import end_on_signals  # noqa: E402
from programs import Client, Service  # noqa: E402
from virtual_desktop import VirtualDesktop  # noqa: E402
from waiting import wait_for  # noqa: E402

START_RUNS = 11
SETTLE_SECONDS = 5
IDLE_SECONDS = 30
START_LIMIT = 0.7  # times the empty program
MEMORY_LIMIT = 0.6
IDLE_WAKE_UPS = 0  # of all threads
# A second, of the GUI thread: the duration with its question, and the answer. The time that is
# measured may begin and end with one.
ONLINE_WAKE_UPS = 2 + 1 / IDLE_SECONDS
ONLINE_CPU = 600  # ms a minute: one hundredth of a processor


def start_times(watch, programs):
    """For each program the medians of the milliseconds to its first window and to its picture."""
    answer = subprocess.run(
        [watch, str(START_RUNS), *programs], capture_output=True, text=True, check=True, timeout=120
    )
    times = [([], []) for _ in programs]
    for line in answer.stdout.splitlines():
        program, window, picture = line.split()
        times[int(program)][0].append(float(window))
        times[int(program)][1].append(float(picture))
    return [tuple(map(statistics.median, both)) for both in times]


def pss_mib(pid):
    text = Path(f"/proc/{pid}/smaps_rollup").read_text()
    return int(re.search(r"^Pss:\s+(\d+) kB", text, re.MULTILINE).group(1)) / 1024


def wake_ups(pid):
    """Of the GUI thread, and of all threads."""
    counts = {}
    for status in Path(f"/proc/{pid}/task").glob("*/status"):
        text = status.read_text()
        counts[status.parent.name] = int(
            re.search(r"^voluntary_ctxt_switches:\s+(\d+)", text, re.MULTILINE).group(1)
        )
    return counts[str(pid)], sum(counts.values())


def cpu_ticks(pid):
    # The name in brackets may hold blanks.
    fields = Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    return int(fields[11]) + int(fields[12])


def idle_cost(pid):
    """Wake-ups of the GUI thread and of all threads in IDLE_SECONDS, and CPU milliseconds a minute."""
    window, everything = wake_ups(pid)
    ticks = cpu_ticks(pid)
    time.sleep(IDLE_SECONDS)
    later = wake_ups(pid)
    seconds = (cpu_ticks(pid) - ticks) / os.sysconf("SC_CLK_TCK")
    return later[0] - window, later[1] - everything, seconds * 1000 * 60 / IDLE_SECONDS


def settled(process):
    time.sleep(SETTLE_SECONDS)
    return process.pid


def connect_by_itself():
    settings = Path(os.environ["XDG_CONFIG_HOME"], "ZorvaneLink", "AppConfig.ini")
    settings.write_text(settings.read_text().replace("AutoLogin=false", "AutoLogin=true"))


def measure(desktop, binaries, table):
    empty = str(binaries / "empty_widget")
    service = Service(desktop, binaries)
    service.write_profile()
    service.start()
    client = Client(desktop, binaries)

    ours, base = start_times(str(binaries / "window_watch"), [str(client.path), empty])
    table.note("empty program: first window", base[0], "ms")
    table.add("client: first window", ours[0], "ms", START_LIMIT * base[0], base[0])
    table.note("empty program: its picture", base[1], "ms")
    table.note("client: its picture", ours[1], "ms")

    # One after the other: what two programs share would count half for each.
    process = desktop.processes.start([empty], desktop.log("empty"))
    base = pss_mib(settled(process))
    desktop.processes.stop(process)
    client.start()
    pid = settled(client.process)
    table.note("empty program: memory (PSS)", base, "MiB")
    table.add("client: memory (PSS)", pss_mib(pid), "MiB", MEMORY_LIMIT * base, base)

    # The service's signs of life are its own doing, so it holds its breath.
    service.process.send_signal(signal.SIGSTOP)
    _, everything, milliseconds = idle_cost(pid)
    service.process.send_signal(signal.SIGCONT)
    table.add(f"client, ready: wake-ups in {IDLE_SECONDS} s", everything, "", IDLE_WAKE_UPS, 0)
    table.note("client, ready: CPU a minute", milliseconds, "ms")
    client.stop()

    connect_by_itself()
    client.start()
    wait_for("a start", lambda: service.messages("start"), 20)
    window, everything, milliseconds = idle_cost(settled(client.process))
    window, everything = window / IDLE_SECONDS, everything / IDLE_SECONDS
    table.add("client, online: GUI wake-ups a second", window, "", ONLINE_WAKE_UPS, 0)
    table.note("client, online: with heartbeats", everything, "")
    table.add("client, online: CPU a minute", milliseconds, "ms", ONLINE_CPU, 0)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    end_on_signals()
    binaries, results = Path(sys.argv[1]), Path(sys.argv[2])
    shutil.rmtree(results, ignore_errors=True)
    with VirtualDesktop(results, accessibility=False) as desktop:
        table = Table("Start, memory and idle cost beside an empty Qt program")
        measure(desktop, binaries, table)
    return 0 if table.good else 1


if __name__ == "__main__":
    sys.exit(main())
