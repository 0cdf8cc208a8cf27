"""Every folder of cases/ is one run of the program, told in files:

case.json   "arguments"; what the run says: "clipped", how many scans; "skipped", path -> reason;
            "error", if it fails; "directories" that stay empty
workspace/  the directory in which the program runs
trace       what the console says of the boundary file, where that is not one square
expected/   the files that the run adds to the workspace; line ends are LF and stand for the
            platform's
"""

import json
import shutil
from pathlib import Path

import pytest
from harness import SQUARE_TRACE, clips, fails, read_tree

CASES = sorted(path.parent for path in Path(__file__).parent.glob("cases/*/case.json"))


@pytest.mark.parametrize("pipe", [["-pipe"], []], ids=["host", "person"])
@pytest.mark.parametrize("case", CASES, ids=lambda path: path.name)
def test_case(program, tmp_path, case, pipe):
    shutil.copytree(case / "workspace", tmp_path, dirs_exist_ok=True)
    said = json.loads((case / "case.json").read_text())
    trace = (case / "trace").read_text() if (case / "trace").exists() else SQUARE_TRACE
    if "error" in said:
        outcome = fails(said["error"], skipped=said.get("skipped", {}), trace=trace)
    else:
        outcome = clips({}, said["clipped"], said.get("skipped", {}), trace)
    created = {**dict.fromkeys(said.get("directories", [])), **read_tree(case / "expected")}
    program.check(tmp_path, said["arguments"], outcome._replace(created=created), pipe)
