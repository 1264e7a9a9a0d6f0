"""Figures of several runs, their budgets, and the tables that show both."""

import dataclasses
import statistics

HEADING = ("noise", "at most")


@dataclasses.dataclass
class Figure:
    """One line of a table: the value of each run, and a budget if there is one.

    What counts is the median. The noise is the spread of the runs without the upper and lower quarter, which are the middle
    three of five: one run that was disturbed shall not excuse the others.
    """

    label: str
    values: list
    limit: float = None
    digits: int = 2
    beside: tuple = ()

    @property
    def median(self):
        return statistics.median(self.values)

    @property
    def noise(self):
        middle = sorted(self.values)[len(self.values) // 4:-(len(self.values) // 4) or None]
        return middle[-1] - middle[0]

    @property
    def is_broken(self):
        return self.limit is not None and self.median - self.limit > self.noise

    def cells(self):
        limit = "" if self.limit is None else f"{self.limit:.{self.digits}f}" + (" **broken**" if self.is_broken else "")
        return (self.label, *self.beside, f"{self.median:.{self.digits}f}", f"{self.noise:.{self.digits}f}", limit)


def print_table(heading, rows):
    print("\n| " + " | ".join(heading) + " |")
    print("|" + "---|" + "---:|" * (len(heading) - 1))
    for row in rows:
        print("| " + " | ".join(row) + " |", flush=True)
