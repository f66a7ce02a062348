"""Runs inside gdb, on the client: which files of the project a click and a status pass.

ZVL_TRACE names the root of the project and the file for the answer. SIGTERM to the client ends it.
"""

import functools
import json
import os
import re
import subprocess

import gdb

ROOT, OUTPUT = os.environ["ZVL_TRACE"].split(os.pathsep)
# Moments, by a pattern for the function's whole name: the only names of the client written here.
CLICKED = r"zorvanelink::ui::ProfileTab::onConnButtonTriggered\("
TAKEN = r"zorvanelink::ui::LinkCore::GetServiceData"  # a text that has arrived
HANDED_OVER = r"zorvanelink::ui::LinkCore::Send\("
STATE_SHOWN = "zorvanelink::ui::viewStateFor"  # its argument is the state
STATUS = "status"  # the state's field
CONNECTED = "Connected"

_GENERATED = re.compile(r"metaObject|metacall|metacast")  # beside the signals
_FUNCTION = re.compile(r"([0-9a-f]+) [TtWw] (.*)")


class Trace:
    """What the GUI's thread passes: files, each with the first function there, and signals of our
    own classes, each with its folder."""

    def __init__(self):
        self._watched = {}  # by the number of the breakpoint
        self._passed = []  # those that are off until the next begin
        self.files, self.signals = {}, []

    def watch(self, address, name, path):
        place = gdb.Breakpoint(f"*{address:#x}")
        place.thread = 1
        place.enabled = False
        self._passed.append(place)
        self._watched[place.number] = (name.partition("(")[0], path)
        return place

    def begin(self):
        self.files, self.signals = {}, []
        for place in self._passed:
            place.enabled = True
        self._passed = []

    def hit(self, place, again):
        """`again`: whether a later hit is wanted too."""
        if place.number not in self._watched:
            return
        name, path = self._watched[place.number]
        if "/moc_" in path:
            self.signals.append([name, path.partition("/zvl_")[0]])
            return
        self.files.setdefault(path, name)
        if not again:
            place.enabled = False
            self._passed.append(place)

    def hit_caller(self):
        caller = gdb.selected_frame().older()
        symtab = caller.find_sal().symtab
        path = symtab and in_project(ROOT, symtab.filename)
        if path:
            self.files.setdefault(path, caller.name())


def functions(program):
    """Address, name and source file of the project's functions, addresses as they are now."""
    answer = subprocess.run(
        ["nm", "--demangle", "--defined-only", program], capture_output=True, text=True, check=True
    )
    found = {int(at, 16): name for at, name in _FUNCTION.findall(answer.stdout)}
    main_at = next(at for at, name in found.items() if name == "main")
    base = int(gdb.parse_and_eval("(unsigned long)&main")) - main_at
    for at, name in found.items():
        symtab = gdb.find_pc_line(base + at).symtab
        path = symtab and in_project(ROOT, symtab.filename)
        if path and path.endswith(".cpp") and not _GENERATED.search(name):
            yield base + at, name, path


@functools.cache
def in_project(root, filename):
    """The path below the root; None for other people's files. A compiler's cache may have told the
    folder of another checkout, so only the end of the name counts."""
    if "/moc_" in filename:
        return filename
    parts = [part for part in filename.split("/") if part not in ("", "..")]
    ends = ("/".join(parts[start:]) for start in range(len(parts)))
    return next((end for end in ends if os.path.isfile(os.path.join(root, end))), None)


def go_on():
    """The breakpoints of the next stop; None once the client is told to end."""
    stops = []
    gdb.events.stop.connect(stops.append)
    gdb.execute("continue", to_string=True)
    gdb.events.stop.disconnect(stops.append)
    if not stops or isinstance(stops[-1], gdb.SignalEvent):
        return None
    return stops[-1].breakpoints


def watch_state():
    """Goes on to where the state is first shown, and watches it from there."""
    gdb.Breakpoint(STATE_SHOWN, temporary=True)
    go_on()
    frame = gdb.selected_frame()
    state = next(symbol for symbol in frame.block() if symbol.is_argument).value(frame)
    status = state.referenced_value()[STATUS]
    return gdb.Breakpoint(f"*({status.type}*){int(status.address):#x}", gdb.BP_WATCHPOINT)


def status_of(place):
    return str(gdb.parse_and_eval(place.expression)).rpartition("::")[2]


def follow():
    trace = Trace()
    moments = {CLICKED: set(), TAKEN: set(), HANDED_OVER: set()}
    for address, name, path in functions(gdb.current_progspace().filename):
        place = trace.watch(address, name, path)
        for pattern, numbers in moments.items():
            if re.match(pattern, name):
                numbers.add(place.number)
    # Only now: a client that is held up in the midst of its start gets no accessible widgets.
    status = watch_state()
    trace.begin()
    results = {}
    while (places := go_on()) is not None:
        numbers = {place.number for place in places}
        begins = numbers & (moments[CLICKED] | moments[TAKEN])
        if begins:
            if "online" in results:
                results.setdefault("signals", trace.signals)
            trace.begin()
            trace.hit_caller()
        for place in places:
            trace.hit(place, again=begins)
        if status.number in numbers and status_of(status) == CONNECTED:
            results["online"] = dict(trace.files)
        if numbers & moments[HANDED_OVER]:
            results["click"] = dict(trace.files)
    results.setdefault("signals", trace.signals)
    return results


def main():
    for line in ("set pagination off", "set confirm off", "set print thread-events off",
                 "set breakpoint always-inserted on",
                 "handle SIGTERM stop nopass", "handle SIGPIPE nostop noprint pass",
                 "break main", "run"):  # fmt: skip
        gdb.execute(line, to_string=True)
    results = follow()
    with open(OUTPUT, "w") as output:
        json.dump(results, output)
    gdb.execute("kill", to_string=True)


main()
