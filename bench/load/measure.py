#!/usr/bin/env python3
"""Measures time and memory of whole runs on large and misshapen inputs, as Markdown tables.

    bench/load/measure.py --program build/bin/Veldtrim [--directory /tmp] [--small] \\
        [shapes] [scans] [files] [polygons] [boundary] [giant=GB]

"shapes" and "scans" run each input at a half and the whole of its size: time that grows with the
size doubles. The others are loads; without names, all but the giant scan are run. A run that
crashes, or takes more than its share of time for the double size, makes the exit code 1.
"""

import argparse
import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import inputs

GROWTH = 2.2
# Below this a ratio says more about the machine than about the program.
SHORTEST = 0.25
# Runs of each size, and seconds that are enough for them where the fewest have been run.
FEWEST_RUNS = 5
MOST_RUNS = 20
ENOUGH = 20.0
failures = []


def write(path, blocks):
    path.parent.mkdir(parents=True, exist_ok=True)
    with open(path, "wb") as file:
        for block in blocks:
            file.write(block)
    return path.stat().st_size


class Workspace:
    def __init__(self, root):
        self.root = Path(tempfile.mkdtemp(dir=root))

    def __enter__(self):
        return self

    def __exit__(self, *exception):
        shutil.rmtree(self.root)

    def run(self, program):
        """Exit code, seconds of the processor, seconds in all, and peak memory in bytes."""
        shutil.rmtree(self.root / "clipped", ignore_errors=True)
        words = [program, self.root / "scans", "clipped", self.root / "boundary.xml"]
        start = time.monotonic()
        process = subprocess.Popen(words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
        elapsed = time.monotonic() - start
        process.returncode = os.waitstatus_to_exitcode(status)
        busy = usage.ru_utime + usage.ru_stime
        return process.returncode, busy, elapsed, usage.ru_maxrss * 1024

    def total(self):
        path = self.root / "clipped/total_node_count.txt"
        return path.read_text().strip() if path.exists() else "-"


def measure_growth(title, table, options, file, other, other_blocks):
    print(f"\n| {title} | size | exit code | s at half | s | growth | MB at half | MB |")
    print("|---|---|---|---|---|---|---|---|", flush=True)
    for name, (unit, full, blocks) in table.items():
        full = max(2, full // 10) if options.small else full
        with Workspace(options.directory) as small, Workspace(options.directory) as large:
            runs = {small: [], large: []}
            for workspace, size in ((small, full // 2), (large, full)):
                write(workspace.root / other, other_blocks)
                write(workspace.root / file, blocks(size))
            # In turn, and the best of each: the machine has other work too, and its bad minutes. What
            # is over soon is run more often, since the system then has a larger part in it.
            spent = 0.0
            while len(runs[large]) < (FEWEST_RUNS if spent > ENOUGH else MOST_RUNS):
                for workspace, figures in runs.items():
                    figures.append(workspace.run(options.program))
                    spent += figures[-1][1]
        half, whole = (min(run[1] for run in figures) for figures in runs.values())
        half_memory, memory = (max(run[3] for run in figures) for figures in runs.values())
        code = runs[large][0][0]
        growth = whole / half if half > 0 else 0
        print(
            f"| {name} | {full} {unit} | {code} | {half:.2f} | {whole:.2f} | {growth:.2f} |"
            f" {half_memory / 1e6:.0f} | {memory / 1e6:.0f} |",
            flush=True,
        )
        if code not in (0, 1) or (whole > SHORTEST and growth > GROWTH):
            failures.append(name)


def measure_load(name, options, fill):
    with Workspace(options.directory) as workspace:
        size, kept = fill(workspace.root)
        code, busy, elapsed, memory = workspace.run(options.program)
        total = workspace.total()
        print(
            f"| {name} | {size / 1e6:.0f} MB | {code} | {total} | {busy:.1f} | {elapsed:.1f} |"
            f" {memory / 1e6:.0f} |",
            flush=True,
        )
        if code != 0 or total != str(kept):
            failures.append(name)


def many_files(root, count):
    size = write(root / "boundary.xml", [inputs.SQUARE])
    scan = b"x;y;z\n" + b"5;5;1\n" * 60 + b"50;5;1\n" * 40
    for i in range(count):
        size += write(root / f"scans/{i}.xyz", [scan])
    return size, count * 60


def points_over(width, height, rows):
    """Blocks of a scan of points over an area; the same for every call."""
    yield b"x;y;z\n"
    state = 12345
    for _ in range(rows):
        lines = []
        for _ in range(1000):
            state = (state * 6364136223846793005 + 1442695040888963407) % (1 << 64)
            x = (state >> 33) % (width * 10) / 10
            state = (state * 6364136223846793005 + 1442695040888963407) % (1 << 64)
            y = (state >> 33) % (height * 10) / 10
            lines.append(f"{x:.1f};{y:.1f};1\n")
        yield "".join(lines).encode()


def many_polygons(root, count):
    size = write(root / "boundary.xml", inputs.boundary_of_squares(count))
    rows = 1000
    side = 10 * min(count, rows)
    height = 10 * -(-count // rows)
    size += write(root / "scans/a.xyz", points_over(side, height, rows))
    kept = 0
    for block in points_over(side, height, rows):
        for line in block.decode().split("\n"):
            if line and not line.startswith("x"):
                x, y, _ = line.split(";")
                kept += float(x) % 10 <= 8 and float(y) % 10 <= 8
    return size, kept


def large_boundary(root, size):
    written = write(root / "boundary.xml", inputs.boundary_of_points(size))
    written += write(root / "scans/a.xyz", [b"x;y;z\n5;-500;1\n5;5000;1\n" * 1000])
    return written, 1000


def giant_scan(root, size):
    """Real content throughout: a block of records, half of them inside, over and over."""
    block = b"".join(
        b"%d.125;%d.25;%d.5\n" % (i % 18, i // 18 % 9, i % 1000) for i in range(50_000)
    )
    kept = sum(i % 18 < 9 for i in range(50_000))
    count = -(-size // len(block))
    written = write(root / "boundary.xml", [inputs.SQUARE])
    blocks = (block if i else b"x;y;z\n" + block for i in range(count))
    written += write(root / "scans/a.xyz", blocks)
    return written, count * kept


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--program", default="build/bin/Veldtrim", type=os.path.abspath)
    parser.add_argument("--directory", help="where inputs are written, and removed again")
    parser.add_argument("--small", action="store_true", help="a tenth of every size")
    parser.add_argument("names", nargs="*")
    options = parser.parse_args()
    names = options.names or ["shapes", "scans", "files", "polygons", "boundary"]
    part = 10 if options.small else 1

    if "shapes" in names:
        measure_growth(
            "boundary file", inputs.BOUNDARIES, options, "boundary.xml", "scans/a.xyz", [inputs.SCAN]
        )
    if "scans" in names:
        measure_growth(
            "scan", inputs.SCANS, options, "scans/a.xyz", "boundary.xml", [inputs.SQUARE]
        )
    loads = {
        "files": ("10,000 files", lambda root: many_files(root, 10_000 // part)),
        "polygons": ("1,000,000 polygons", lambda root: many_polygons(root, 1_000_000 // part)),
        "boundary": ("boundary file of 1 GB", lambda root: large_boundary(root, 10**9 // part)),
    }
    chosen = [loads[name] for name in names if name in loads]
    for name in names:
        if name.startswith("giant="):
            size = int(float(name.removeprefix("giant=")) * 1e9)
            chosen.append((f"scan of {size / 1e9:g} GB", lambda root, s=size: giant_scan(root, s)))
    if chosen:
        print("\n| load | size | exit code | kept | s busy | s in all | MB |")
        print("|---|---|---|---|---|---|---|", flush=True)
    for name, fill in chosen:
        measure_load(name, options, fill)
    if failures:
        print("\nnot as promised: " + ", ".join(failures))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
