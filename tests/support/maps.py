"""Features of maps as GeoJSON, and boundary files as they must be written."""

import random
import re
from decimal import Decimal

POINT = re.compile(r'<point x="(\S+)" y="(\S+)" segmenttype="0"/>')
POLYGON = re.compile(r'<polygon id="(-?\d+)">\s*(.*?)</polygon>', re.DOTALL)
SQUARE = [[0, 0], [4, 0], [4, 4], [0, 4], [0, 0]]
HOLE = [[1, 1], [2, 1], [2, 2], [1, 2], [1, 1]]


def polygon(*rings):
    return {"type": "Polygon", "coordinates": list(rings or [SQUARE])}


def feature(geometry, properties=None, **members):
    return {"type": "Feature", "properties": properties, "geometry": geometry, **members}


def collection(*features, **members):
    return {"type": "FeatureCollection", "features": list(features), **members}


def crs(number):
    """The member of a collection that names a coordinate system of EPSG."""
    return {"type": "name", "properties": {"name": f"urn:ogc:def:crs:EPSG::{number}"}}


def large_polygon(vertices=300_000):
    """One whose boundary file is larger than a small disk."""
    ring = [[i % 1000 + 0.125, i] for i in range(vertices)]
    return feature(polygon([*ring, ring[0]]))


def polygons_of(xml):
    """The polygons of a boundary file, each an id and its points as texts."""
    return [(int(number), POINT.findall(points)) for number, points in POLYGON.findall(xml)]


def random_doubles(count):
    """Numbers of all magnitudes, short and long ones, and where the notation changes."""
    generator = random.Random(count)
    special = [0.0, -0.0, 1e15, 1e-5, 1e22, 5e-324, 1.7976931348623157e308, 0.1, 1 / 3, 2**53 + 2.0,
               999999999999999.9, 1000000000000000.1, 9.999999999999999e-6, 12345.678, -4052262.5]
    drawn = (generator.choice((-1, 1)) * 10 ** generator.uniform(-300, 300) for _ in range(count))
    return [*special, special[0], *drawn]


def text_of(number):
    """The shortest decimal number; only very large and small ones have an exponent."""
    sign, digits, exponent = Decimal(repr(number)).normalize().as_tuple()
    if number == 0 or 1e-5 <= abs(number) <= 1e15:
        text = format(Decimal(repr(number)), "f")
        return text.rstrip("0").rstrip(".") if "." in text else text
    first, *rest = map(str, digits)
    power = exponent + len(rest)
    return f"{'-' * sign}{first}{'.' * bool(rest)}{''.join(rest)}e{power:+03d}"


def xml_of(rings):
    """The boundary file with these polygons, byte for byte but for the line ends."""
    lines = ['<?xml version="1.0" encoding="UTF-8"?>', "<project>", "<TavelDGM>"]
    lines.append('<group type="boundaries">')
    for number, ring in rings.items():
        lines.append(f'<polygon id="{number}">')
        lines += (f'<point x="{text_of(x)}" y="{text_of(y)}" segmenttype="0"/>' for x, y in ring)
        lines.append("</polygon>")
    return "\n".join([*lines, "</group>", "</TavelDGM>", "</project>", ""])
