"""Every folder of cases/ is one run of the program, told in files:

case.json   "arguments", "exit" and "messages" (kind, code, text); "directories" that stay empty
workspace/  the directory in which the program runs
stdout      its standard output
expected/   the files that the run adds to the workspace

Line ends in stdout and expected/ are LF and stand for the platform's.
"""

import json
import shutil
from pathlib import Path

import pytest
from harness import in_any_order, plain_lines, read_tree

CASES = sorted(path.parent for path in Path(__file__).parent.glob("cases/*/case.json"))


@pytest.fixture(params=CASES, ids=lambda path: path.name)
def case(request, tmp_path):
    shutil.copytree(request.param / "workspace", tmp_path, dirs_exist_ok=True)
    case = json.loads((request.param / "case.json").read_text())
    case["stdout"] = (request.param / "stdout").read_bytes()
    case["messages"] = [tuple(message) for message in case["messages"]]
    files = read_tree(request.param / "expected")
    case["created"] = {**files, **dict.fromkeys(case.pop("directories", []))}
    return case


def test_for_a_host(program, tmp_path, case):
    program.check(tmp_path, case.pop("arguments"), code=case.pop("exit"), **case)


def test_for_a_person(program, tmp_path, case):
    run = program.run(tmp_path, *case["arguments"])
    assert run.code == case["exit"]
    assert run.stdout == program.line_ends(case["stdout"])
    text = run.stderr.decode().replace("\r\n", "\n")
    if program.windows:
        text = text.replace("\\", "/")
    lines = [line for line in text.split("\n") if line]
    expected = [line for line in plain_lines(in_any_order(case["messages"])) if line]
    assert sorted(lines) == sorted(expected)
    assert (lines[0], lines[-1]) == (expected[0], expected[-1])
