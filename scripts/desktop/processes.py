"""Starts programs and ends exactly those, in reverse order, whatever happens."""

import ctypes
import os
import signal
import subprocess
import sys

_STOP_SECONDS = 5
_PR_SET_PDEATHSIG = 1
_libc = ctypes.CDLL(None)


def die_with_parent():
    """Even a harness that is killed leaves nothing behind."""
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGTERM)


def end_on_signals():
    """Turns the signals that end a program into an exception, so that `finally` runs."""

    def leave(number, _frame):
        sys.exit(128 + number)

    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, leave)


class Processes:
    """A stack of started programs. Use it in a `with` statement."""

    def __init__(self):
        self._started = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        while self._started:
            self.stop(self._started[-1])

    def start(self, argv, log, env=None, **options):
        """Starts argv[0], which is a path or a command; both its outputs are added to the file `log`."""
        with open(log, "ab") as output:
            process = subprocess.Popen(
                argv,
                stdin=options.pop("stdin", subprocess.DEVNULL),
                stdout=output,
                stderr=output,
                env=env,
                start_new_session=True,
                preexec_fn=die_with_parent,
                **options,
            )
        self._started.append(process)
        return process

    def stop(self, process, number=signal.SIGTERM):
        """Asks the program to end, then makes it. Returns its exit code, negative for a signal."""
        if process in self._started:
            self._started.remove(process)
        if process.poll() is None:
            process.send_signal(number)
            try:
                process.wait(_STOP_SECONDS)
            except subprocess.TimeoutExpired:
                process.kill()
        code = process.wait()
        _end_group(process.pid)
        return code


def _end_group(leader):
    """What the program itself started stood in its group."""
    try:
        os.killpg(leader, signal.SIGTERM)
    except ProcessLookupError:
        pass
