"""What people do wrong: a workspace of each mistake, and the sentence that explains it.

A workspace is one scan, scans/a.xyz, and boundary.xml, unless a mistake names others. It keeps one
record once the mistake is mended, by the command that veldtrim-inspect prints if there is one.
"""

import gzip
import io
import json
import zipfile
from typing import NamedTuple

from harness import SCAN, SQUARE, SQUARE_XML, Link, boundary_xml
from model import node_header

SKIPS = "Skipping input file"
NOT_FOUND = "Boundary file named boundary.xml not found"
NO_ROOT = "Could not find the TavelDGM tag"
NO_FILES = "There are no input files."
FINISHED = "Finished clipping"


class Mistake(NamedTuple):
    name: str
    tree: dict
    sentence: str  # of veldtrim-inspect
    run: str  # what the run says
    mends: bool = False  # whether the command printed makes it right


def scan(name, content, sentence, run=SKIPS, mends=True):
    return Mistake(name, {"scans/a.xyz": content}, sentence, run, mends)


def header(name, line, sentence, records=SCAN.split("\n", 1)[1], run=SKIPS):
    return scan(name, f"{line}\n{records}", sentence, run)


def named(name, file, content, sentence, mends=True, run=NO_FILES):
    return Mistake(name, {"scans/a.xyz": None, f"scans/{file}": content}, sentence, run, mends)


def boundary(name, content, sentence, run=NOT_FOUND, mends=False):
    return Mistake(name, {"boundary.xml": content}, sentence, run, mends)


def apart(name, points, sentence, ring=None, mends=True):
    """Points that are not where the boundaries are."""
    text = "x;y;z\n" + "".join(f"{x};{y};1\n" for x, y in points)
    return Mistake(name, {"scans/a.xyz": text, "boundary.xml": boundary_xml(ring or AREA)},
                   sentence, FINISHED, mends)


def zipped(content):
    stream = io.BytesIO()
    with zipfile.ZipFile(stream, "w") as archive:
        archive.writestr("a.txt", content)
    return stream.getvalue()


def rings(name, sentence, *polygons):
    return Mistake(name, {"boundary.xml": boundary_xml(*polygons)}, sentence, FINISHED)


def attributes(text):
    return SQUARE_XML.replace('x="4" y="4" segmenttype="0"', text, 1)


BLANK, COMMA, TAB = (SCAN.split("\n", 1)[1].replace(";", mark) for mark in " ,\t")
NUMBERED = "1;5;5;1\n2;5;5.5;1\n3;9;9;1\n"
AREA = [(700000 + x, 4000000 + y) for x, y in [(0, 0), (900, 0), (900, 900), (0, 900)]]
GRID = [(700000 + x, 4000000 + y) for x in range(0, 1000, 250) for y in range(0, 1000, 250)]
GEOJSON = json.dumps({"type": "Polygon", "coordinates": [[*SQUARE, SQUARE[0]]]})
TRIANGLE = [(0, 0), (9, 0), (9, 9)]

