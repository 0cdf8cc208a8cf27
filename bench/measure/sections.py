"""Whole runs, benchmarks inside a process, and what runs cost besides time."""

import os
import shutil

from . import shapes
from .runner import Command, Profile
from .table import NANOSECONDS, PEAK, WALL, Figure, nanoseconds

SHAPES = {
    "square": "square",
    "ring-10000": "10,000 vertices",
    "ring-100000": "100,000 vertices",
    "polygons-10000": "10,000 polygons",
    "spikes-100000": "100,000 vertices, spikes",
    "needles-100000": "100,000 vertices, needles",
}
# How the points are asked for: as the clipping pass does, and each when the one before is answered.
WAYS = {"batches": "in batches", "model": "one by one"}


def clip_records(plan, count, shape):
    """Makes the command that clips a file of records to a shape."""
    inputs, boundary = os.path.dirname(plan.data.records(count)), plan.data.boundary(shape)
    return lambda build: plan.clip(build, inputs, boundary)


def square_corners():
    (west, south), _, (east, north), _ = shapes.make_shape("square")[0]
    return [f"{each:.3f}" for each in (west, south, east, north)]


def floor(plan, *options):
    """The floor program, which keeps the records in the square."""
    output = plan.data.output("floor.txt")
    words = [plan.build.tool("floor"), *options, plan.data.records(plan.records), output]
    return Command(words + square_corners(), plan.data.scratch, output)


def beside_the_floor(plan):
    """A floor that clips to the square: rings and polygons are made to keep about as much."""
    for shape in ("square", "ring-10000", "ring-100000", "polygons-10000"):
        floors = {"floor": floor(plan)}
        if shape == "square":
            floors["floor with one large buffer"] = floor(plan, "--buffered")
        own = clip_records(plan, plan.records, shape)
        yield from plan.compare("whole run", SHAPES[shape], [WALL], own, floors)[0]


def keeping_nothing(plan):
    """No writes: what is left is reading, parsing and the point test."""
    section = "keeping nothing, processor time a record"
    figure = Figure(lambda run: run.processor * 1e9 / plan.records, nanoseconds)
    for shape, what in {"frame-6": "8 vertices", "frame-10000": "10,000 vertices"}.items():
        own = clip_records(plan, plan.records, shape)
        others = {"floor with one large buffer": floor(plan, "--buffered")}
        rows, commands, _ = plan.compare(section, f"frame of {what}", [figure], own, others)
        if any(each.kept != 0 for each in commands[:1]):
            raise SystemExit(f"bench/run: {shape} is to keep nothing, it kept {commands[0].kept}")
        yield from rows


