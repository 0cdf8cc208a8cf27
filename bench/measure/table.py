"""The table that bench/run prints."""

from dataclasses import dataclass
from statistics import median
from typing import Callable


@dataclass
class Row:
    section: str
    what: str
    figure: str
    beside: str = ""
    other: str = ""
    ratio: str = ""


def seconds(value):
    return f"{value:.2f} s" if value >= 1 else f"{value * 1e3:.3g} ms"


def nanoseconds(value):
    return f"{value:,.0f} ns" if value >= 100 else f"{value:.3g} ns"


def mebibytes(kibibytes):
    value = kibibytes / 1024
    return f"{value:,.0f} MiB" if value >= 100 else f"{value:.3g} MiB"


@dataclass
class Figure:
    """What is taken from a sample, and how it is written."""

    of: Callable
    form: Callable
    name: str = ""  # where a section has several


WALL = Figure(lambda run: run.wall, seconds, "time")
PROCESSOR = Figure(lambda run: run.processor, seconds, "processor time")
PEAK = Figure(lambda run: run.peak, mebibytes, "peak memory")
NANOSECONDS = Figure(lambda result: result["nanoseconds"], nanoseconds)


def ratio(figure, other):
    if other == 0:
        return ""
    quotient = figure / other
    return f"{quotient:.2f}" if quotient >= 0.1 else f"{quotient:.2g}"


def compare(section, what, figure, own, beside="", others=()):
    """A row of one figure: medians, their ratio, and the least and greatest of a pair of runs."""
    owns = [figure.of(sample) for sample in own]
    row = Row(section, what, figure.form(median(owns)))
    if others:
        others = [figure.of(sample) for sample in others]
        row.beside, row.other = beside, figure.form(median(others))
        row.ratio = ratio(median(owns), median(others))
        pairs = [own / other for own, other in zip(owns, others) if other != 0]
        if len(pairs) > 1:
            row.ratio += f" ({ratio(min(pairs), 1)} to {ratio(max(pairs), 1)})"
    return row


def header():
    titles = ["", "measured", "Veldtrim", "beside", "its figure", "ratio"]
    return _line(titles) + "\n" + _line(["---", "---", "---:", "---", "---:", "---:"])


def lines(rows):
    """The lines of one section; its name stands on the first."""
    cells = ([row.what, row.figure, row.beside, row.other, row.ratio] for row in rows)
    return "\n".join(_line(["" if i else rows[0].section, *each]) for i, each in enumerate(cells))


def _line(cells):
    return "| " + " | ".join(cells) + " |"