HEADERS = [
    scan("no header", BLANK, "the file has no header, its first line is a record"),
    scan("no header, semicolons", "5;5;1\n9;9;2\n", "Put a header in front of it"),
    scan("no header, tabs", TAB, "Put a header in front of it"),
    header("quoted header", '"X","Y","Z"', "its names are in quotes", COMMA),
    header("quoted records", '"X","Y","Z"', "the records hold quotes",
           '"5","5","1"\n"9","9","2"\n'),
    header("comment //", "//X;Y;Z", "it begins with the mark of a comment"),
    header("comment #", "# x y z", "it begins with the mark of a comment", BLANK),
    header("blanks after separators", "X, Y, Z", "there are blanks around its names",
           "5, 5, 1\n9, 9, 2\n"),
    header("several blanks", "x  y  z", "there are blanks around its names", BLANK),
    header("easting", "easting;northing;height", "its columns have other names"),
    header("longitude", "Longitude,Latitude,Elevation", "its columns have other names", COMMA),
    header("intensity", "x;y;z;Intensity", "a further column that is not g", "5;5;1;7\n9;9;2;7\n"),
    header("colours", "X;Y;Z;R;G;B", "it names further columns", "5;5;1;7;7;7\n9;9;2;7;7;7\n"),
    header("trailing separator", "x;y;z;", "it ends with a separator", "5;5;1;\n9;9;2;\n"),
    header("mixed case", "X;y;z", "it mixes capital and small letters"),
    header("number first", "id;x;y;z", "the first column is a number", "1;5;5;1\n2;9;9;2\n"),
    header("y before x", "y;x;z", "the header names y before x"),
    header("northing first", "N E H", "the header may name y before x", BLANK, FINISHED),
    header("title", "Terrain of 2024", "names no columns x, y", BLANK),
    header("empty first line", "", "the first line is empty"),
    header("two columns", "x;y", "a header is x;y;z or x;y;z;g"),
    scan("byte-order mark", b"\xef\xbb\xbf" + SCAN.encode(), "begins with a byte-order mark"),
    scan("UTF-16", ("\ufeff" + SCAN).encode("utf-16-le"), "it holds UTF-16 text"),
    scan("UTF-16 without a mark", SCAN.encode("utf-16-le"), "it holds UTF-16 text"),
    scan("gzip", gzip.compress(SCAN.encode()), "it holds a gzip archive, not text"),
    scan("zip", zipped(SCAN), "it holds a zip archive, not text"),
    scan("LAS", b"LASF\0\0\0\0", "it holds a LAS or LAZ file", mends=False),
    scan("TIFF", b"II*\0\x08\0\0\0", "gdal_translate -of XYZ", mends=False),
    scan("empty", "", "the file is empty", mends=False),
    scan("a boundary file", SQUARE_XML, "it holds XML, not elevation points", mends=False),
]
NAMES = [
    named("upper case", "a.XYZ", SCAN, "is not read because of its name. Rename it"),
    named("csv", "a.csv", "x,y,z\n" + COMMA, "is not read because of its name. Rename it"),
    named("no ending", "tile 1", SCAN, "is not read because of its name. Rename it"),
    named("gz ending", "a.xyz.gz", gzip.compress(SCAN.encode()), "Unpack it", False),
    named("laz ending", "a.laz", b"LASF\0\0", "it holds a LAS or LAZ file", False),
    named("csv of something", "a.csv", "id,name\n1,2\n", "if the file holds elevation points",
          False),
    named("subdirectories", "sub/a.xyz", SCAN, "a run does not read subdirectories"),
    Mistake("link to nowhere", {"scans/a.xyz": Link("nowhere")}, "does not lead to a file", SKIPS),
    Mistake("directory of none", {"scans/a.xyz": None, "scans": None}, "holds no input file",
            NO_FILES),
    Mistake("named like the total", {"scans/total_node_count.txt": SCAN}, "rename the scan",
            FINISHED),
]
RECORDS = [
    header("node number", "nr;x;y;z", "names a column before x", NUMBERED, FINISHED),
    header("node names", "n;x;y;z", "names a column before x", NUMBERED, FINISHED),
    header("node counts", node_header(), "it counts 1, 2, 3", NUMBERED, FINISHED),
    header("short node header", "n", "names the separator as its character number",
           run=FINISHED),
    header("other separator", "x,y,z", 'the records are separated by ";"', run=FINISHED),
    header("decimal commas", "x;y;z", '"5,5" is read as 5. Write', "5,5;5,5;1\n9,9;9,9;2\n",
           FINISHED),
    scan("decimal and separating commas", "x,y,z\n5,5,5,5,1,0\n", "commas may both separate",
         FINISHED, False),
    header("quotes", "x;y;z", "its records are in quotes", '"5";"5";"1"\n', FINISHED),
    scan("no last line feed", "x;y;z\n5;5;1", "the last line has no line feed", FINISHED),
    scan("words", "x;y;z\nfive;five;1\n", 'x is not a number: "five"', FINISHED, False),
    scan("no z", "x;y;z\n5;5\n", "nothing follows y", FINISHED, False),
]
BOUNDARIES = [
    boundary("GeoJSON", GEOJSON, "is a GeoJSON file, not a boundary file", mends=True),
    boundary("shapefile", b"\0\0\x27\x0a\0\0\0\0", "is a shapefile, not a boundary file"),
    boundary("dbf", b"\x03\x7b\x01\x01\0\0", "is the table of a shapefile"),
    boundary("GeoPackage", b"SQLite format 3\0\x10\0", "is a GeoPackage"),
    boundary("KML", '<kml><Document/></kml>', "is a KML file", NO_ROOT),
    boundary("GML", '<c xmlns:gml="http://www.opengis.net/gml"><a/></c>', "is a GML file",
             NO_ROOT),
    boundary("DXF", "  0\nSECTION\n", "is a DXF drawing"),
    boundary("gzip boundary", gzip.compress(SQUARE_XML.encode()), "is a gzip archive", mends=True),
    boundary("zip boundary", zipped(SQUARE_XML), "is a zip archive", mends=True),
    boundary("UTF-16 boundary", SQUARE_XML.encode("utf-16"), "is UTF-16 text", mends=True),
    boundary("UTF-16 boundary without a mark", SQUARE_XML.encode("utf-16-be"), "is UTF-16 text",
             mends=True),
    boundary("empty boundary", "", "is empty"),
    boundary("a scan", SCAN, "holds no XML"),
    boundary("cut off", SQUARE_XML.split("</group>")[0], "is not complete: the element that"),
    boundary("wrong end tag", "<a>\n <b>\n </a>", 'is broken XML at line 3, column 2: "</a>"'),
    boundary("open comment", "<a><!-- b</a>",
             "the comment, declaration or CDATA section that begins here"),
    boundary("other XML", "<svg><g/><path/></svg>", "the root element svg contains g, path",
             NO_ROOT),
    boundary("TavelDGM as the root", SQUARE_XML.replace("project", "q").replace("<q>", "").replace(
        "</q>", ""), "TavelDGM must be a child of the root element", NO_ROOT, True),
    boundary("no group", "<p><TavelDGM/></p>", "has no group in its element TavelDGM", FINISHED),
    boundary("other group", SQUARE_XML.replace("boundaries", "outline"),
             'no group of type "boundaries", the only type that a run reads; it has "outline"',
             FINISHED, True),
    boundary("no polygon", "<p><TavelDGM><group type='boundaries'/></TavelDGM></p>",
             "hold no polygon", FINISHED),
    boundary("no id", SQUARE_XML.replace('id="1"', ""), "its polygon number 1 has no id",
             "Cannot find the id"),
    boundary("no x", attributes('y="4" segmenttype="0"'), "point number 1 of polygon 1 has no x",
             "cannot read point 0"),
    boundary("no segmenttype", SQUARE_XML.replace(' segmenttype="0"', ""),
             "each point needs a segmenttype", "cannot read point 0", True),
    boundary("unquoted", attributes("x=4 y=4 segmenttype=0"), "each point needs numbers in quotes",
             "cannot read point 0"),
    boundary("no number", attributes('x="four" y="4" segmenttype="0"'),
             'has x="four", which is not a number', "cannot read point 0"),
    boundary("comma in the boundary", attributes('x="4,0" y="4" segmenttype="0"'),
             '"4,0" is read as 4', FINISHED, True),
    Mistake("no boundary file", {"boundary.xml": None}, "is a directory", NOT_FOUND),
]
RINGS = [
    rings("hole", "no hole is cut", [(0, 0), (20, 0), (20, 20), (0, 20)], SQUARE),
    rings("slanted edge", "shares the slanted edge from (0, 0) to (9, 9)", TRIANGLE,
          [(0, 0), (9, 9), (0, 9)]),
    rings("one vertex", "fewer than two vertices", [(5, 5)]),
    rings("no vertex", "no vertices", []),
    rings("flat", "is flat", [(5, 0), (5, 9)]),
    rings("crossing", "crosses itself", [(0, 0), (9, 9), (9, 0), (0, 9)]),
    rings("elsewhere", "it lies outside the bounds of every file", SQUARE,
          [(50, 50), (60, 50), (60, 60)]),
]
APART = [
    apart("swapped", [(y, x) for x, y in GRID], "x and y may be swapped"),
    apart("kilometres", [(x / 1000, y / 1000) for x, y in GRID], "points may be in kilometres"),
    apart("metres", [(x * 1000, y * 1000) for x, y in GRID], "boundaries in kilometres"),
    apart("feet", [(x / 0.3048, y / 0.3048) for x, y in GRID], "points may be in feet"),
    apart("centimetres", [(x * 100, y * 100) for x, y in GRID], "points may be in centimetres"),
    apart("degrees", [(x / 1e5, y / 1e5) for x, y in GRID], "the points look like degrees",
          mends=False),
    apart("boundaries in degrees", GRID, "the boundaries look like degrees", TRIANGLE, False),
    apart("zone in front", [(32e6 + x, y) for x, y in GRID], "the number of its zone, 32"),
    apart("zone in the boundaries", GRID, "x of the boundaries may have the number of its zone, 33",
          [(33e6 + x, y) for x, y in AREA]),
    apart("east", [(x + 5000.5, y) for x, y in GRID], "4100.5 units towards smaller x",
          mends=False),
    apart("south", [(x, y - 5000) for x, y in GRID], "4250 units towards larger y",
          mends=False),
]
MISTAKES = HEADERS + NAMES + RECORDS + BOUNDARIES + RINGS + APART
