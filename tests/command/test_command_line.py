"""The arguments: their count, the switch, and how the input directory path is split."""

import pytest
from harness import (
    ARGUMENTS, KEPT, NO_INPUT, NO_WORKSPACE, OUTPUT_EXISTS, SCAN, SQUARE_XML, SYSTEM_ERROR,
    Outcome, clips, fails, messages, write_tree
)

USAGE = "Usage: Veldtrim <input directory path> <output directory name> <boundary file path>"
WRONG = Outcome(1, USAGE + "\n", messages(errors=[("error", 0, USAGE)]), {})


@pytest.fixture
def workspace(workspace):
    write_tree(workspace, {"ws/scans/a.xyz": SCAN, "ws/deeper/a": "", "file": "kept"})
    return workspace


def clips_into(output):
    return clips({"a.xyz": KEPT}, output=output)


@pytest.mark.parametrize(
    "arguments, pipe",
    [
        ([], ""),
        (ARGUMENTS[:2], ""),
        ([*ARGUMENTS, "-Pipe"], ""),
        ([*ARGUMENTS, "-pipe ", ""], ""),
        (["-pipe"], "-pipe"),
        (["-pipe", *ARGUMENTS[:2]], "-pipe"),
        (["a", *ARGUMENTS, "-pipe"], "-pipe"),
        (["-pipe", *ARGUMENTS, "-pipe"], "-pipe"),
    ],
)
def test_wrong_count(program, workspace, arguments, pipe):
    program.check(workspace, arguments, WRONG, pipe)


@pytest.mark.parametrize(
    "arguments, outcome",
    [
        (["-pipe", "clipped", "boundary.xml", "ignored"], fails(NO_WORKSPACE)),
        (["./scans", "-pipe", "boundary.xml", "ignored"], clips_into("-pipe")),
        (["./scans", "clipped", "-pipe", "ignored"], clips_into("clipped")),
    ],
)
def test_switch_takes_the_place_of_a_path(program, workspace, arguments, outcome):
    """The switch is found anywhere, but it is never taken out of the list."""
    if arguments[2] == "-pipe":
        write_tree(workspace, {"-pipe": SQUARE_XML})
    program.check(workspace, arguments, outcome)


@pytest.mark.parametrize(
    "path, name, outcome",
    [
        ("./scans", "clipped", clips_into("clipped")),
        ("ws/scans", "clipped", clips_into("ws/clipped")),
        ("ws/scans//", "clipped", clips_into("ws/scans/clipped")),
        ("ws//scans", "clipped", clips_into("ws/clipped")),
        ("ws/scans/.", "clipped", clips_into("ws/scans/clipped")),
        ("ws/deeper/../scans", "clipped", clips_into("ws/clipped")),
        ("{cwd}/ws/scans", "clipped", clips_into("ws/clipped")),
        ("{cwd}/ws//scans/", "clipped", clips_into("ws/scans/clipped")),
        ("ws/scans", "deeper/clipped", clips_into("ws/deeper/clipped")),
        ("ws/scans", "/clipped", clips_into("ws/clipped")),
        ("ws/scans", "a b.txt", clips_into("ws/a b.txt")),
        ("scans", "clipped", fails(NO_WORKSPACE)),
        ("", "clipped", fails(NO_WORKSPACE)),
        ("missing/scans", "clipped", fails(NO_WORKSPACE)),
        ("file/scans", "clipped", fails(NO_WORKSPACE)),
        ("./file", "clipped", fails(NO_INPUT)),
        ("./sc*s", "clipped", fails(NO_INPUT)),  # nothing expands a pattern
        ("./missing", "ws", fails(NO_INPUT)),
        ("./scans", "ws/", fails(OUTPUT_EXISTS)),
        ("./scans", "scans", fails(OUTPUT_EXISTS)),
        ("./scans", "..", fails(OUTPUT_EXISTS)),
        ("./scans", "", fails(OUTPUT_EXISTS)),
        ("./scans", "file", fails(SYSTEM_ERROR)),
        ("./scans", "missing/clipped", fails(SYSTEM_ERROR)),
    ],
)
def test_paths(program, workspace, path, name, outcome):
    arguments = [path.format(cwd=workspace.as_posix()), name, "boundary.xml"]
    run = program.check(workspace, arguments, outcome)
    assert SYSTEM_ERROR not in outcome.messages or name in run.messages[-2][2]


@pytest.mark.parametrize("path", ["ws\\scans", "ws\\scans\\", "ws\\\\scans", "ws/scans\\"])
def test_backslashes(program, workspace, path):
    """Separators on Windows, ordinary characters of a name elsewhere."""
    if program.windows:
        outcome = clips_into("ws/scans/clipped" if path.endswith("\\") else "ws/clipped")
    else:
        outcome = fails(NO_INPUT if "/" in path else NO_WORKSPACE)
    program.check(workspace, [path, "clipped", "boundary.xml"], outcome)
