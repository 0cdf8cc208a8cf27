"""The tile index: what it says, what it saves, and what it never loses."""

import json
import os
import shutil
import subprocess

import pytest
from harness import ARGUMENTS, read_tree, write_tree

SIDE = 4  # the area of the workspace is the square from 4 to 6
INDEX = ["--tile-index", "index.geojson"]


def tile(column, row):
    """Records at the corners of a square, one line that is no record, and one that is not read."""
    x, y = column * SIDE, row * SIDE
    return f"x;y;z\n{x}.5;{y};1\n{x + 3};{y + 2.25};2\nnote\n{x + 99};{y + 99};3"


@pytest.fixture
def grid(workspace):
    shutil.rmtree(workspace / "scans")
    write_tree(workspace, {f"scans/{i}.xyz": tile(i % 3, i // 3) for i in range(9)})
    return workspace


def features(directory):
    collection = json.loads((directory / "index.geojson").read_text())
    return {each["properties"]["tile"]: each for each in collection["features"]}


def swap(path, content):
    """Changes a tile so that nobody notices: a run that reads it can be told."""
    state = path.stat()
    assert len(content) == state.st_size
    path.write_text(content)
    os.utime(path, ns=(state.st_atime_ns, state.st_mtime_ns))


def test_says_what_tiles_contain(tiles, grid):
    write_tree(grid, {"scans/caf\udce9 %.txt": "x;y;z\n", "scans/other.txt": "y;x\n1;1;1\n"})
    assert tiles.run(grid, "index", "./scans", "index.geojson", "--jobs", 2).code == 0
    known = features(grid)
    assert sorted(known) == [*(f"{i}.xyz" for i in range(9)), "caf%E9%20%25.txt", "other.txt"]
    last = known["8.xyz"]
    assert last["bbox"] == [8.5, 8, 11, 10.25]
    assert last["geometry"]["coordinates"] == [
        [[8.5, 8], [11, 8], [11, 10.25], [8.5, 10.25], [8.5, 8]]]
    state = (grid / "scans/8.xyz").stat()
    assert last["properties"] == {
        "location": "./scans/8.xyz", "tile": "8.xyz", "size": state.st_size, "input": True,
        "modified": str(state.st_mtime_ns), "records": 3}
    empty, other = known["caf%E9%20%25.txt"], known["other.txt"]
    assert empty["geometry"] is None and empty["properties"]["records"] == 0
    assert other["geometry"] is None and other["properties"]["input"] is False
    if shutil.which("ogrinfo"):
        said = subprocess.run(["ogrinfo", "-so", "-al", grid / "index.geojson"], text=True,
                              capture_output=True, check=True).stdout
        assert "Feature Count: 11" in said and "Extent: (0.500000, 0.000000)" in said


def test_tiles_outside_are_not_read(tiles, grid):
    _, expected = tiles.one_run(grid)
    assert tiles.run(grid, "index", "./scans", "index.geojson").code == 0
    for i in (0, 2, 6, 8):  # a run that reads them keeps them
        swap(grid / f"scans/{i}.xyz", tile(i % 3, i // 3).replace(
            f"{i % 3 * SIDE}.5;{i // 3 * SIDE};", "5.5;5;"))
    run = tiles.run(grid, *ARGUMENTS, *INDEX, "-pipe")
    assert run.code == 0
    assert [text for _, _, text in run.messages].count("Clipping elevation data...") == 1
    assert read_tree(grid / "clipped") == expected


def test_tiles_that_touch_are_read(tiles, grid):
    """A point on the border of the area is kept, and so is its tile."""
    write_tree(grid, {"scans/corner.xyz": "x;y;z\n6;6;1\n9;9;1\n",
                      "scans/beside.xyz": "x;y;z\n6.00001;6;1\n9;9;1\n"})
    assert tiles.run(grid, "index", "./scans", "index.geojson").code == 0
    run = tiles.run(grid, *ARGUMENTS, *INDEX, "-pipe")
    assert [text for _, _, text in run.messages].count("Clipping elevation data...") == 2
    assert (grid / "clipped/corner.xyz").read_text() == "x;y;z\n6;6;1\n"


def test_nothing_left_to_read(tiles, grid):
    """Input files without a record in the area make a run with the total 0, not one that fails."""
    os.remove(grid / "scans/4.xyz")
    assert tiles.run(grid, "index", "./scans", "index.geojson").code == 0
    assert tiles.run(grid, *ARGUMENTS, *INDEX).code == 0
    assert read_tree(grid / "clipped") == {"total_node_count.txt": b"0\n"}


def test_is_brought_up_to_date(tiles, grid):
    assert tiles.run(grid, "index", "./scans", "index.geojson").code == 0
    whole = (grid / "index.geojson").read_bytes()
    os.remove(grid / "scans/0.xyz")
    write_tree(grid, {"scans/2.xyz": tile(1, 1), "scans/new.txt": tile(7, 7)})
    _, expected = tiles.one_run(grid)
    run = tiles.run(grid, *ARGUMENTS, *INDEX, "--shard-size", 20)
    assert run.code == 0
    assert read_tree(grid / "clipped") == expected
    known = features(grid)
    assert "0.xyz" not in known and known["new.txt"]["bbox"] == [28.5, 28, 31, 30.25]
    assert known["2.xyz"]["bbox"] == [4.5, 4, 7, 6.25]
    write_tree(grid, {"scans/0.xyz": tile(0, 0), "scans/2.xyz": tile(2, 0)})
    os.remove(grid / "scans/new.txt")
    os.remove(grid / "index.geojson")
    assert tiles.run(grid, "index", "./scans", "index.geojson").code == 0
    assert len((grid / "index.geojson").read_bytes()) == len(whole)


@pytest.mark.parametrize("content", ["", "mine", '{"type":"FeatureCollection","features":[\n{}\n',
                                     None])
def test_file_of_somebody_else(tiles, grid, content):
    if content is None:
        os.mkfifo(grid / "index.geojson")
    else:
        write_tree(grid, {"index.geojson": content})
    for command in (["index", "./scans", "index.geojson"], [*ARGUMENTS, *INDEX]):
        run = tiles.run(grid, *command)
        assert run.code == 1 and "is not a tile index" in run.stderr
        assert sorted(os.listdir(grid)) == ["boundary.xml", "index.geojson", "scans"]
        assert content is None or (grid / "index.geojson").read_text() == content


def test_updates_at_the_same_time(tiles, grid):
    """The index is complete at any time, and nothing is left beside it."""
    write_tree(grid, {"index.geojson.part": "left by a command that was killed"})
    names = [str(i) for i in range(6)]
    for name in names:
        command = ["./scans", name, "boundary.xml", *INDEX]
        assert tiles.run(grid, "plan", *command).code == 0
        assert tiles.run(grid, "clip", f"{name}.staging", 1).code == 0
    merges = [tiles.start(grid, "merge", f"{name}.staging") for name in names]
    assert [merge.wait(60) for merge in merges] == [0] * len(names)
    assert len(features(grid)) == 9
    assert sorted(os.listdir(grid)) == [*names, "boundary.xml", "index.geojson", "scans"]
