"""Random small workspaces against the exact model.

Coordinates are quarters, so the program's arithmetic is exact too and every verdict must agree;
they are so few that points often lie on edges, on vertices and in line with them.
"""

import random
from fractions import Fraction

import pytest
from harness import (
    BOUNDARY_READ, CLIPPING, FINISHED, START, boundary_trace, boundary_xml, write_tree
)
from model import verdicts

HEADERS = ["x;y;z", "X Y Z", "x\ty\tz", "x,y,z,g", "X;Y;Z;G", "n  ;", "N  ,", "nod "]


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


def written(source, value):
    return source.choice(["{:g}", "{:.3f}", "{:g}e0", "{:.4f}E+00", " {:g}", "{:+g}"]).format(value)


def random_scan(source, rings):
    """The bytes of a scan and of its clipped file, and the number of records kept."""
    header = source.choice(HEADERS)
    separator = header[3] if header[0] in "nN" else header[1]
    vertices = [vertex for ring in rings for vertex in ring]
    records = []
    for _ in range(source.choice([0, 1, 20, 200])):
        if source.random() < 0.1:
            records.append((source.choice(["", " ", "note", f"1{separator}", "1"]), None))
            continue
        if vertices and source.random() < 0.3:  # on a vertex or halfway between two
            (ax, ay), (bx, by) = source.choice(vertices), source.choice(vertices)
            point = source.choice([(ax, by), (ax, ay), ((ax + bx) / 2, (ay + by) / 2)])
        else:
            point = (source.randint(-28, 28) / 4, source.randint(-28, 28) / 4)
        tail = source.choice([["1"], ["-2.5", "0"], ["", ""]])
        fields = [written(source, point[0]), written(source, point[1]), *tail]
        records.append((separator.join(fields), point))
    points = [(Fraction(p[0]), Fraction(p[1])) for _, p in records if p]
    exact = [[(Fraction(x), Fraction(y)) for x, y in ring] for ring in rings]
    verdict = iter(verdicts(points, exact))
    kept = [line for line, point in records if point and next(verdict)]
    text = "".join(
        line + source.choice(["\n", "\r\n"]) for line in [header, *(line for line, _ in records)]
    )
    if source.random() < 0.3:
        text += separator.join(["0", "0", "not ended"])
    return text, "".join(line + "\n" for line in [header, *kept]), len(kept)


@pytest.mark.parametrize("seed", range(30))
def test_random_workspace(program, tmp_path, seed):
    source = random.Random(seed)
    rings = [random_ring(source) for _ in range(source.randint(0, 5))]
    tree, created, total = {"boundary.xml": boundary_xml(*rings)}, {"clipped": None}, 0
    count = source.randint(1, 4)
    for number in range(count):
        name = f"scan{number}" + source.choice([".txt", ".xyz", ".node"])
        tree["scans/" + name], clipped, kept = random_scan(source, rings)
        total += kept
        if kept:
            created["clipped/" + name] = clipped
    created["clipped/total_node_count.txt"] = f"{total}\n"
    write_tree(tmp_path, tree)
    run = program.check(
        tmp_path,
        ["./scans", "clipped", "boundary.xml"],
        code=0,
        stdout=boundary_trace(*map(len, rings)) + BOUNDARY_READ,
        messages=[START, *[CLIPPING] * count, FINISHED],
        created=created,
    )
    run.assert_progress_rises()
