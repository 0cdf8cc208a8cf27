"""Random small workspaces against the exact model.

Coordinates are quarters, so the program's arithmetic is exact too and every verdict must agree;
they are so few that points often lie on edges, on vertices and in line with them.
"""

import random
from fractions import Fraction

import pytest
from harness import boundary_file, clips, fails, write_tree
from model import node_header, verdicts


def random_ring(source):
    size = source.choice([0, 1, 2, 3, 3, 4, 4, 5, 6, 8, 12])
    reach, step = source.choice([(2, 1), (4, 1), (6, 0.25)])
    coordinates = [step * k for k in range(int(-reach / step), int(reach / step) + 1)]
    ring = [(source.choice(coordinates), source.choice(coordinates)) for _ in range(size)]
    if size == 2:  # the distance to a slanted segment is not exact
        ring[1] = source.choice([(ring[0][0], ring[1][1]), (ring[1][0], ring[0][1])])
    if size > 3 and source.random() < 0.5:  # right angles: many edges in line with points
        for k in range(1, size):
            ring[k] = (ring[k][0], ring[k - 1][1]) if k % 2 else (ring[k - 1][0], ring[k][1])
    if size > 2 and source.random() < 0.3:
        ring.append(ring[0])
    return ring


def random_groups(source):
    """Some groups of a boundary file, and the rings of those that count."""
    types = ["boundaries"] * source.choice([0, 1, 1, 1, 2]) + ["holes"] * source.choice([0, 0, 1])
    source.shuffle(types)
    groups = [
        (type, {source.randint(-99, 99): random_ring(source) for _ in range(source.randint(0, 5))})
        for type in types
    ]
    return groups, [r for type, rings in groups if type == "boundaries" for r in rings.values()]


def random_header(source, separator):
    xyz = separator.join(source.choice(["xyz", "XYZ", "xyzg", "XYZG"]))
    return source.choice([xyz, xyz, node_header(source.choice("nN"), separator)])


def written(source, value):
    return source.choice(["{:g}", "{:.3f}", "{:g}e0", "{:.4f}E+00", " {:g}", "{:+g}"]).format(value)


def random_record(source, separator, vertices):
    """A record, and its point, which is None where it has none."""
    if source.random() < 0.1:
        return source.choice(["", " ", "note", f"1{separator}", "1"]), None
    point = (source.randint(-28, 28) / 4, source.randint(-28, 28) / 4)
    if vertices and source.random() < 0.3:  # on a vertex or halfway between two
        (ax, ay), (bx, by) = source.choice(vertices), source.choice(vertices)
        point = source.choice([(ax, by), (ax, ay), ((ax + bx) / 2, (ay + by) / 2)])
    tail = source.choice([["1"], ["-2.5", "0"], ["", ""]])
    return separator.join([*(written(source, each) for each in point), *tail]), point


def random_scan(source, rings):
    """The text of a scan and of its clipped file, which is empty without records."""
    separator = source.choice("; \t,|")
    header = random_header(source, separator)
    vertices = [vertex for ring in rings for vertex in ring]
    size = source.choice([0, 1, 20, 200])
    records = [random_record(source, separator, vertices) for _ in range(size)]
    points = [(Fraction(p[0]), Fraction(p[1])) for _, p in records if p]
    exact = [[(Fraction(x), Fraction(y)) for x, y in ring] for ring in rings]
    verdict = iter(verdicts(points, exact))
    kept = [line for line, point in records if point and next(verdict)]
    lines = [header, *(line for line, _ in records)]
    text = "".join(line + source.choice(["\n", "\r\n"]) for line in lines)
    if source.random() < 0.3:
        text += separator.join(["0", "0", "not ended"])
    return text, "".join(line + "\n" for line in [header, *kept] if kept)


@pytest.mark.parametrize("seed", range(40))
def test_random_workspace(program, tmp_path, seed):
    source = random.Random(seed)
    groups, rings = random_groups(source)
    boundary, trace = boundary_file(*groups)
    tree, kept, dropped, skipped = {"boundary.xml": boundary}, {}, 0, {}
    for number in range(source.randint(1, 6)):
        kind = source.choice(["scan", "scan", "scan", "skipped", "directory", "other"])
        name = f"{number}" + source.choice([".txt", ".xyz", ".node"])
        text, clipped = random_scan(source, rings)
        if kind == "skipped":
            start, skipped["./scans/" + name] = source.choice(
                [("y", "first character"), ("x", "xyz form"), ("\n", "no header")]
            )
            text = start + text
        elif kind == "directory":
            name += "/a.xyz"
        elif kind == "other":
            name += source.choice([".bak", "~", "X"])
        elif clipped:
            kept[name] = clipped
        else:
            dropped += 1
        tree["scans/" + name] = text
    outcome = clips(kept, dropped, skipped, trace)
    if not kept and not dropped:
        outcome = fails("There are no input files.", {"clipped": None}, skipped, trace)
    write_tree(tmp_path, tree)
    run = program.check(tmp_path, ["./scans", "clipped", "boundary.xml"], outcome)
    if outcome.code == 0:
        run.assert_progress_rises()
