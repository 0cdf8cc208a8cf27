"""What veldtrim-boundary refuses, and what it leaves behind when something fails."""

import json
import os
import random
import signal
import subprocess
import time

import pytest
from harness import boundary_file
from maps import HOLE, SQUARE, collection, feature, large_polygon, polygon, polygons_of

GOOD = feature(polygon())


def second(geometry, properties=None):
    return collection(GOOD, feature(geometry, properties))


# source, sentence
REFUSED = {
    "hole": (second(polygon(SQUARE, HOLE)), "feature 2 has a hole"),
    "line": (second({"type": "LineString", "coordinates": SQUARE}), "feature 2 is a LineString"),
    "point": (second({"type": "Point", "coordinates": [1, 2]}), "feature 2 is a Point"),
    "collection": (second({"type": "GeometryCollection", "geometries": [polygon()]}),
                   "feature 2 is a GeometryCollection"),
    "no geometry": (second(None), "feature 2 has no geometry"),
    "empty polygon": (second({"type": "Polygon", "coordinates": []}), "feature 2 has an empty"),
    "empty part": (second({"type": "MultiPolygon", "coordinates": [[SQUARE], []]}),
                   "feature 2 has an empty"),
    "empty ring": (second(polygon(SQUARE, [])), "feature 2 has an empty"),
    "two vertices": (second(polygon([SQUARE[0], SQUARE[1], SQUARE[0]])), "fewer than three"),
    "too shallow": (second({"type": "Polygon", "coordinates": SQUARE}), "not those of a Polygon"),
    "too deep": (second({"type": "Polygon", "coordinates": [[SQUARE]]}), "not those of a Polygon"),
    "mixed depths": (second(polygon([*SQUARE[:3], [[0, 4]]])), "not those of a Polygon"),
    "one number": (second(polygon([[1], *SQUARE])), "not those of a Polygon"),
    "text as number": (second(polygon([["0", "0"], *SQUARE[1:]])), "not those of a Polygon"),
    "null as number": (second(polygon([[0, None], *SQUARE[1:]])), "not those of a Polygon"),
    "object as position": (second(polygon([{}, *SQUARE])), "not those of a Polygon"),
    "real id": (second(polygon(), {"id": 1.5}), "feature 2 has the id 1.5"),
    "text id": (second(polygon(), {"id": "1-A"}), 'feature 2 has the id "1-A"'),
    "large id": (second(polygon(), {"id": 2**31}), "feature 2 has the id 2147483648"),
    "huge id": (second(polygon(), {"id": 2**64 - 1}), "feature 2 has the id 18446744073709551615"),
    "true as id": (second(polygon(), {"id": True}), "feature 2 has the id true"),
    "list as id": (second(polygon(), {"id": [1]}), "feature 2 has the id [...]"),
    "no feature": (collection(GOOD, polygon()), 'element 2 of "features" is not a Feature'),
    "number as feature": (collection(GOOD, 5), '"features" holds something'),
    "list as feature": (collection(GOOD, [5]), '"features" holds something'),
    "no features": (collection(), "holds no polygon"),
    "no list": ({"type": "FeatureCollection"}, 'no "features"'),
    "no type": ({"features": [GOOD]}, 'no "type"'),
    "other type": ({"type": "Topo\x1b"}, 'feature 1 has the type "Topo?"'),
    "geometry twice": (json.dumps(GOOD)[:-1] + ', "geometry": null}', "feature 1 has no geometry"),
    "coordinates twice": (json.dumps(polygon())[:-1] + ', "coordinates": 0}', "has an empty"),
    "features twice": (json.dumps(collection(GOOD))[:-1] + ', "features": []}', '"features" twice'),
    "list": ([], "an object in braces"),
    "word": ("null", "an object in braces"),
    "empty": ("", "broken JSON at line 1, column 1"),
    "cut": ('{"type":\n "FeatureCollection",\n  "feat', "broken JSON at line 3, column 8"),
    "wrong word": ('{"type":\n"Polygon","coordinates":[[[nan]]]}', "line 2, column 29"),
    "too much": (json.dumps(polygon()) + "\n}", "broken JSON at line 2, column 1"),
    "a feature in each line": (2 * (json.dumps(GOOD) + "\n"), "ogr2ogr -f GeoJSON NEWFILE OLDFILE"),
    "a sequence": ("\x1e" + json.dumps(GOOD) + "\n", "ogr2ogr -f GeoJSON NEWFILE OLDFILE"),
    "zero byte": (json.dumps(GOOD) + " " * 100_000 + "\0", ": a zero byte"),
    "too large": (json.dumps(polygon()).replace("4", "1e400", 1), "broken JSON at line 1, column "),
    "not UTF-8": (b'{"type":"\xff"}', "broken JSON at line 1, column 10"),
    "long text": (b'{"type":"' + bytes(range(97, 117)) * 5000 + b'\xff"}', "column 100010: "),
    "shapefile": (b"\0\0\x27\x0a" + bytes(96), "is a shapefile, not GeoJSON"),
    "GeoPackage": (b"SQLite format 3\0" + bytes(84), "ogr2ogr -f GeoJSON NEWFILE m.json"),
    "gzip": (b"\x1f\x8b" + bytes(20), "gunzip -c < m.json"),
    "XML": ("<project/>", "is XML, not GeoJSON"),
    "deep": ("[" * 500_000, "an object in braces"),
    "deep in a member": ('{"a":' + "[" * 500_000, "broken JSON at line 1, column 50000"),
    "deep geometries": ('{"geometry":' * 100_000, "broken JSON at line 1, column 120000"),
    "deep coordinates": ('{"coordinates":' + "[" * 500_000, "broken JSON"),
}


