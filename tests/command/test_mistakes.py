"""Each mistake is explained by veldtrim-inspect, and mended by the command that it prints."""

import os
import re
import subprocess

import pytest
from harness import ARGUMENTS, SCAN, SQUARE_XML, write_tree
from mistakes import MISTAKES

COMMAND = re.compile(r": ((?:sed|perl|awk|iconv|gunzip|unzip|mv|echo|chmod|veldtrim-boundary) .*)$")


def sentences(report):
    """All that a report says in words."""
    said = [report["failure"] or "", *report["hints"]]
    for each in report["files"]:
        lines = each.get("firstNotRead", [])
        said += [each.get("reason", ""), *each["advice"], *(line["reason"] for line in lines)]
    return said + [remark for polygon in report["polygons"] for remark in polygon["remarks"]]


def mend(directory, said, programs):
    """Runs the first command in the sentences, which may name a new boundary file."""
    command = next(found[1] for found in map(COMMAND.search, said) if found)
    environment = {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}"}
    subprocess.run(["sh", "-ec", command], cwd=directory, check=True, env=environment)
    if (directory / "NEWFILE").exists():
        (directory / "NEWFILE").replace(directory / "boundary.xml")


@pytest.mark.posix
@pytest.mark.parametrize("mistake", MISTAKES, ids=lambda mistake: mistake.name)
def test_mistake(program, inspector, tmp_path, mistake):
    tree = {"scans/a.xyz": SCAN, "boundary.xml": SQUARE_XML, **mistake.tree}
    if tree["scans/a.xyz"] is None:
        del tree["scans/a.xyz"]
    write_tree(tmp_path, tree)
    report = program.inspect(tmp_path, "./scans", "boundary.xml")
    said = sentences(report)
    assert any(mistake.sentence in each for each in said), said
    text = program.inspect_text(tmp_path, "./scans", "boundary.xml")
    assert mistake.sentence in text
    assert [each for each in said if each not in text] == []

    run = program.run(tmp_path, *ARGUMENTS)
    assert mistake.run in run.stderr
    if mistake.mends:
        mend(tmp_path, said, os.path.dirname(inspector))
        mended = program.inspect(tmp_path, "./scans", "boundary.xml", code=0)
        assert mended["records"]["kept"] >= 1 and mended["failure"] is None
        assert [each["advice"] for each in mended["files"]] == [[]] * len(mended["files"])
