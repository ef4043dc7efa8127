# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""Series of measurements, and the table that shows them."""

import statistics
from dataclasses import dataclass

FEW = 20    # below so many values a 95th percentile says nothing


def median(values):
    return statistics.median(values)


def high(values):
    """The 95th percentile."""
    return statistics.quantiles(values, n=20, method="inclusive")[-1]


def shown(figure):
    if figure is None:
        return ""
    return f"{figure:.{2 if abs(figure) < 10 else 1}f}"


@dataclass
class Row:
    """One line of the table."""
    name: str
    unit: str
    values: list
    aim: str = ""
    met: bool = None

    def cells(self):
        count = len(self.values)
        figures = [median(self.values), high(self.values) if count >= FEW else None,
                   max(self.values) if count > 1 else None]
        result = {None: "", True: "ok", False: "missed"}[self.met]
        return [self.name, str(count), *map(shown, figures), self.unit, self.aim, result]


@dataclass
class Heading:
    name: str

    def cells(self):
        return [self.name]


HEADER = ["", "n", "median", "95 %", "max", "unit", "aim", ""]
RIGHT = range(1, 5)


def table(rows):
    lines = [HEADER] + [row.cells() for row in rows]
    widths = [max(len(line[n]) for line in lines if len(line) > 1) for n in range(len(HEADER))]
    text = []
    for line in lines:
        cells = [cell.rjust(width) if n in RIGHT else cell.ljust(width)
                 for n, (cell, width) in enumerate(zip(line, widths))] if len(line) > 1 else line
        text.append("  ".join(cells).rstrip())
    return "\n".join(text)
