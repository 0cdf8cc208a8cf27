"""Large and misshapen inputs: how time and memory grow, and that what is kept is right."""

import itertools

from . import misshapen, shapes
from .build import say
from .table import PEAK, PROCESSOR, WALL

GROWTH = 2.2
# Below this a ratio says more about the machine than about the program. In seconds.
SHORTEST = 0.25


def growth(plan, section, table, files):
    """Each input at a half and the whole of its size: time that grows with the size doubles.
    `files` makes the boundary file and the scan from the blocks of the input."""
    for name, (megabytes, *parts) in table.items():
        say(f"{section}: {name}")
        size = megabytes * 1_000_000 // (10 if plan.quick else 1)
        count = max(2, misshapen.count_for(parts, size))
        clips = []
        for label, times in (("full", count), ("half", count // 2)):
            boundary, scan = files(misshapen.blocks(parts, times))
            clips.append(plan.data.workspace(label, boundary, {"a.xyz": scan}))

        def clip(build, workspace=clips[0]):
            return plan.clip(build, *workspace, codes=(0, 1))

        what = f"{name}, {size / 1e6:g} MB"
        others = {"half the size": clip(plan.build, clips[1])}
        rows, _, samples = plan.compare(section, what, [PROCESSOR, PEAK], clip, others)
        if not plan.against and not plan.quick:
            # The best of each: other work on the machine only ever adds time.
            whole, half = (min(run.processor for run in runs) for runs in samples)
            if whole > SHORTEST and whole > GROWTH * half:
                plan.failures.append(f"{what}: {whole / half:.2f} times the time of half the size")
        refused = " (refused)" if samples and samples[0][0].code == 1 else ""
        for row in rows:
            row.what += refused
        yield from rows
        plan.data.drop_workspaces()


def misshapen_boundaries(plan):
    def files(blocks):
        return blocks, [misshapen.SCAN]

    return growth(plan, "misshapen boundary file", misshapen.BOUNDARIES, files)


def misshapen_scans(plan):
    def files(blocks):
        return [misshapen.SQUARE], blocks

    return growth(plan, "misshapen scan", misshapen.SCANS, files)


def points_of(path):
    with open(path) as file:
        next(file)
        for line in file:
            x, y, _ = line.split(";")
            yield float(x), float(y)


def load(plan, what, boundary, scans, expected):
    """One run over a workspace. The records that it keeps must be as many as expected."""
    say(what)
    workspace = plan.data.workspace("load", boundary, scans)
    rows, commands, _ = plan.compare(
        "load", what, [WALL, PROCESSOR, PEAK], lambda build: plan.clip(build, *workspace),
        runs=1, first_counts=True
    )
    plan.data.drop_workspaces()
    for command in commands:
        if command.kept != expected:
            plan.failures.append(f"{what}: kept {command.kept} records instead of {expected}")
    return rows


def many_files(plan):
    count = 1_000 if plan.quick else 10_000
    scan = misshapen.HEADER + b"5;5;1\n" * 60 + b"50;5;1\n" * 40
    scans = {f"{i}.xyz": [scan] for i in range(count)}
    return load(plan, f"{count:,} files", [misshapen.SQUARE], scans, count * 60)


def many_polygons(plan):
    count = 100_000 if plan.quick else 1_000_000
    records = plan.data.records(1_000_000)
    north = shapes.SOUTH + count // 100
    expected = sum(
        x % 10 <= 8 and y % 10 <= 8 and x < shapes.EAST and y < north for x, y in points_of(records)
    )
    boundary = misshapen.blocks(misshapen.SQUARES, count)
    with open(records, "rb") as file:
        return load(plan, f"{count:,} polygons", boundary, {"a.xyz": file}, expected)


def large_boundary(plan):
    size = 100_000_000 if plan.quick else 1_000_000_000
    boundary = misshapen.blocks(misshapen.SAW, misshapen.count_for(misshapen.SAW, size))
    scan = [misshapen.HEADER + b"5;-500;1\n5;5000;1\n" * 1000]
    return load(plan, f"boundary file of {size / 1e9:g} GB", boundary, {"a.xyz": scan}, 1000)


def large_scan(plan):
    """Real content throughout: the same records over and over."""
    records = plan.data.records(1_000_000)
    with open(records, "rb") as file:
        block = file.read()[len(shapes.RECORD_HEADER):]
    times = max(1, round(plan.gigabytes * 1e9 / len(block)))
    (west, south), _, (east, north), _ = shapes.make_shape("square")[0]
    kept = sum(west <= x <= east and south <= y <= north for x, y in points_of(records))
    scan = itertools.chain([shapes.RECORD_HEADER], itertools.repeat(block, times))
    boundary = shapes.boundary_file("square")
    what = f"scan of {plan.gigabytes:g} GB"
    return load(plan, what, boundary, {"a.txt": scan}, times * kept)


def loads(plan):
    return [*many_files(plan), *many_polygons(plan), *large_boundary(plan)]
