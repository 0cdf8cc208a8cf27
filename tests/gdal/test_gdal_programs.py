"""The driver in the programs of GDAL: there and back, and what is left when something fails."""

import json
import shutil
from pathlib import Path

import pytest
from harness import ARGUMENTS, SQUARE_XML, boundary_file, read_tree
from maps import (
    HOLE, SQUARE, collection, feature, large_polygon, polygon, polygons_of, random_doubles, xml_of
)

EXAMPLE = Path(__file__).parents[2] / "examples/jacksboro"
GOOD = feature(polygon(), {"id": 1})


def save(path, source):
    path.write_text(json.dumps(source))
    return path.name


def ids_of(path):
    return [number for number, _ in polygons_of(path.read_text())]


def test_every_bit_there_and_back(gdal, tmp_path):
    """Coordinates from 1e-300 to 1e300, ids and the order of polygons, through a GeoPackage."""
    numbers = random_doubles(100_000)
    points = list(zip(numbers[::2], numbers[1::2]))
    rings = {7 - i: points[50 * i:50 * i + 50] for i in range(len(points) // 50)}
    (tmp_path / "there.xml").write_text(boundary_file(("boundaries", rings))[0])
    gdal.run("ogr2ogr", "there.gpkg", "there.xml")
    gdal.write("back.xml", "there.gpkg")
    assert (tmp_path / "back.xml").read_text() == xml_of(rings)


@pytest.mark.parametrize("map", ["area.gpkg", "area.geojson", "area.shp"])
def test_example_clips_alike(gdal, program, tmp_path, map):
    shutil.copytree(EXAMPLE, tmp_path / "before")
    shutil.copytree(EXAMPLE / "scans", tmp_path / "after/scans")
    gdal.run("ogr2ogr", map, "before/boundary.xml", "-oo", "SRS=EPSG:32614")
    gdal.run("ogr2ogr", "-f", "Veldtrim", "after/boundary.xml", map)
    for directory in ("before", "after"):
        assert program.run(tmp_path / directory, *ARGUMENTS).code == 0
    assert ids_of(tmp_path / "after/boundary.xml") == [1, 2, 3]
    assert read_tree(tmp_path / "before/clipped") == read_tree(tmp_path / "after/clipped")


def test_report(gdal, tmp_path):
    text, _ = boundary_file(("walls", {9: SQUARE}), ("boundaries", {-4: SQUARE[:-1], 8: []}))
    (tmp_path / "area.xml").write_text(text)
    printed, said = gdal.run("ogrinfo", "-al", "area.xml")
    for line in (
        "using driver `Veldtrim' successful.", "Layer name: area\n", "Feature Count: 2",
        "Extent: (0.000000, 0.000000) - (4.000000, 4.000000)", "id (Integer) = -4",
        "group (Integer) = 2", "POLYGON ((0 0,4 0,4 4,0 4,0 0))", "OGRFeature(area):2",
    ):
        assert line in printed
    assert "area.xml: the polygons of fewer than three points, 1 of 2, are lines" in said


@pytest.mark.parametrize("vertex, slanted", [([0, 2], False), ([0, 1], True)])
def test_bridged_holes(gdal, tmp_path, vertex, slanted):
    """A bridge is level if the outer ring has a vertex at the height of one of the hole."""
    outer = [[0, 0], [8, 0], [8, 8], [0, 8], vertex, [0, 0]]
    inner = [[x + 2, y + 2] for x, y in SQUARE]
    source = save(tmp_path / "m.json", feature(polygon(outer, inner)))
    for kind in ("-dsco", "-lco"):
        said = gdal.write(f"with{kind}.xml", source, kind, "HOLES=BRIDGE")
        assert ("1 of 1 bridges to holes are slanted" in said) == slanted
        rings = polygons_of((tmp_path / f"with{kind}.xml").read_text())
        assert [len(ring) for _, ring in rings] == [5 + 4 + 2]


# properties of two features, options, the ids that are written
IDS = {
    "integers": ([{"id": 5}, {"id": -2147483648}], [], [5, -2147483648]),
    "whole numbers": ([{"id": 3.0}, {"id": 1.5e3}], [], [3, 1500]),
    "texts": ([{"id": "12"}, {"id": "-3"}], [], [12, -3]),
    "no field": ([{"a": 7}, {"a": 8}], [], [1, 2]),
    "partly": ([{"id": 7}, {"id": None}], [], [7, 2]),
    "data set option": ([{"nr": 7}, {"nr": 8}], ["-dsco", "ID_FIELD=nr"], [7, 8]),
    "layer option": ([{"nr": 7, "id": "x"}, {"nr": 8}], ["-lco", "ID_FIELD=NR"], [7, 8]),
}


@pytest.mark.parametrize("name", IDS)
def test_ids(gdal, tmp_path, name):
    properties, options, ids = IDS[name]
    source = save(tmp_path / "m.json", collection(*(feature(polygon(), p) for p in properties)))
    said = gdal.write("b.xml", source, *options)
    assert ids_of(tmp_path / "b.xml") == ids
    assert said.count("is not written: a boundary file holds no fields") == (
        not {*properties[0]} <= {"id", "nr"} or "layer" in name
    )
    assert "-t_srs transforms" in said  # GeoJSON is in degrees


# the feature after a good one, options, sentence
REFUSED = {
    "hole": (feature(polygon(SQUARE, HOLE)), [], "number 2 has a hole"),
    "text": (feature(polygon(), {"id": "two"}), [], 'has the id "two", but ids are integers'),
    "fraction": (feature(polygon(), {"id": 1.5}), [], 'has the id "1.5"'),
    "large": (feature(polygon(), {"id": 3e9}), [], 'has the id "3000000000"'),
    "no id": (feature(polygon(), {"nr": None}), ["-lco", "ID_FIELD=nr"], 'in the field "nr"'),
    "no polygon": (GOOD, ["-where", "id = 9"], "was not written: it would hold no polygon"),
    "option": (GOOD, ["-lco", "HOLES=KEEP"], "HOLES=KEEP does not exist"),
}


@pytest.mark.parametrize("mode", [[], ["-skipfailures"], ["-append"], ["-overwrite"]], ids=str)
@pytest.mark.parametrize("name", REFUSED)
def test_refused(gdal, tmp_path, name, mode):
    second, options, sentence = REFUSED[name]
    source = save(tmp_path / "m.json", collection(GOOD, second, GOOD))
    assert sentence in gdal.write("b.xml", source, *mode, *options, code=1)
    printed, _ = gdal.run("ogr2ogr", "-f", "Veldtrim", *mode, *options, "/vsistdout/", source,
                          code=1)
    assert printed == ""


def test_layers(gdal, tmp_path):
    """A boundary file has one; that of a larger source must be named."""
    save(tmp_path / "m.json", GOOD)
    gdal.run("ogr2ogr", "m.gpkg", "m.json", "-nln", "first")
    gdal.run("ogr2ogr", "-append", "m.gpkg", "m.json", "-nln", "second")
    gdal.write("b.xml", "m.gpkg", "-skipfailures", code=1)
    said = gdal.write("b.xml", "m.gpkg", code=1)
    assert "has one layer only: name the layer to write, here first or second" in said
    gdal.run("ogr2ogr", "-f", "Veldtrim", "b.xml", "m.gpkg", "second")
    assert ids_of(tmp_path / "b.xml") == [1]


@pytest.mark.parametrize("mode", [[], ["-overwrite"], ["-append"], ["-update"]], ids=str)
@pytest.mark.parametrize("old", [SQUARE_XML, "no boundary file\n"], ids=["boundary", "text"])
def test_existing_target(gdal, tmp_path, mode, old):
    source = save(tmp_path / "m.json", GOOD)
    (tmp_path / "b.xml").write_text(old)
    said = gdal.write("b.xml", source, *mode, code=1)
    assert (tmp_path / "b.xml").read_text() == old
    if old == SQUARE_XML:
        advice = "write a new boundary file" if mode[:1] else "write to another name, or remove"
        assert advice in said


def test_impossible_target(gdal, tmp_path):
    source = save(tmp_path / "m.json", GOOD)
    (tmp_path / "link.xml").symlink_to("nowhere")
    gdal.write("link.xml", source, code=1)
    for target in ("missing/b.xml", "m.json/b.xml", "/vsizip/m.json/b.xml"):
        gdal.run("ogr2ogr", "-f", "Veldtrim", target, source, code=1)
    assert sorted(path.name for path in tmp_path.iterdir()) == ["link.xml", "m.json"]


def test_full_disk(gdal, tmp_path, small_disk):
    save(tmp_path / "m.json", large_polygon())
    for mode in ([], ["-skipfailures"]):
        _, said = gdal.run("ogr2ogr", "-f", "Veldtrim", *mode, "disk/b.xml", "m.json", code=1)
        assert "No space left on device" in said
        assert list(small_disk.iterdir()) == []
    with open("/dev/full", "wb") as full:
        gdal.run("ogr2ogr", "-f", "Veldtrim", "/vsistdout/", "m.json", stdout=full, code=1)


def test_broken_source(gdal, tmp_path):
    """ogr2ogr closes the new file early and without a word, but it must not be published."""
    save(tmp_path / "m.json", collection(*[feature(polygon(), {"a": 1})] * 5000))
    gdal.run("ogr2ogr", "m.gpkg", "m.json")
    content = bytearray((tmp_path / "m.gpkg").read_bytes())
    middle = len(content) // 2
    content[middle:middle + 60_000] = b"\xff" * 60_000
    (tmp_path / "m.gpkg").write_bytes(content)
    assert "was not written: an error came before its end" in gdal.write("b.xml", "m.gpkg", code=1)


def test_virtual_files(gdal, tmp_path):
    source = save(tmp_path / "m.json", GOOD)
    gdal.write("b.xml", source)
    expected = (tmp_path / "b.xml").read_text()
    for target in ("/vsistdout/", "/vsizip/b.zip/b.xml", "/vsigzip/b.xml.gz"):
        printed, _ = gdal.run("ogr2ogr", "-f", "Veldtrim", target, source)
        assert printed == (expected if target == "/vsistdout/" else "")
    for name in ("/vsizip/b.zip/b.xml", "/vsigzip/b.xml.gz", "/vsizip/b.zip"):
        printed, _ = gdal.run("ogr2ogr", "-f", "Veldtrim", "/vsistdout/", name)
        assert printed == expected
    with open(tmp_path / "b.xml") as file:
        assert "Feature Count: 1" in gdal.run("ogrinfo", "-al", "/vsistdin/", stdin=file)[0]


def formats(gdal, path):
    gdal.environment["GDAL_DRIVER_PATH"] = path
    return {*gdal.run("ogrinfo", "--formats")[0].splitlines()}


def test_beside_other_drivers(gdal, tmp_path):
    """The driver takes no files away from others, and hides no other driver."""
    save(tmp_path / "m.json", GOOD)
    (tmp_path / "a.xml").write_text("<project/>")
    for name in ("GML", "KML"):
        gdal.run("ogr2ogr", "-f", name, f"{name}.xml", "m.json")
        assert f"{name}' successful" in gdal.run("ogrinfo", f"{name}.xml")[0]
    gdal.run("ogrinfo", "a.xml", code=1)
    path = gdal.environment["GDAL_DRIVER_PATH"]
    plain = formats(gdal, str(tmp_path))
    assert [line.split()[0] for line in formats(gdal, path) - plain] == ["Veldtrim"]
    assert plain <= formats(gdal, path)
