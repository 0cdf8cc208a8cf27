"""The workspace that is shipped: its clipped files, judged exactly, and what its README says."""

import shutil
from pathlib import Path

from harness import BOUNDARY_READ, CLIPPING, FINISHED, START, boundary_trace
from model import clip, rings_of

EXAMPLES = Path(__file__).parents[2] / "examples"
BREAKLINES = "found group element\ntypestring = breaklines\nUnknown tag breaklines\nIgnoring block"
FINISH = "     ... finished\n"
TRACE = boundary_trace(449, 81, 4).replace(FINISH, BREAKLINES + FINISH) + BOUNDARY_READ


def test_example(program, tmp_path):
    shutil.copytree(EXAMPLES / "jacksboro", tmp_path / "jacksboro")
    readme = (EXAMPLES / "README.md").read_text()
    rings = rings_of(EXAMPLES / "jacksboro/boundary.xml")
    created, total = {"jacksboro/clipped": None}, 0
    for scan in (EXAMPLES / "jacksboro/scans").iterdir():
        content, kept = clip(scan.read_bytes(), rings)
        created[f"jacksboro/clipped/{scan.name}"] = content
        records = scan.read_bytes().count(b"\n") - 1
        assert f"{records:,} | {kept:,} |" in readme
        total += kept
    assert f"{total:,}" in readme and TRACE in readme
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
