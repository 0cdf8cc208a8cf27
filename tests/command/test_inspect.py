"""What veldtrim-inspect says of workspaces that give too little, and how it is called.

That its counts are those of the clipped files is held against every run of the other tests.
"""

import json
import os
import shutil
import subprocess
from pathlib import Path

import pytest
from harness import REASONS, SQUARE, SQUARE_XML, boundary_xml, write_tree

ROOT = Path(__file__).parents[2]
EXAMPLE = ROOT / "examples/jacksboro"
HEADER = "x;y;z\n"


def inspect(inspector, directory, *arguments):
    how = {"capture_output": True, "text": True, "errors": "replace", "timeout": 60}
    return subprocess.run([inspector, *map(str, arguments)], cwd=directory, **how)


def scan(points):
    return HEADER + "".join(f"{x};{y};1\n" for x, y in points)


def unread(*faults, first=2):
    """What the report says of the first lines that are not read."""
    return {"firstNotRead": [{"line": n, "reason": why} for n, why in enumerate(faults, first)]}


# content of a scan (by its ending), and what the report on it says
FILES = [
    (".csv", HEADER, {"taken": False}),
    (".xyz", "", {"taken": False, "reason": REASONS["no header"]}),
    (".txt", "# points\n", {"taken": False, "reason": REASONS["first character"]}),
    (".xyz", HEADER + "5,5;5,5;1\n", {"decimalCommas": True, "lastLineUnread": False}),
    (".xyz", "x,y,z\n5,5,5,5,1,0\n", {"decimalCommas": True}),
    (".xyz", "x,y,z\n5,5,1\n", {"decimalCommas": False}),
    (".xyz", HEADER + "5;5;1\r\n5;5;2", {"lastLineUnread": True, "lineEnds": {"lf": 1, "crLf": 1}}),
    (
        ".xyz",
        HEADER + "5;5\n\n;5;1\nfive;5;1\n5;five;1\n5 5 1\n",
        unread(
            "nothing follows y", "the line is empty", 'x is not a number: ""',
            'x is not a number: "five"', 'y is not a number: "five"',
        ),
    ),
    (".txt", "x y z\n5 five 1\n", unread('y is not a number: "five"')),
    (
        ".xyz",
        HEADER + "5 5 1\n" + "5" + " " * 100 + ";5;1\n",
        unread('no separator (";") after x', 'the separator (";") is too far from x'),
    ),
    (".node", "n\n5;5;1\n", {"format": "node", "separator": None, "columns": None}),
]
SAID_OF_FILES = [
    "left out: its name does not end in", "lines end in LF and CR LF mixed",
    "... and 1 more that are not read", "node, separator none",
]


def test_files(program, inspector, tmp_path):
    scans = {f"scans/{n}{ending}": content for n, (ending, content, _) in enumerate(FILES)}
    write_tree(tmp_path, {**scans, "scans/sub/x.xyz": "", "boundary.xml": SQUARE_XML})
    report = program.inspect(tmp_path, "./scans", "boundary.xml", code=0)
    files = {"scans/" + file["name"]: file for file in report["files"]}
    assert files.keys() == scans.keys()
    for name, (_, _, expected) in zip(scans, FILES):
        assert {key: files[name].get(key) for key in expected} == expected, name
    text = program.inspect_text(tmp_path, "./scans", "boundary.xml")
    assert [said for said in SAID_OF_FILES if said not in text] == []
    # and the run agrees
    assert program.run(tmp_path, "./scans", "clipped", "boundary.xml").code == 0


