"""The steps of a run as a table on the terminal: what, after how many seconds, seen or not."""

import time

from waiting import NotSeen

_WIDTH = 72


class Steps:
    def __init__(self):
        self._start = time.monotonic()
        self.failed = False
        print(f"{'step':<{_WIDTH}} seen after", flush=True)

    def see(self, text, probe):
        """Runs probe(), which raises NotSeen or AssertionError when the step does not happen."""
        begin = time.monotonic()
        try:
            answer = probe()
        except (NotSeen, AssertionError) as problem:
            self._print(text, begin, "FAILED")
            print(f"    {problem}", flush=True)
            self.failed = True
            raise
        self._print(text, begin, "ok")
        return answer

    def total(self):
        seconds = time.monotonic() - self._start
        word = "Not every step was seen" if self.failed else "Every step was seen"
        print(f"{word}, {seconds:.1f} s in total.", flush=True)

    @staticmethod
    def _print(text, begin, word):
        # Chinese characters take two columns.
        wide = sum(1 for character in text if ord(character) >= 0x1100)
        seconds = time.monotonic() - begin
        print(f"{text:<{_WIDTH - wide}} {seconds:7.2f} s  {word}", flush=True)
