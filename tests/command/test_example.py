"""The workspace that is shipped: its clipped files, judged exactly, and what its README says."""

import shutil
from pathlib import Path

from harness import CLIPPING, FINISHED, START
from model import clip, rings_of

EXAMPLES = Path(__file__).parents[2] / "examples"
TRACE = """\
[readin_b_XML:]
Found TavelDGM
found group element
typestring = boundaries
current polygon id = 1 with type = 0
 ipts= 449 points read for the boundary
current polygon id = 2 with type = 0
 ipts= 81 points read for the boundary
current polygon id = 3 with type = 0
 ipts= 4 points read for the boundary
found group element
typestring = breaklines
Unknown tag breaklines
Ignoring block     ... finished
boundary file read.
"""


def test_example(program, tmp_path):
    shutil.copytree(EXAMPLES / "jacksboro", tmp_path / "jacksboro")
    readme = (EXAMPLES / "README.md").read_text()
    rings = rings_of(EXAMPLES / "jacksboro/boundary.xml")
    created, kept = {"jacksboro/clipped": None}, {}
    for scan in (EXAMPLES / "jacksboro/scans").iterdir():
        content, kept[scan.name] = clip(scan.read_bytes(), rings)
        created[f"jacksboro/clipped/{scan.name}"] = content
        records = scan.read_bytes().count(b"\n") - 1
        assert f"{records:,} | {kept[scan.name]:,} |" in readme
    total = sum(kept.values())
    assert f"{total:,}" in readme and TRACE in readme
    assert kept == {
        "north_east.txt": 480,
        "north_west.xyz": 310,
        "south_east.xyz": 4275,
        "south_west.txt": 968,
    }
    created["jacksboro/clipped/total_node_count.txt"] = f"{total}\n"
    run = program.check(
        tmp_path,
        ["jacksboro/scans", "clipped", "jacksboro/boundary.xml"],
        code=0,
        stdout=TRACE,
        messages=[START, *[CLIPPING] * 4, FINISHED],
        created=created,
    )
    run.assert_progress_rises()
