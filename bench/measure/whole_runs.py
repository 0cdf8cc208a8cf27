"""Whole runs of the program, beside the floor program and beside other programs."""

import os
import shutil
from functools import partial

from .data import remove_file, remove_tree
from .table import Row, compare, nanoseconds, ratio, seconds
from .timing import Timed, median, say, time_in_turn

SHAPES = {
    "square": "square",
    "ring-10000": "10,000 vertices",
    "ring-100000": "100,000 vertices",
    "polygons-10000": "10,000 polygons",
}


class Clipping(Timed):
    """A run of the program; notes how many records it kept."""

    def __init__(self, plan, records, shape):
        command, output = plan.data.clip_command(records, shape)
        super().__init__(command, clean=self._clean)
        self.output = output
        self.kept = 0

    def _clean(self):
        total = os.path.join(self.output, "total_node_count.txt")
        if os.path.exists(total):
            with open(total) as file:
                self.kept = int(file.read())
        remove_tree(self.output)


class Floor(Timed):
    """A run of the floor program, which keeps the records in the square."""

    def __init__(self, plan, records, buffered=False):
        output = plan.data.output("floor-" + ("buffered.txt" if buffered else "lines.txt"))
        options = ["--buffered"] if buffered else []
        command = [plan.build.tool("floor"), *options, records, output, *plan.data.square()]
        super().__init__(command, clean=self._clean)
        self.output = output
        self.kept = 0

    def _clean(self):
        if os.path.exists(self.output):
            if self.kept == 0:
                with open(self.output, "rb") as file:
                    self.kept = sum(1 for _ in file) - 1
            remove_file(self.output)


def beside_the_floor(plan):
    """A floor that clips to the square: rings and polygons are made to keep about as much."""
    records = plan.data.records(plan.records)
    rows = []
    for shape, what in SHAPES.items():
        say(f"whole runs: {what}")
        own, floor = Clipping(plan, records, shape), Floor(plan, records)
        buffered = Floor(plan, records, buffered=True)
        with_buffer = [buffered] if shape == "square" else []
        time_in_turn([own, floor, *with_buffer], plan.runs, plan.data.scratch)
        what = f"{what}, {own.kept:,} kept"
        names = (f"floor, {floor.kept:,} kept", "floor with one large buffer")
        for name, other in zip(names, [floor, *with_buffer]):
            rows.append(compare("whole run", what, own.wall, name, other.wall, seconds))
    return rows


def keeping_nothing(plan):
    """No writes: what is left is reading, parsing and the point test."""
    records = plan.data.records(plan.records)
    rows = []
    for shape, what in {"frame-6": "8 vertices", "frame-10000": "10,000 vertices"}.items():
        own, floor = Clipping(plan, records, shape), Floor(plan, records, buffered=True)
        time_in_turn([own, floor], plan.runs, plan.data.scratch)
        if own.kept != 0:
            raise SystemExit(f"bench/run: {shape} is to keep nothing, it kept {own.kept}")
        rows.append(
            compare(
                "keeping nothing, processor time a record",
                f"frame of {what}",
                [each * 1e9 / plan.records for each in own.processor],
                "floor with one large buffer",
                [each * 1e9 / plan.records for each in floor.processor],
                nanoseconds,
            )
        )
    return rows


def box_filter(plan, records, flush):
    west, south, east, north = plan.data.square()
    script = (
        f"NR == 1 || ($1 >= {west} && $1 <= {east} && $2 >= {south} && $2 <= {north})"
        + (" { print; fflush() }" if flush else " { print }")
    )
    return ["mawk", "-F;", script, records]


def beside_other_programs(plan):
    """Some take long for large shapes: they get fewer records, and so does the run beside them."""
    cases = []
    if shutil.which("gmt"):
        for shape, share in {"square": 5, "ring-10000": 25, "polygons-10000": 100}.items():
            count = max(plan.records // share, 10_000)
            records = plan.data.records(count)
            command = ["gmt", "select", records, "-h1", "-F" + plan.data.table(shape)]
            cases.append((shape, count, records, "gmt select -F", command))
    if shutil.which("mawk"):
        records = plan.data.records(plan.records)
        for flush in (False, True):
            name = "mawk with a bounding box" + (" and fflush()" if flush else "")
            command = box_filter(plan, records, flush)
            cases.append(("square", plan.records, records, name, command))
    rows = []
    for shape, count, records, name, command in cases:
        say(f"{name}: {SHAPES[shape]}")
        own = Clipping(plan, records, shape)
        output = plan.data.output("other.txt")
        other = Timed(command, standard_output=output, clean=partial(remove_file, output))
        time_in_turn([own, other], plan.runs, plan.data.scratch)
        own_each = median(own.wall) * 1e9 / count
        other_each = median(other.wall) * 1e9 / count
        rows.append(
            Row(
                "whole run, a record",
                f"{SHAPES[shape]}, {count:,} records",
                nanoseconds(own_each),
                name,
                nanoseconds(other_each),
                ratio(own_each, other_each),
            )
        )
    return rows