def test_polygons(program, inspector, tmp_path):
    rings = [
        (SQUARE, 4, 2, []),
        ([(0, 0), (4, 4), (4, 0), (0, 4)], 0, 1, ["crosses itself"]),
        ([(5, 0), (5, 9), (5, 5)], 0, 2, ["is flat"]),
        ([(5, 5)], 0, 0, ["fewer than two vertices"]),
        ([], 0, 0, ["no vertices"]),
        ([(50, 50), (60, 50), (60, 60)], 50, 0, ["the bounds of every file"]),
    ]
    points = scan([(5, 5), (4, 4.5), (1, 2), (9, 9)])
    boundary = boundary_xml(*(ring for ring, *_ in rings))
    write_tree(tmp_path, {"scans/a.xyz": points, "boundary.xml": boundary})
    report = program.inspect(tmp_path, "./scans", "boundary.xml", code=0)
    for number, (polygon, (ring, area, _, remarks)) in enumerate(zip(report["polygons"], rings), 1):
        assert (polygon["id"], polygon["vertices"]) == (number, len(ring))
        assert polygon["area"] == area
        assert len(polygon["remarks"]) == len(remarks), polygon
        assert all(part in said for part, said in zip(remarks, polygon["remarks"])), polygon
    assert [polygon["holds"] for polygon in report["polygons"]] == [2, 1, 1, 0, 0, 0]
    counts = {key: report["records"][key] for key in ("inside", "onBoundary", "outside")}
    assert counts == {"inside": 2, "onBoundary": 1, "outside": 1}


def test_polygon_too_intricate_to_be_searched(program, inspector, tmp_path):
    zigzag = [(i % 2 * 1000, i / 16) for i in range(12_000)]
    ring = [*zigzag, (-10, 750), (-10, 0)]
    write_tree(tmp_path, {"scans/a.xyz": scan([(-5, 5)]), "boundary.xml": boundary_xml(ring)})
    report = program.inspect(tmp_path, "./scans", "boundary.xml")
    assert "too intricate" in report["polygons"][0]["remarks"][0]


def test_workspace_that_is_none(program, inspector, tmp_path):
    write_tree(tmp_path, {"boundary.xml": SQUARE_XML, "file": ""})
    for path, said in (("./no", "does not exist"), ("./file", "is a file"), ("no", "write ./no")):
        assert said in program.inspect(tmp_path, path, "boundary.xml", code=1)["failure"]
    exchanged = program.inspect(tmp_path, "boundary.xml", ".", code=1)
    assert "in the wrong order" in exchanged["hints"][0]


@pytest.mark.posix
def test_named_pipe_keeps_nobody_waiting(program, inspector, tmp_path):
    write_tree(tmp_path, {"scans/a.xyz": scan([(5, 5)]), "boundary.xml": SQUARE_XML})
    os.mkfifo(tmp_path / "scans/pipe.xyz")
    report = program.inspect(tmp_path, "./scans", "boundary.xml", code=0)
    assert report["files"][1]["reason"] == REASONS["no file"]
    report = program.inspect(tmp_path, "./scans", "scans/pipe.xyz", code=1)
    assert "is not a regular file" in report["failure"] and report["hints"] == []


def test_no_command_is_made_of_what_a_file_says(program, inspector, tmp_path):
    boundary = SQUARE_XML.replace("boundaries", "'; touch taken; '")
    write_tree(tmp_path, {"scans/a.xyz": scan([(5, 5)]), "boundary.xml": boundary})
    hints = program.inspect(tmp_path, "./scans", "boundary.xml", code=1)["hints"]
    assert "rename it" in hints[0] and "sed" not in hints[0]


def test_many_sound_files_and_polygons_are_only_counted(program, inspector, tmp_path):
    rings = [[(x, 0), (x + 1, 0), (x, 1)] for x in range(0, 60, 2)]
    tree = {f"scans/{number}.xyz": scan([(0, 0), (59, 0)]) for number in range(5000)}
    tree |= {"scans/bad.xyz": "", "boundary.xml": boundary_xml(*rings)}
    write_tree(tmp_path, tree)
    text = inspect(inspector, tmp_path, "./scans", "boundary.xml").stdout
    assert "5,000 read\n" in text and "1 the header line is empty\n" in text
    assert "30 without remarks\n" in text and len(text.splitlines()) < 20
    report = json.loads(inspect(inspector, tmp_path, "./scans", "boundary.xml", "--json").stdout)
    assert [file["name"] for file in report["files"]] == ["bad.xyz"]
    assert report["fileCounts"] == {"read": 5000, "the header line is empty": 1}
    assert (report["polygonCount"], report["polygons"]) == (30, [])


