"""What veldtrim-boundary makes of GeoJSON and of boundary files, there and back."""

import json
import struct

import pytest
from harness import boundary_file
from maps import SQUARE, collection, crs, feature, polygon, polygons_of, random_doubles, xml_of

TEXTS = [(str(x), str(y)) for x, y in SQUARE[:-1]]
ROUND = {"type": "MultiPolygon", "coordinates": [[SQUARE], [SQUARE[::-1]]]}
CRS = crs(25832)

# source, options, ids of the polygons
ACCEPTED = {
    "bare polygon": (polygon(), [], [1]),
    "bare multipolygon": (ROUND, [], [1, 1]),
    "feature": (feature(polygon()), [], [1]),
    "counted": (collection(feature(polygon()), feature(polygon(), {"id": None})), [], [1, 2]),
    "integer ids": (
        collection(feature(polygon(), {"id": -2**31}), feature(ROUND, {"id": 2**31 - 1})), [],
        [-2**31, 2**31 - 1, 2**31 - 1]),
    "counted for all": (
        collection(feature(polygon(), {"id": "way/3"}, id=8), feature(ROUND, {"id": 5})),
        ["--count-ids"], [1, 2, 2]),
    "whole numbers": (collection(feature(polygon(), {"id": 3.0}), feature(polygon(), {"id": 1e2})),
                      [], [3, 100]),
    "texts": (collection(feature(polygon(), {"id": "-2147483648"})), [], [-2147483648]),
    "member": (collection(feature(polygon(), {"a": 9}, id=4), feature(polygon(), id="7")), [],
               [4, 2]),
    "property before member": (feature(polygon(), {"id": 8}, id=4), [], [8]),
    "named field": (feature(polygon(), {"id": "x", "nr": 6}), ["--id-field", "nr"], [6]),
    "nested values": (feature(polygon(), {"a": {"id": 5}, "b": [{"id": 6}]}), [], [1]),
    "third coordinates": (polygon([[*point, 99, 1] for point in SQUARE]), [], [1]),
    "open ring": (polygon(SQUARE[:-1]), [], [1]),
    "byte-order mark": (b"\xef\xbb\xbf" + json.dumps(polygon()).encode(), [], [1]),
    "any order": (
        '{"features":[{"geometry":{"coordinates":[[[0,0],[4,0],[4,4],[0,4],[0,0]]],'
        '"type":"Polygon"},"properties":{"id":3},"type":"Feature"}],"type":"FeatureCollection"}',
        [], [3]),
    "foreign members": (
        collection(feature(polygon(), x={"coordinates": [1]}, features=[1]), name="n", crs=CRS,
                   bbox=[0, 0, 4, 4], y={"features": [{"type": "a"}]}), [], [1]),
}


@pytest.mark.parametrize("name", ACCEPTED)
def test_accepted(boundary, name):
    source, options, ids = ACCEPTED[name]
    made = boundary.convert("import", source, *options)
    assert made.code == 0, made.said
    rings = polygons_of(made.written.decode())
    assert [number for number, _ in rings] == ids
    assert all(ring in (TEXTS, [TEXTS[0], *TEXTS[:0:-1]]) for _, ring in rings)
    assert f"{len(ids)} polygon" in made.said and "x from 0 to 4, y from 0 to 4" in made.said


def test_messages(boundary):
    degrees = "can be degrees"
    assert degrees in boundary.convert("import", polygon()).said
    named = boundary.convert("import", collection(feature(polygon()), crs=CRS)).said
    assert degrees not in named and CRS["properties"]["name"] in named
    geographic = collection(feature(polygon()), crs=crs(4258))
    assert degrees in boundary.convert("import", geographic).said
    for move, warned in (([176, 86], True), ([177, 0], False), ([0, -91], False)):
        moved = [[x + move[0], y + move[1]] for x, y in SQUARE]
        assert (degrees in boundary.convert("import", polygon(moved)).said) == warned
    source, _ = boundary_file(("boundaries", {1: SQUARE[:-1]}))
    made = boundary.convert("export", source, "--crs", "EPSG:25832")
    assert json.loads(made.written)["crs"] == CRS


def bits(number):
    return struct.pack("<d", float(number))


def test_there_and_back(boundary, program):
    """Ids, order and every bit survive."""
    numbers = random_doubles(100_000)
    points = list(zip(numbers[::2], numbers[1::2]))
    rings = [points[:5000], *(points[i:i + 50] for i in range(5000, len(points) - 3, 50))]
    source, _ = boundary_file(*(
        ("boundaries", {7 - i: ring}) for i, ring in enumerate(rings)
    ))
    made = boundary.convert("export", source)
    features = json.loads(made.written)["features"]
    assert [each["properties"] for each in features] == [
        {"id": 7 - i, "group": i + 1} for i in range(len(rings))
    ]
    for ring, each in zip(rings, features):
        coordinates = each["geometry"]["coordinates"][0]
        assert [[*map(bits, p)] for p in coordinates] == [[*map(bits, p)] for p in ring + ring[:1]]
    back = boundary.convert("import", made.written).written
    if program.windows:
        back = back.replace(b"\r\n", b"\n")
    assert back.decode() == xml_of({7 - i: ring for i, ring in enumerate(rings)})


def test_shapes(boundary):
    """Polygons that are no areas, rings that the file closes, and groups that are not read."""
    closed = [*SQUARE]
    rings = {1: [], 2: SQUARE[:1], 3: SQUARE[:2], 4: [*SQUARE[:2], SQUARE[0]], 5: closed}
    source, _ = boundary_file(("walls", {9: SQUARE}), ("boundaries", rings))
    made = boundary.convert("export", source)
    features = json.loads(made.written)["features"]
    assert [each["properties"]["id"] for each in features] == [2, 3, 4, 5]
    assert {each["properties"]["group"] for each in features} == {2}
    assert [(each["geometry"]["type"], each["geometry"]["coordinates"]) for each in features] == [
        ("Point", SQUARE[0]), ("LineString", SQUARE[:2]),
        ("Polygon", [[*SQUARE[:2], SQUARE[0], SQUARE[0]]]), ("Polygon", [closed]),
    ]
    left_out = "left out 1 polygon without points, first polygon number 1 (id 1)"
    for said in (left_out, "1 polygon of one point", "of two points"):
        assert said in made.said


def test_standard_streams(boundary, tmp_path):
    blanks = b" " * 200_000  # more than one read takes
    made = boundary.run("import", "-", "-", input=blanks + json.dumps(polygon()).encode())
    assert made.returncode == 0
    assert polygons_of(made.stdout.decode()) == [(1, TEXTS)]
    back = boundary.run("export", "-", "-", input=made.stdout)
    assert json.loads(back.stdout)["features"][0]["geometry"] == polygon()
    refused = boundary.run("import", "-", "-", input=b'{"type":')
    assert (refused.returncode, refused.stdout) == (1, b"")
    assert b"standard input is broken JSON at line 1, column 9" in refused.stderr
    assert list(tmp_path.iterdir()) == []
