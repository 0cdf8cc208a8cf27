"""Which records a set of polygons keeps, in exact arithmetic: the judge of the geometry."""

import re
from bisect import bisect_right
from collections import defaultdict
from fractions import Fraction
from xml.etree import ElementTree


class Row:
    """What one ring holds of the horizontal line at `y`: even-odd inside, every edge included."""

    def __init__(self, ring, y):
        self.crossings = []
        self.touched = set()
        self.flat = []
        if len(ring) < 2:
            return  # a single vertex holds nothing, not even itself
        for (ax, ay), (bx, by) in zip(ring, ring[1:] + ring[:1]):
            if ay == by:
                if ay == y:
                    self.flat.append((min(ax, bx), max(ax, bx)))
            elif min(ay, by) <= y <= max(ay, by):
                x = ax + Fraction(y - ay) * (bx - ax) / (by - ay)
                self.touched.add(x)
                if y < max(ay, by):
                    self.crossings.append(x)
        self.crossings.sort()

    def holds(self, x):
        if x in self.touched or any(low <= x <= high for low, high in self.flat):
            return True
        return (len(self.crossings) - bisect_right(self.crossings, x)) % 2 == 1


def verdicts(points, rings):
    """For each point (x, y), in order, whether one of the rings holds it."""
    columns = defaultdict(set)
    for x, y in points:
        columns[y].add(x)
    held = set()
    for y, xs in columns.items():
        for row in (Row(ring, y) for ring in rings):
            held.update((x, y) for x in xs if row.holds(x))
    return [point in held for point in points]


def node_header(first="n", separator=";", rest=""):
    """A header of the node format, which says no more than its separator."""
    return f"{first}12{separator}{rest}"


def groups_of(boundary):
    """The groups of a well-formed boundary file, a path: (type, {id: ring})."""
    for group in ElementTree.parse(boundary).getroot().find("TavelDGM").iter("group"):
        yield group.get("type"), {
            polygon.get("id"): [
                (Fraction(point.get("x")), Fraction(point.get("y")))
                for point in polygon.iter("point")
            ]
            for polygon in group.iter("polygon")
        }


def clip(scan, rings):
    """The bytes of a clipped file for a well-formed scan, bytes, line ends as LF."""
    header, *records = scan.replace(b"\r\n", b"\n").split(b"\n")[:-1]
    fields = [re.split(rb"[;,\t ]", record) for record in records]
    points = [(Fraction(x.decode()), Fraction(y.decode())) for x, y, *_ in fields]
    kept = [record for record, held in zip(records, verdicts(points, rings)) if held]
    return b"".join(line + b"\n" for line in [header, *kept])
