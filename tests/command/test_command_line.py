"""The arguments: their count, the switch, and how the input directory path is split."""

import pytest
from harness import (
    CLIPPING, FAILED, FINISHED, SQUARE_TRACE, SQUARE_XML, START, reported, write_tree
)

USAGE = "Usage: Veldtrim <input directory path> <output directory name> <boundary file path>"
NO_WORKSPACE = "Workspace path does not exist"
NO_INPUT = "Input directory does not exist"
OUTPUT_EXISTS = (
    "output directory already exists, aborting in order avoid overwriting of existing data"
)
SCAN = "x;y;z\n5;5;1\n0;0;2\n"
PATHS = ["./scans", "clipped", "boundary.xml"]


@pytest.fixture
def workspace(tmp_path):
    write_tree(tmp_path, {"boundary.xml": SQUARE_XML, "-pipe": SQUARE_XML, "file": "kept"})
    write_tree(tmp_path, {"scans/a.xyz": SCAN, "ws/scans/a.xyz": SCAN, "ws/deeper/a": ""})
    return tmp_path


def assert_clips(program, directory, arguments, output):
    files = {f"{output}/a.xyz": "x;y;z\n5;5;1\n", f"{output}/total_node_count.txt": "1\n"}
    program.check(
        directory,
        arguments,
        code=0,
        stdout=SQUARE_TRACE,
        messages=[START, CLIPPING, FINISHED],
        created={output: None, **files},
    )


def assert_refused(program, directory, arguments, error):
    stdout = f"{SQUARE_TRACE}{error}\n"
    program.check(directory, arguments, code=1, stdout=stdout, messages=reported(error))


@pytest.mark.parametrize("arguments", [[], PATHS[:2], [*PATHS, "-Pipe"], [*PATHS, "-pipe ", ""]])
def test_wrong_count(program, workspace, arguments):
    run = program.run(workspace, *arguments)
    assert (run.code, run.stdout) == (1, program.line_ends(USAGE + "\n"))
    expected = f"{START[2]}\nerror: {USAGE}\nfailed: {FAILED[2]}\n"
    assert run.stderr.replace(b"\r\n", b"\n").decode() == expected


@pytest.mark.parametrize("arguments", [[], PATHS[:2], ["a", *PATHS], [*PATHS, "-pipe"]])
def test_wrong_count_with_the_switch(program, workspace, arguments):
    messages = [START, ("error", 0, USAGE), FAILED]
    arguments = ["-pipe", *arguments]
    program.check(workspace, arguments, code=1, stdout=USAGE + "\n", messages=messages)


@pytest.mark.parametrize("position", range(4))
def test_switch_takes_the_place_of_a_path(program, workspace, position):
    """The switch is found anywhere, but it is never taken out of the list."""
    arguments = [*PATHS, "-ignored"]
    arguments[position] = "-pipe"
    if position == 0:
        assert_refused(program, workspace, arguments, NO_WORKSPACE)
    else:
        (workspace / "-pipe").rename(workspace / ("-pipe" if position == 2 else "other"))
        assert_clips(program, workspace, arguments, arguments[1])


@pytest.mark.parametrize(
    "path, name, output",
    [
        ("./scans", "clipped", "clipped"),
        ("ws/scans", "clipped", "ws/clipped"),
        ("ws/scans//", "clipped", "ws/scans/clipped"),
        ("ws//scans", "clipped", "ws/clipped"),
        ("ws/scans/.", "clipped", "ws/scans/clipped"),
        ("ws/deeper/../scans", "clipped", "ws/clipped"),
        ("{cwd}/ws/scans", "clipped", "ws/clipped"),
        ("{cwd}/ws//scans/", "clipped", "ws/scans/clipped"),
        ("ws/scans", "deeper/clipped", "ws/deeper/clipped"),
        ("ws/scans", "/clipped", "ws/clipped"),
        ("ws/scans", "a b.txt", "ws/a b.txt"),
    ],
)
def test_where_the_output_goes(program, workspace, path, name, output):
    arguments = [path.format(cwd=workspace.as_posix()), name, "boundary.xml"]
    assert_clips(program, workspace, arguments, output)


@pytest.mark.parametrize("path", ["ws\\scans", "ws\\scans\\", "ws\\\\scans", "ws/scans\\"])
def test_backslashes(program, workspace, path):
    """Separators on Windows, ordinary characters of a name elsewhere."""
    arguments = [path, "clipped", "boundary.xml"]
    if program.windows:
        output = "ws/scans/clipped" if path.endswith("\\") else "ws/clipped"
        assert_clips(program, workspace, arguments, output)
    else:
        error = NO_INPUT if "/" in path else NO_WORKSPACE
        assert_refused(program, workspace, arguments, error)


@pytest.mark.parametrize(
    "path, output, error",
    [
        ("scans", "clipped", NO_WORKSPACE),
        ("", "clipped", NO_WORKSPACE),
        ("missing/scans", "clipped", NO_WORKSPACE),
        ("file/scans", "clipped", NO_WORKSPACE),
        ("./file", "clipped", NO_INPUT),
        ("./missing", "ws", NO_INPUT),
        ("./scans", "ws/", OUTPUT_EXISTS),
        ("./scans", "scans", OUTPUT_EXISTS),
        ("./scans", "..", OUTPUT_EXISTS),
        ("./scans", "", OUTPUT_EXISTS),
    ],
)
def test_refused_before_anything_is_written(program, workspace, path, output, error):
    assert_refused(program, workspace, [path, output, "boundary.xml"], error)


@pytest.mark.parametrize("output", ["file", "missing/clipped"])
def test_output_directory_cannot_be_created(program, workspace, output):
    """The system's words go into the error message alone, and nothing changes."""
    arguments = ["./scans", output, "boundary.xml"]
    run = program.check(workspace, arguments, code=1, stdout=SQUARE_TRACE, messages=None)
    assert [message[:2] for message in run.messages] == [START[:2], ("error", 0), FAILED[:2]]
    assert output in run.messages[1][2] and run.messages[2] == FAILED
