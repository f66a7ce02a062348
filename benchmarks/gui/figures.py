"""The table of figures beside their limits that the benchmarks of the window print."""


class Table:
    def __init__(self, title):
        self.good = True
        print(f"\n{title}")
        self._row("name", "figure", "unit", "limit", "ratio", "verdict")

    def add(self, name, figure, unit, limit, base):
        """Good when not above the limit; the ratio is figure / base."""
        good = figure <= limit
        self.good = self.good and good
        ratio = f"{figure / base:.2f}" if base else ""
        verdict = "ok" if good else "MISSED"
        self._row(name, f"{figure:.2f}", unit, f"{limit:.2f}", ratio, verdict)

    def note(self, name, figure, unit):
        self._row(name, f"{figure:.2f}", unit, "", "", "")

    @staticmethod
    def _row(name, figure, unit, limit, ratio, verdict):
        line = f"  {name:<43}  {figure:>10}  {unit:<8}  {limit:>10}  {ratio:>6}  {verdict}"
        print(line.rstrip(), flush=True)
