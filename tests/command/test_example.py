"""The workspace that is shipped: its clipped files, judged exactly, and what its README says."""

import shutil
from pathlib import Path

from harness import boundary_file, clips
from model import clip, groups_of

EXAMPLES = Path(__file__).parents[2] / "examples"


def test_example(program, tmp_path):
    shutil.copytree(EXAMPLES / "jacksboro", tmp_path / "jacksboro")
    readme = (EXAMPLES / "README.md").read_text()
    groups = list(groups_of(EXAMPLES / "jacksboro/boundary.xml"))
    rings = [ring for type, rings in groups if type == "boundaries" for ring in rings.values()]
    kept = {}
    for scan in (EXAMPLES / "jacksboro/scans").iterdir():
        content = scan.read_bytes()
        kept[scan.name] = clip(content, rings)
        counts = [each.count(b"\n") - 1 for each in (content, kept[scan.name])]
        assert "{:,} | {:,} |".format(*counts) in readme
    trace = boundary_file(*groups)[1]
    outcome = clips(kept, trace=trace, output="jacksboro/clipped")
    assert trace in readme
    assert f"{int(outcome.created['jacksboro/clipped/total_node_count.txt']):,}" in readme
    arguments = ["jacksboro/scans", "clipped", "jacksboro/boundary.xml"]
    program.check(tmp_path, arguments, outcome).assert_progress_rises()
