"""What Google Benchmark measures inside a process."""

import json
import os
import subprocess

from .table import Row, nanoseconds, ratio
from .timing import median

UNITS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}

SHAPES = {
    "square": "square",
    "ring-10000": "10,000 vertices",
    "ring-100000": "100,000 vertices",
    "spikes-100000": "100,000 vertices, spikes",
    "needles-100000": "100,000 vertices, needles",
    "polygons-10000": "10,000 polygons",
}


class Result:
    """The repetitions of one benchmark."""

    def __init__(self):
        self.repetitions = []

    def nanoseconds(self):
        return median([each["cpu_time"] * UNITS[each["time_unit"]] for each in self.repetitions])

    def counter(self, name):
        return median([each[name] for each in self.repetitions])


def run_benchmarks(plan, tool, filter="."):
    """The results by name. All repetitions of all benchmarks run in random order."""
    result_path = os.path.join(plan.data.scratch, "benchmark.json")
    command = [
        plan.build.tool(tool),
        f"--benchmark_filter={filter}",
        f"--benchmark_repetitions={plan.runs}",
        f"--benchmark_min_time={0.05 if plan.quick else 0.3}",
        "--benchmark_enable_random_interleaving=true",
        f"--benchmark_out={result_path}",
        "--benchmark_out_format=json",
    ]
    process = subprocess.run(command, capture_output=True, text=True)
    if process.returncode != 0:
        raise SystemExit(f"bench/run: {tool}: {process.stderr}")
    with open(result_path) as file:
        lines = json.load(file)["benchmarks"]
    results = {}
    for line in lines:
        if line["run_type"] == "iteration":
            results.setdefault(line["run_name"], Result()).repetitions.append(line)
    return results


# How the points are asked for: as the clipping pass does, and each when the one before is answered.
WAYS = {"batches": "in batches", "model": "one by one"}


def point_test(plan):
    results = run_benchmarks(plan, "point_test", "^points/")
    rows = []
    for shape, what in SHAPES.items():
        for way, asked in WAYS.items():
            own = results[f"points/{shape}/{way}"].nanoseconds()
            for method, name in {"walk": "plain walk", "geos": "GEOS, prepared geometry"}.items():
                other = results[f"points/{shape}/{method}"].nanoseconds()
                figures = nanoseconds(own), name, nanoseconds(other), ratio(own, other)
                rows.append(Row("point test, a point", f"{what}, {asked}", *figures))
    return rows


def scaling(plan):
    results = run_benchmarks(plan, "point_test", "^scaling/")
    rows = []
    for way, asked in WAYS.items():
        for kind, least, noun in (("ring", 100, "vertices"), ("polygons", 10, "polygons")):
            base = results[f"scaling/{kind}-{least}/{way}"].nanoseconds()
            size = least * 10
            while f"scaling/{kind}-{size}/{way}" in results:
                own = results[f"scaling/{kind}-{size}/{way}"].nanoseconds()
                figures = nanoseconds(own), f"{least} {noun}", nanoseconds(base), ratio(own, base)
                rows.append(Row("growth of the point test", f"{size:,} {noun}, {asked}", *figures))
                size *= 10
    return rows


def building(plan):
    results = run_benchmarks(plan, "point_test", "^building/")
    rows = []
    for name in sorted(results, key=lambda name: results[name].counter("family_index")):
        result = results[name]
        vertices = result.counter("vertices")
        each = result.nanoseconds() / vertices
        figure = f"{nanoseconds(each)}, {result.counter('bytesPerVertex'):.0f} bytes"
        what = f"{name.split('/')[1]}, {vertices:,.0f} in all"
        rows.append(Row("building the index, a vertex", what, figure))
    return rows


def number_reading(plan):
    results = run_benchmarks(plan, "number_reading")
    others = ("from_chars", "strtod", "stream")
    rows = []
    for own_name in ("readNumber", "parseRecord"):
        own = results[f"numbers/{own_name}"].nanoseconds()
        for name in others:
            other = results[f"numbers/{name}"].nanoseconds()
            figures = nanoseconds(own), name, nanoseconds(other), ratio(own, other)
            rows.append(Row("two numbers of a record", own_name, *figures))
    return rows
