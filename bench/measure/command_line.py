"""The options of bench/run, and the order of its work."""

import argparse
import os
import sys
import tempfile
from dataclasses import dataclass

from . import costs, in_process, whole_runs
from .build import REPOSITORY, Build, install_packages
from .data import Data
from .machine import describe_machine
from .table import render
from .timing import say

SECTIONS = {
    "runs": whole_runs.beside_the_floor,
    "nothing": whole_runs.keeping_nothing,
    "others": whole_runs.beside_other_programs,
    "points": in_process.point_test,
    "scaling": in_process.scaling,
    "building": in_process.building,
    "numbers": in_process.number_reading,
    "xml": costs.boundary_file,
    "memory": costs.peak_memory,
    "allocations": costs.allocations,
    "instructions": costs.instructions,
}


@dataclass
class Plan:
    """What a section needs to know."""

    build: Build
    data: Data
    runs: int
    records: int
    gigabytes: float
    quick: bool


def parse_options():
    parser = argparse.ArgumentParser(
        prog="bench/run", description="Builds the benchmarks, runs them, prints a table of ratios."
    )
    parser.add_argument(
        "--only",
        metavar="SECTION,...",
        type=lambda text: text.split(","),
        default=list(SECTIONS),
        help="only these sections: " + ", ".join(SECTIONS),
    )
    parser.add_argument("--quick", action="store_true", help="small data, three runs: a trial")
    parser.add_argument("--runs", type=int, metavar="N", help="runs to take the median of (5)")
    parser.add_argument("--records", type=int, metavar="N", help="records of a file (5000000)")
    parser.add_argument(
        "--gigabytes", type=float, metavar="G", help="size of the file for the peak memory (1)"
    )
    parser.add_argument(
        "--directory",
        default=os.path.join(REPOSITORY, "build", "bench"),
        help="where to build, and to keep the data (build/bench)",
    )
    parser.add_argument(
        "--no-setup", action="store_true", help="do not look for packages to install"
    )
    options = parser.parse_args()
    unknown = [name for name in options.only if name not in SECTIONS]
    if unknown:
        parser.error("no such section: " + ", ".join(unknown))
    options.runs = options.runs or (3 if options.quick else 5)
    options.records = options.records or (300_000 if options.quick else 5_000_000)
    options.gigabytes = options.gigabytes or (0.1 if options.quick else 1.0)
    return options


def main():
    options = parse_options()
    if not options.no_setup:
        install_packages()
    build = Build(options.directory)
    build.make()
    data_directory = os.path.join(options.directory, "data")
    os.makedirs(data_directory, exist_ok=True)
    rows = []
    with tempfile.TemporaryDirectory(prefix="run-", dir=data_directory) as scratch:
        plan = Plan(
            build,
            Data(data_directory, scratch, build),
            options.runs,
            options.records,
            options.gigabytes,
            options.quick,
        )
        for name, measure in SECTIONS.items():
            if name in options.only:
                say(f"section {name}")
                rows += measure(plan)
    print(render(rows))
    print()
    print(describe_machine(options, data_directory, build))
    sys.stdout.flush()
    return 0
