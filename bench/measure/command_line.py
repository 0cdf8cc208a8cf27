"""The options of bench/run, and the order of its work."""

import argparse
import os
import tempfile

from . import load, sections
from .build import REPOSITORY, Build, MissingProgram, install_packages, say
from .cases import Plan
from .inputs import Inputs
from .machine import describe_machine
from .table import header, lines

SECTIONS = {
    "runs": sections.beside_the_floor,
    "nothing": sections.keeping_nothing,
    "others": sections.beside_other_programs,
    "points": sections.point_test,
    "scaling": sections.scaling,
    "building": sections.building,
    "numbers": sections.number_reading,
    "xml": sections.boundary_file,
    "allocations": sections.allocations,
    "instructions": sections.instructions,
    "memory": load.large_scan,
    "boundaries": load.misshapen_boundaries,
    "scans": load.misshapen_scans,
    "loads": load.loads,
}


def parse_options():
    parser = argparse.ArgumentParser(
        prog="bench/run", description="Builds the benchmarks, runs them, prints a table of ratios."
    )
    add = parser.add_argument
    add(
        "--only", metavar="SECTION,...", type=lambda text: text.split(","), default=list(SECTIONS),
        help="only these sections: " + ", ".join(SECTIONS),
    )
    add(
        "--against", metavar="DIR", type=Build,
        help="compare with another build, a directory with bin/ and bench/bin/, and nothing else",
    )
    add("--quick", action="store_true", help="small data, three runs: a trial")
    add("--runs", type=int, metavar="N", help="runs to take the median of (5)")
    add("--records", type=int, metavar="N", help="records of a file (5000000)")
    add("--gigabytes", type=float, metavar="G", help="size of the large scan (1)")
    add(
        "--directory", default=os.path.join(REPOSITORY, "build", "bench"), type=os.path.abspath,
        help="where to build, and to keep the data (build/bench)",
    )
    add("--no-setup", action="store_true", help="do not look for packages to install")
    options = parser.parse_args()
    unknown = [name for name in options.only if name not in SECTIONS]
    if unknown:
        parser.error("no such section: " + ", ".join(unknown))
    if options.against:
        try:
            options.against.program()
        except MissingProgram as missing:
            parser.error(f"--against: there is no {missing}")
    options.runs = options.runs or (3 if options.quick else 5)
    options.records = options.records or (300_000 if options.quick else 5_000_000)
    options.gigabytes = options.gigabytes or (0.1 if options.quick else 1.0)
    return options


def main():
    options = parse_options()
    if not options.no_setup:
        install_packages()
    build = Build(os.path.join(options.directory, "build"))
    build.make()
    data_directory = os.path.join(options.directory, "data")
    os.makedirs(data_directory, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="run-", dir=data_directory) as scratch:
        plan = Plan(
            build, options.against, Inputs(data_directory, scratch), options.runs, options.records,
            options.gigabytes, options.quick,
        )
        print(header(), flush=True)
        for name in options.only:
            say(f"section {name}")
            if rows := list(SECTIONS[name](plan)):
                print(lines(rows), flush=True)
    print("", describe_machine(plan), sep="\n", flush=True)
    for failure in plan.failures:
        say(f"not as promised: {failure}")
    return 1 if plan.failures else 0
