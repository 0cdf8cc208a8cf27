"""What the pages say of points on edges, where it surprises: docs/decisions.md, file-formats.md."""

import pytest
from harness import ARGUMENTS, boundary_xml, write_tree

LEFT = [(-5000, 2.9), (216.6, 2.9), (4554.4, 7477.2), (-5000, 7477.2)]
RIGHT = [(4554.4, 7477.2), (216.6, 2.9), (9000, 2.9), (9000, 7477.2)]
FLAT = [(0, 3), (4, 3), (9, 3)]


@pytest.mark.parametrize(
    "rings, point, kept",
    [
        ([LEFT, RIGHT], "1168.8;1643.6", False),  # on the slanted edge that they share
        ([LEFT, RIGHT], "1168.7;1643.6", True),
        ([LEFT, RIGHT], "1168.9;1643.6", True),
        ([[(0, 0), (1, 7)]], "1;7", False),
        ([[(0, 0), (1, 7), (0, 0)]], "1;7", True),
        ([[(2, 2)]], "2;2", False),
        ([[(2, 2), (2, 2)]], "2;2", True),
        ([FLAT], "9.0000009;3", True),
        ([FLAT], "9.0000011;3", False),
        ([FLAT], "5;3.0000001", False),
    ],
)
def test_points_on_edges(program, tmp_path, rings, point, kept):
    scan = f"x;y;z\n{point};1\n"
    write_tree(tmp_path, {"scans/a.xyz": scan, "boundary.xml": boundary_xml(*rings)})
    assert program.run(tmp_path, *ARGUMENTS).code == 0
    assert (tmp_path / "clipped/total_node_count.txt").read_text() == f"{int(kept)}\n"


@pytest.mark.parametrize(
    "tiles",
    [
        [[(0, 0), (0.3, 0), (0.3, 0.7), (0, 0.7)], [(0.3, 0), (0.9, 0), (0.9, 0.7), (0.3, 0.7)]],
        [[(0, 0), (0.9, 0), (0.9, 0.7), (0, 0.7)], [(0, 0.7), (0.9, 0.7), (0.9, 2), (0, 2)]],
    ],
)
@pytest.mark.parametrize("turn", [0, 1, 2])
@pytest.mark.parametrize("step", [1, -1])
def test_horizontal_and_vertical_edges_lose_nothing(program, tmp_path, tiles, turn, step):
    tiles = [[*ring[turn:], *ring[:turn]][::step] for ring in tiles]
    points = [(0.3, i / 10) for i in range(8)] + [(i / 10, 0.7) for i in range(10)]
    scan = "x;y;z\n" + "".join(f"{x};{y};1\n" for x, y in points)
    tree = {f"scans/{i}.xyz": scan for i in "ab"}
    write_tree(tmp_path, {**tree, "boundary.xml": boundary_xml(*tiles)})
    assert program.run(tmp_path, *ARGUMENTS).code == 0
    assert (tmp_path / "clipped/total_node_count.txt").read_text() == "36\n"