def other_programs(plan):
    """Shape, number of records, name, command. Some take long for large shapes: they get fewer
    records, and so does the run beside them."""
    for shape, share in {"square": 5, "ring-10000": 25, "polygons-10000": 100}.items():
        count = max(plan.records // share, 10_000)
        words = ["gmt", "select", plan.data.records(count), "-h1", "-F" + plan.data.table(shape)]
        yield shape, count, "gmt select -F", words
    west, south, east, north = square_corners()
    inside = f"NR == 1 || ($1 >= {west} && $1 <= {east} && $2 >= {south} && $2 <= {north})"
    for flush, name in (("", ""), ("; fflush()", " and fflush()")):
        words = ["mawk", "-F;", f"{inside} {{ print{flush} }}", plan.data.records(plan.records)]
        yield "square", plan.records, "mawk with a bounding box" + name, words


def beside_other_programs(plan):
    for shape, count, name, words in other_programs(plan):
        if shutil.which(words[0]) is None:
            continue
        output = plan.data.output("other.txt")
        others = {name: Command(words, plan.data.scratch, output, to_output=True)}
        figure = Figure(lambda run: run.wall * 1e9 / count, nanoseconds)
        what = f"{SHAPES[shape]}, {count:,} records"
        own = clip_records(plan, count, shape)
        yield from plan.compare("whole run, a record", what, [figure], own, others)[0]


def inside_points(plan, section, figures, cases):
    """Rows of point_test, which reads the boundary files and the records of these names."""
    plan.data.records(1 << 20)
    for _, name, others in cases:
        for each in (name, *others.values()):
            plan.data.boundary(each.split("/")[1])
    return plan.compare_inside(section, "point_test", figures, cases)


def point_test(plan):
    cases = []
    for shape, what in SHAPES.items():
        others = {"plain walk": f"points/{shape}/walk"}
        others["GEOS, prepared geometry"] = f"points/{shape}/geos"
        cases += [(f"{what}, {WAYS[way]}", f"points/{shape}/{way}", others) for way in WAYS]
    return inside_points(plan, "point test, a point", [NANOSECONDS], cases)


def scaling(plan):
    cases = []
    for way, asked in WAYS.items():
        for kind, least, noun in (("ring", 100, "vertices"), ("polygons", 10, "polygons")):
            others = {f"{least} {noun}": f"scaling/{kind}-{least}/{way}"}
            for size in (least * 10**power for power in range(1, 5)):
                what = f"{size:,} {noun}, {asked}"
                cases.append((what, f"scaling/{kind}-{size}/{way}", others))
    return inside_points(plan, "growth of the point test", [NANOSECONDS], cases)


def building(plan):
    cases = [
        (shape, f"building/{shape}/index", {})
        for shape in ("ring-10000", "ring-100000", "ring-1000000", "spikes-100000")
        + ("needles-100000", "polygons-10000", "polygons-100000")
    ]
    figures = [
        Figure(lambda result: result["nanoseconds"] / result["vertices"], nanoseconds, "time"),
        Figure(lambda result: result["bytesPerVertex"], lambda size: f"{size:.0f} bytes", "memory"),
    ]
    return inside_points(plan, "building the index, a vertex", figures, cases)


def number_reading(plan):
    plan.data.records(1 << 20)
    others = {name: f"numbers/{name}" for name in ("from_chars", "strtod", "stream")}
    cases = [(name, f"numbers/{name}", others) for name in ("readNumber", "parseRecord")]
    return plan.compare_inside("two numbers of a record", "number_reading", [NANOSECONDS], cases)


def boundary_file(plan):
    """One read per process, so that neither reader finds memory that the other has left."""
    points = 100_000 if plan.quick else 1_000_000
    path = plan.data.boundary(f"ring-{points}")

    def reading(build, reader="veldtrim"):
        return Command([build.tool("read_boundary"), reader, path], plan.data.scratch)

    others = {"pugixml": reading(plan.build, "pugixml")}
    section = f"boundary file, {points:,} points"
    return plan.compare(section, "reading", [WALL, PEAK], reading, others)[0]


def profiled(plan, section, shape, what, form, *tool):
    """What more records add to the count of a tool of valgrind: start and end of the run, and the
    index, fall out."""
    few, many = 20_000, 120_000

    def added(build):
        profiles = [
            Profile(clip_records(plan, count, shape)(build), *tool) for count in (few, many)
        ]
        return lambda: (profiles[1]() - profiles[0]()) / (many - few)

    figure = Figure(lambda count: count, form)
    return plan.compare(section, what, [figure], added, runs=1, first_counts=True)[0]


def allocations(plan):
    tool = ["--tool=memcheck", "--leak-check=no"], r"total heap usage: ([\d,]+) allocs"
    return profiled(plan, "allocations a record", "square", "square", "{:.3g}".format, *tool)


def instructions(plan):
    tool = ["--tool=callgrind", "--callgrind-out-file=/dev/null"], r"Collected : (\d+)"
    shapes_kept = {"frame-6": "dropped, by 8 vertices", "everything": "kept, by 4 vertices"}
    for shape, what in shapes_kept.items():
        yield from profiled(plan, "instructions a record", shape, what, "{:,.0f}".format, *tool)