@pytest.mark.parametrize("name", REFUSED)
def test_refused_import(boundary, name):
    source, sentence = REFUSED[name]
    made = boundary.convert("import", source)
    assert made.code == 1
    assert sentence in made.said and made.said.count("\n") == 1
    assert len(made.said) < 400 and made.said.rstrip().isprintable()


def test_joined_hole(boundary):
    """A hole is joined if that is asked for and possible."""
    made = boundary.convert("import", second(polygon(SQUARE, HOLE)), "--holes", "bridge")
    assert made.code == 0 and "joined 1 hole" in made.said
    # Two more vertices for the bridge; it is slanted, for no vertex of one ring faces the other's.
    assert [len(ring) for _, ring in polygons_of(made.written.decode())] == [4, 4 + 4 + 2]
    outside = [[x + 9, y] for x, y in HOLE]
    made = boundary.convert("import", second(polygon(SQUARE, outside)), "--holes", "bridge")
    assert made.code == 1
    assert "feature 2 has a hole" in made.said and "outside" in made.said and "repair" in made.said


def test_missing_id_field(boundary):
    made = boundary.convert("import", GOOD, "--id-field", "nr")
    assert (made.code, 'feature 1 has no property "nr"' in made.said) == (1, True)


@pytest.mark.parametrize("source, sentence", [
    ("", "b.xml is empty"),
    ("text", "b.xml holds no XML"),
    (json.dumps(GOOD), "b.xml is a GeoJSON file, not a boundary file"),
    ("<project>\n <a></b></project>", "b.xml is broken XML at line 2, column 5"),
    ("<project><a/></project>", "b.xml has no element TavelDGM"),
    ('<p><TavelDGM><group type="boundaries"><polygon id="x"/></group></TavelDGM></p>',
     'its polygon number 1 has id="x", which is not an integer'),
    ('<p><TavelDGM><group type="walls"><polygon id="1"/></group></TavelDGM></p>',
     "b.xml holds no polygon in a group of type"),
])
def test_refused_export(boundary, source, sentence):
    made = boundary.convert("export", source)
    assert made.code == 1 and sentence in made.said


@pytest.mark.parametrize("arguments", [
    [], ["import"], ["import", "m.json"], ["import", "m.json", "b.xml", "--holes", "drop"],
    ["export", "b.xml", "m.json", "x"], ["convert", "a", "b"],
])
def test_wrong_command_line(boundary, arguments):
    assert boundary.run(*arguments).returncode == 2