def test_json_schema(program, inspector, tmp_path):
    jsonschema = pytest.importorskip("jsonschema")
    schema = json.loads((ROOT / "docs/inspect.schema.json").read_text())
    jsonschema.Draft7Validator.check_schema(schema)
    write_tree(tmp_path, {f"scans/{n}{ending}": text for n, (ending, text, _) in enumerate(FILES)})
    write_tree(tmp_path, {"boundary.xml": boundary_xml(SQUARE, [], [(5, 5), (5, 9)])})
    for boundary in ("boundary.xml", "none.xml"):
        jsonschema.validate(program.inspect(tmp_path, "./scans", boundary), schema)


def test_command_line(inspector, tmp_path):
    shutil.copytree(EXAMPLE, tmp_path / "area")
    paths = ["area/scans", "area/boundary.xml"]
    for arguments in ([], paths[:1], [*paths, "more"], [*paths, "--picture", "a.gif"]):
        run = inspect(inspector, tmp_path, *arguments)
        assert run.returncode == 2 and run.stderr and not run.stdout, arguments
    for arguments in (["--help"], ["--version"]):
        assert inspect(inspector, tmp_path, *arguments).returncode == 0
    bare = inspect(inspector, tmp_path / "area", "scans", "boundary.xml")
    assert bare.returncode == 1 and "write ./scans" in bare.stdout
    nothing = inspect(inspector, tmp_path, paths[0], "no.xml", "--picture", "a.png")
    assert nothing.returncode == 1 and "no picture: nothing was read" in nothing.stderr
    assert not (tmp_path / "a.png").exists()
    nowhere = inspect(inspector, tmp_path, *paths, "--picture", "no/where.png")
    assert (nowhere.returncode, nowhere.stdout) == (1, "")
    assert "cannot write the picture no/where.png: No such file or directory" in nowhere.stderr


def colours(picture):
    """The places of the pixels in the colours of kept and of dropped points."""
    kept, dropped = [], []
    for y in range(picture.height):
        for x in range(picture.width):
            red, green, blue = picture.getpixel((x, y))
            if green > red + 20 and green > blue + 20:
                kept.append((x, y))
            elif red > green + 20 and green > blue + 20:
                dropped.append((x, y))
    return kept, dropped


# As dots, and as an image of densities.
@pytest.mark.parametrize("side", [60, 200])
def test_picture_shows_what_is_kept(inspector, tmp_path, side):
    image = pytest.importorskip("PIL.Image")
    points = [(10 * x / side, 10 * y / side) for x in range(side) for y in range(side)]
    square = boundary_xml([(2, 2), (4, 2), (4, 6), (2, 6)])
    write_tree(tmp_path, {"scans/a.xyz": scan(points), "boundary.xml": square})
    for name, start in (("a.svg", b"<?xml"), ("a.png", b"\x89PNG")):
        run = inspect(inspector, tmp_path, "./scans", "boundary.xml", "--picture", name)
        assert (run.returncode, run.stderr) == (0, "")
        assert (tmp_path / name).read_bytes().startswith(start)
    whole = image.open(tmp_path / "a.png").convert("RGB")
    legend = 0.74 * whole.width
    kept, dropped = colours(whole.crop((0, 0, legend, whole.height)))
    # The square in shares of all points' width and height; y of a picture grows downwards.
    for axis, low, high in ((0, 0.2, 0.4), (1, 0.4, 0.8)):
        first = min(place[axis] for place in dropped)
        extent = max(place[axis] for place in dropped) - first
        places = [place[axis] for place in kept]
        assert (min(places) - first) / extent == pytest.approx(low, abs=0.03)
        assert (max(places) - first) / extent == pytest.approx(high, abs=0.03)


@pytest.mark.parametrize(
    "points", [[], [(5, 5)], [(1e300, -1e300), (0, 0)], [("nan", 1), (1e15, 0)]]
)
def test_picture_of_odd_points(inspector, tmp_path, points):
    write_tree(tmp_path, {"scans/a.xyz": scan(points), "boundary.xml": SQUARE_XML})
    for name in ("a.png", "a.svg"):
        run = inspect(inspector, tmp_path, "./scans", "boundary.xml", "--picture", name)
        assert (run.returncode, run.stderr) == (0 if (5, 5) in points else 1, "")
        assert (tmp_path / name).stat().st_size > 500
