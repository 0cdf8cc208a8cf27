"""The boundary file, and what runs cost besides time."""

import os
import re
import shutil
import subprocess

from .data import remove_file, remove_tree
from .table import Row, compare, mebibytes, seconds
from .timing import say

RECORD_SIZE = 27  # bytes, as generate writes them


def boundary_file(plan):
    """One read per process, in turn."""
    points = 100_000 if plan.quick else 1_000_000
    path = plan.data.boundary(f"ring-{points}")
    times = {"veldtrim": [], "pugixml": []}
    peaks = {"veldtrim": [], "pugixml": []}
    for turn in range(plan.runs + 1):
        for reader in times:
            command = [plan.build.tool("read_boundary"), reader, path]
            process = subprocess.run(
                command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=True
            )
            read, elapsed, peak = process.stderr.split()
            if int(read) != points:
                raise SystemExit(f"bench/run: {reader} read {read} points of {points}")
            if turn > 0:
                times[reader].append(float(elapsed))
                peaks[reader].append(float(peak))
    section = f"boundary file, {points:,} points"
    return [
        compare(section, what, figures["veldtrim"], "pugixml", figures["pugixml"], form)
        for what, figures, form in (("time", times, seconds), ("peak memory", peaks, mebibytes))
    ]


def peak_memory(plan):
    records = plan.data.passing_records(int(plan.gigabytes * 1e9 / RECORD_SIZE))
    say(f"peak memory: {plan.gigabytes:g} GB of records")
    command, output = plan.data.clip_command(records, "square")
    process = subprocess.run(
        [plan.build.tool("peak_memory"), *command],
        stdout=subprocess.DEVNULL,
        stderr=subprocess.PIPE,
        text=True,
        check=True,
    )
    remove_tree(output)
    remove_tree(os.path.dirname(records))
    peak = float(process.stderr.splitlines()[-1])
    return [Row(f"peak memory, {plan.gigabytes:g} GB", "square", mebibytes(peak))]


def allocations(plan):
    records = plan.data.records(plan.records)
    output = plan.data.output("allocations.txt")
    command = [plan.build.tool("count_allocations"), "square", records, output]
    process = subprocess.run(command, capture_output=True, text=True, check=True)
    remove_file(output)
    count, _, allocated = map(int, process.stdout.split())
    return [Row("allocations", f"square, all {count:,} records", f"{allocated:,}")]


def instructions_of(plan, count, shape):
    command, output = plan.data.clip_command(plan.data.records(count), shape)
    profile = plan.data.output("callgrind.out")
    valgrind = ["valgrind", "--tool=callgrind", f"--callgrind-out-file={profile}"]
    subprocess.run([*valgrind, *command], capture_output=True, check=True)
    remove_tree(output)
    with open(profile) as file:
        return int(re.search(r"^totals: (\d+)", file.read(), re.MULTILINE).group(1))


def instructions(plan):
    """What more records add: start and end of the run, and the index, fall out."""
    if shutil.which("valgrind") is None:
        say("valgrind is not there: no instruction counts")
        return []
    few, many = 20_000, 120_000
    shapes = {"frame-6": "dropped, by 8 vertices", "everything": "kept, by 4 vertices"}
    rows = []
    for shape, what in shapes.items():
        added = instructions_of(plan, many, shape) - instructions_of(plan, few, shape)
        rows.append(Row("instructions a record", what, f"{added / (many - few):,.0f}"))
    return rows
