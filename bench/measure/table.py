"""The table that bench/run prints."""

from dataclasses import dataclass

from .timing import median


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
    return f"{kibibytes / 1024:.3g} MiB"


def ratio(figure, other):
    quotient = figure / other
    return f"{quotient:.2f}" if quotient >= 0.1 else f"{quotient:.2g}"


def compare(section, what, figures, beside, others, form):
    """A row of two medians, their ratio, and the least and greatest ratio of a pair of runs."""
    pairs = [figure / other for figure, other in zip(figures, others)]
    figure, other = median(figures), median(others)
    spread = f"{ratio(figure, other)} ({min(pairs):.2f} to {max(pairs):.2f})"
    return Row(section, what, form(figure), beside, form(other), spread)


def render(rows):
    titles = Row("", "measured", "Veldtrim", "beside", "its figure", "ratio")
    lines = [titles, None, *rows]
    cells = []
    section = ""
    for row in lines:
        if row is None:
            cells.append(["---", "---", "---:", "---", "---:", "---:"])
            continue
        # The section's name stands where it begins.
        name = row.section if row.section != section else ""
        section = row.section
        cells.append([name, row.what, row.figure, row.beside, row.other, row.ratio])
    return "\n".join("| " + " | ".join(line) + " |" for line in cells)