def test_existing_target(boundary, tmp_path):
    (tmp_path / "m.json").write_text(json.dumps(GOOD))
    (tmp_path / "b.xml").write_text("old")
    made = boundary.run("import", "m.json", "b.xml")
    assert made.returncode == 1 and b"b.xml already exists" in made.stderr
    assert (tmp_path / "b.xml").read_text() == "old"
    assert boundary.run("import", "missing.json", "new.xml").returncode == 1
    assert boundary.run("import", "m.json", "missing/b.xml").returncode == 1
    assert sorted(path.name for path in tmp_path.iterdir()) == ["b.xml", "m.json"]


@pytest.mark.posix
def test_dangling_link_as_target(boundary, tmp_path):
    (tmp_path / "m.json").write_text(json.dumps(GOOD))
    (tmp_path / "b.xml").symlink_to("nowhere")
    assert boundary.run("import", "m.json", "b.xml").returncode == 1
    assert sorted(path.name for path in tmp_path.iterdir()) == ["b.xml", "m.json"]


@pytest.mark.posix
def test_target_that_appears_meanwhile(boundary, tmp_path):
    """The program waits for the source, a pipe, when it has begun the target."""
    os.mkfifo(tmp_path / "m.json")
    process = subprocess.Popen([*boundary.command, "import", "m.json", "b.xml"], cwd=tmp_path,
                               stderr=subprocess.PIPE)
    with open(tmp_path / "m.json", "w") as pipe:
        (tmp_path / "b.xml").write_text("old")
        json.dump(GOOD, pipe)
    assert b"b.xml already exists and is not overwritten" in process.communicate(timeout=60)[1]
    assert process.returncode == 1 and (tmp_path / "b.xml").read_text() == "old"


@pytest.mark.posix
def test_coordinate_system_that_is_no_text(boundary):
    source, _ = boundary_file(("boundaries", {1: SQUARE}))
    made = boundary.convert("export", source, "--crs", b"EPSG:\xff")
    assert made.code == 1 and "coordinate system is not UTF-8" in made.said


@pytest.mark.posix
def test_full_disk(boundary, tmp_path, small_disk):
    (tmp_path / "m.json").write_text(json.dumps(large_polygon()))
    made = boundary.run("import", "m.json", "disk/b.xml")
    assert made.returncode == 1 and b"No space left on device" in made.stderr
    assert list(small_disk.iterdir()) == []
    (tmp_path / "small.json").write_text(json.dumps(GOOD))
    for name in ("m.json", "small.json"):
        with open("/dev/full", "wb") as full:
            made = subprocess.run([*boundary.command, "import", tmp_path / name, "-"], stdout=full,
                                  stderr=subprocess.PIPE)
        assert made.returncode == 1 and b"cannot write to standard output" in made.stderr


@pytest.mark.posix
def test_killed(boundary, tmp_path):
    """At any moment there is no target or the whole one, and only SIGKILL leaves another file."""
    (tmp_path / "m.json").write_text(json.dumps(large_polygon()))
    start = time.monotonic()
    assert boundary.run("import", "m.json", "whole.xml").returncode == 0
    whole, duration = (tmp_path / "whole.xml").read_bytes(), time.monotonic() - start
    assert len(polygons_of(whole.decode())[0][1]) == 300_000
    generator = random.Random(1)
    for number in 25 * [signal.SIGKILL] + 5 * [signal.SIGINT, signal.SIGTERM, signal.SIGHUP]:
        process = subprocess.Popen([*boundary.command, "import", "m.json", "b.xml"], cwd=tmp_path,
                                   stderr=subprocess.DEVNULL)
        time.sleep(generator.uniform(0, duration))
        process.send_signal(number)
        assert process.wait() in (0, -number)
        target = tmp_path / "b.xml"
        assert not target.exists() or target.read_bytes() == whole
        target.unlink(missing_ok=True)
        left = [path for path in tmp_path.iterdir() if path.name.startswith("b.xml.part-")]
        assert number == signal.SIGKILL or left == []
        for path in left:
            path.unlink()
