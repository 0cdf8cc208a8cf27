"""Runs the commands of docs/gis.md as they stand there, on small inputs."""

import json
import os
import re
import subprocess
from pathlib import Path
from typing import NamedTuple

import pytest
from harness import boundary_xml, write_tree
from maps import collection, crs, feature

ROOT = Path(__file__).parents[2]
PAGE = (ROOT / "docs/gis.md").read_text(encoding="utf-8")
RECIPES = dict(re.findall(r"^<!-- recipe: ([\w ]+) -->\n```sh\n(.*?)^```$", PAGE, re.M | re.S))


def layer(*features):
    """A GeoJSON file in UTM zone 16 north, of features (type, coordinates, properties)."""
    return json.dumps(collection(crs=crs(32616), *(
        feature({"type": kind, "coordinates": coordinates}, properties)
        for kind, coordinates, properties in features)))


SQUARE = [[760000, 4050000], [760100, 4050000], [760100, 4050100], [760000, 4050100]]
RING = [*SQUARE, SQUARE[0]]
AREA = layer(("Polygon", [RING], {"number": 7}))
LAKE = layer(("Polygon", [RING, [[760040 + x // 5, 4050040 + y // 5] for x, y in
                                 ([a - 760000, b - 4050000] for a, b in RING)]], {}))
# One metre inside and outside of the square, and in its middle.
SCAN = "x;y;z\n760001;4050001;1\n759999;4050001;2\n760050;4050050;3\n760101;4050050;4\n"
INSIDE = "x;y;z\n760001;4050001;1\n760050;4050050;3\n"

POINTS = layer(("Point", [760001.25, 4050001.5, 433.125], {"elevation": 2.5, "class": 3}),
               ("Point", [759999, 4050001, 1], {"elevation": 3.5, "class": 4}),
               ("Point", [760099.123456789, 4050050.5, -2], {"elevation": 4, "class": 5}))
FLAT_POINTS = re.sub(r", [-.\d]+\]", "]", POINTS)

GRID = "ncols 4\nnrows 2\nxllcorner 759990\nyllcorner 4050000\ncellsize 10\n"
ELEVATIONS = "NODATA_value -9999\n1.5 2.25 -9999 4\n5 6.125 -9999 -9998\n"

# What is kept of a grid of three by three cells: nothing at the ends of its first row.
KEPT = "x;y;z\n115;225;2.25\n105;215;5\n125;215;7\n115;205;10\n125;205;11\n"


def cells(empty, nodata):
    """All cells of that grid, as CELLS shows them."""
    values = [empty, 2.25, empty, 5, empty, 7, empty, 10, 11]
    places = [(x, y) for y in (225, 215, 205) for x in (105, 115, 125)]
    lines = [f"{x} {y} {value}\n" for (x, y), value in zip(places, values)]
    return "".join(lines) + f"  NoData Value={nodata}\n"


CLIP = "Veldtrim ./scans clipped boundary.xml >log 2>&1; cat clipped/*.xyz"
IMPORTED = f"mkdir scans; cp scan.xyz scans; {CLIP}"
LISTED = ("ogr2ogr -f CSV -lco STRING_QUOTING=IF_NEEDED /vsistdout/ points.gpkg -sql 'SELECT"
          " ST_MinX(geom), ST_MinY(geom), ST_MinZ(geom) FROM points' | tail -n +2")
CELLS = "gdal_translate -q -of XYZ dem.tif /vsistdout/; gdalinfo dem.tif | grep NoData"
TO_PACKAGE = "ogr2ogr points.gpkg points.geojson -nln points"
ON_SQUARE = {"boundary.xml": boundary_xml(SQUARE)}
CSV_POINTS = ("ogr2ogr points.gpkg CSV:kept.xyz -nln points -oo X_POSSIBLE_NAMES=x"
              " -oo Y_POSSIBLE_NAMES=y -oo Z_POSSIBLE_NAMES=z")


class Case(NamedTuple):
    """A recipe, its input files, a command before it, one after it, and what that prints."""

    recipe: str
    given: dict
    prepare: str
    show: str
    printed: str


CASES = [
    Case("clip", {"model.geojson": AREA, "scans/scan.xyz": SCAN}, "", "cat clipped/*.xyz", INSIDE),
    Case("export", ON_SQUARE, "", "ogrinfo -so boundary.geojson boundary | grep -E '32616|: I'",
         '    ID["EPSG",32616]]\nid: Integer (0.0)\ngroup: Integer (0.0)\n'),
    Case("layer to boundary", {"area.geojson": AREA, "scan.xyz": SCAN},
         "ogr2ogr -t_srs EPSG:4326 area.gpkg area.geojson",
         f"{IMPORTED}; grep -o 'id=.*[^>]' boundary.xml", f'{INSIDE}id="7"\n'),
    Case("holes", {"lake.geojson": LAKE, "scan.xyz": SCAN}, "", IMPORTED,
         "x;y;z\n760001;4050001;1\n"),
    Case("driver", {"area.geojson": AREA, "scan.xyz": SCAN},
         "ogr2ogr -t_srs EPSG:4326 area.gpkg area.geojson",
         f"{IMPORTED}; ogrinfo -q model.gpkg boundary | grep -o 'group.*'",
         f"{INSIDE}group (Integer) = 1\n"),
    Case("cutline", {"dem.asc": GRID + ELEVATIONS, **ON_SQUARE},
         "gdal_translate -q -a_srs EPSG:32616 dem.asc dem.tif",
         "gdal_translate -q -of XYZ cut.tif /vsistdout/ | grep -v 9999",
         "760005 4050015 2.25\n760025 4050015 4\n760005 4050005 6.125\n760025 4050005 -9998\n"),
    Case("raster to scan", {"dem.asc": GRID + ELEVATIONS, **ON_SQUARE},
         "gdal_translate -q -a_srs EPSG:32616 dem.asc dem.tif", CLIP,
         "X;Y;Z\n760005;4050015;2.25\n760025;4050015;4\n"
         "760005;4050005;6.125\n760025;4050005;-9998\n"),
    Case("points to scan", {"points.geojson": POINTS, **ON_SQUARE}, TO_PACKAGE, CLIP,
         "X;Y;Z\n760001.25;4050001.5;433.125\n760099.123456789;4050050.5;-2\n"),
    Case("fields to scan", {"points.geojson": FLAT_POINTS, **ON_SQUARE}, TO_PACKAGE, CLIP,
         "x;y;z;g\n760001.25;4050001.5;2.5;3\n760099.123456789;4050050.5;4;5\n"),
    Case("clipped to geopackage",
         {"clipped/1.xyz": "x;y;z\n1.5;2;3\n", "clipped/2.txt": "X Y Z\n760347.0 4055500.0 433.0\n",
          "clipped/3.txt": "x\ty\tz\r\n2\t3\t4.25\r\n", "clipped/4.xyz": "x,y,z,g\n5,6,7,8\n",
          "clipped/total_node_count.txt": "4\n"}, "", LISTED.replace(" FROM", ", g FROM"),
         "1.5,2,3,\n760347,4055500,433,\n2,3,4.25,\n5,6,7,8\n"),
    Case("blanks to geopackage", {"clipped/dem.txt": "x y z\n   1.5     2   3\n 100.5  2000 -30\n"},
         "", LISTED, "1.5,2,3\n100.5,2000,-30\n"),
    Case("nodes to geopackage", {"clipped/dem.node": "nod e\n1.5 2 3 4\n2.5 3 4 5\n"},
         "", LISTED, "1.5,2,3\n2.5,3,4\n"),
    Case("clipped to raster", {"clipped/dem.xyz": KEPT}, "", CELLS, cells(0, 0)),
    Case("clipped to raster", {"clipped/dem.xyz": KEPT.replace(";11", ";0")}, "", CELLS,
         cells(-32768, -32768).replace(" 11\n", " 0\n")),
    Case("clipped to raster", {"clipped/dem.xyz": KEPT.replace("2.25", "0")}, "",
         f"{CELLS} || true", cells(0, "").replace("2.25", "0").removesuffix("  NoData Value=\n")),
    Case("geopackage to raster", {"kept.xyz": KEPT}, CSV_POINTS, CELLS, cells(-9999, -9999)),
    Case("points to raster", {"kept.xyz": KEPT}, CSV_POINTS, CELLS, cells(-9999, -9999)),
]


def run(command, directory, programs):
    path = f"{programs}{os.pathsep}{os.environ['PATH']}"
    return subprocess.run(["bash", "-euo", "pipefail", "-c", command], cwd=directory, text=True,
                          env={**os.environ, "PATH": path}, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=60)


@pytest.mark.parametrize("case", CASES, ids=lambda case: case.recipe)
def test_recipe(case, program, tmp_path):
    if case.recipe in ("driver", "cutline") and "GDAL_DRIVER_PATH" not in os.environ:
        pytest.skip("the driver was not built")
    programs = Path(program.command[0]).parent
    recipe = RECIPES[case.recipe]
    if "veldtrim-boundary" in recipe and not (programs / "veldtrim-boundary").exists():
        pytest.skip("veldtrim-boundary was not built")
    write_tree(tmp_path, case.given)
    for command in (case.prepare, recipe, case.show):
        done = run(command, tmp_path, programs)
        assert done.returncode == 0, f"{command}\n{done.stderr}"
    assert done.stdout == case.printed


def test_every_recipe_is_tested():
    assert RECIPES.keys() == {case.recipe for case in CASES}
    shown = re.findall(r"^```sh$", PAGE, re.M)
    assert len(shown) == len(RECIPES) + PAGE.count("**are not tested here**") * 2
