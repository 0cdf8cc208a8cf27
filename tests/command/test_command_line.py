"""The arguments: their count, the switch, and how the input directory path is split."""

import pytest
from harness import (
    CLIPPING,
    FAILED,
    FINISHED,
    SQUARE_TRACE,
    SQUARE_XML,
    START,
    reported,
    write_tree,
)

USAGE = "Usage: Veldtrim <input directory path> <output directory name> <boundary file path>"
NO_WORKSPACE = "Workspace path does not exist"
NO_INPUT = "Input directory does not exist"
OUTPUT_EXISTS = (
    "output directory already exists, aborting in order avoid overwriting of existing data"
)
SCAN = "x;y;z\n5;5;1\n0;0;2\n"
CLIPPED = {"a.xyz": "x;y;z\n5;5;1\n", "total_node_count.txt": "1\n"}


def clipped_into(directory):
    return {directory: None, **{f"{directory}/{name}": text for name, text in CLIPPED.items()}}


@pytest.mark.parametrize(
    "arguments",
    [
        [],
        ["./scans"],
        ["./scans", "clipped"],
        ["./scans", "clipped", "boundary.xml", "more"],
        ["./scans", "clipped", "boundary.xml", "-Pipe"],
        ["./scans", "clipped", "boundary.xml", "--pipe"],
        ["./scans", "clipped", "boundary.xml", "-pipe "],
        ["./scans", "clipped", "boundary.xml", "more", "-Pipe", ""],
        ["-pipe"],
        ["./scans", "clipped", "-pipe"],
        ["-pipe", "./scans", "clipped", "boundary.xml", "more"],
        ["./scans", "clipped", "boundary.xml", "-pipe", "-pipe"],
    ],
    ids=" ".join,
)
def test_wrong_count(program, tmp_path, arguments):
    write_tree(tmp_path, {"scans/a.xyz": SCAN, "boundary.xml": SQUARE_XML})
    run = program.run(tmp_path, *arguments)
    assert run.code == 1
    assert run.stdout == program.line_ends(USAGE + "\n")
    if "-pipe" in arguments:
        assert run.messages == [START, ("error", 0, USAGE), FAILED]
    else:
        expected = f"{START[2]}\nerror: {USAGE}\nfailed: {FAILED[2]}\n"
        assert run.stderr.replace(b"\r\n", b"\n").decode() == expected
    assert sorted(path.name for path in tmp_path.iterdir()) == ["boundary.xml", "scans"]


@pytest.mark.parametrize("position", range(4))
def test_switch_takes_the_place_of_a_path(program, tmp_path, position):
    """The switch is found anywhere, but it is never taken out of the list."""
    boundary = "-pipe" if position == 2 else "boundary.xml"
    write_tree(tmp_path, {"scans/a.xyz": SCAN, boundary: SQUARE_XML})
    arguments = ["./scans", "clipped", "boundary.xml", "-ignored"]
    arguments[position] = "-pipe"
    if position == 0:
        expected = dict(code=1, stdout=SQUARE_TRACE + NO_WORKSPACE + "\n")
        expected.update(messages=reported(NO_WORKSPACE))
    else:
        expected = dict(code=0, stdout=SQUARE_TRACE, messages=[START, CLIPPING, FINISHED])
        expected.update(created=clipped_into(arguments[1]))
    program.check(tmp_path, arguments, **expected)


@pytest.mark.parametrize(
    "path, output",
    [
        ("./scans", "clipped"),
        ("ws/scans", "ws/clipped"),
        ("ws/scans/", "ws/scans/clipped"),
        ("ws/scans//", "ws/scans/clipped"),
        ("ws//scans", "ws/clipped"),
        ("ws/scans/.", "ws/scans/clipped"),
        ("ws/./scans", "ws/clipped"),
        ("ws/deeper/../scans", "ws/deeper/../clipped"),
        ("scans/", "scans/clipped"),
        ("{cwd}/ws/scans", "ws/clipped"),
        ("{cwd}/ws//scans/", "ws/scans/clipped"),
    ],
)
def test_where_the_output_goes(program, tmp_path, path, output):
    write_tree(tmp_path, {"boundary.xml": SQUARE_XML, "ws/deeper": None})
    write_tree(tmp_path, {"scans/a.xyz": SCAN, "ws/scans/a.xyz": SCAN})
    program.check(
        tmp_path,
        [path.format(cwd=tmp_path.as_posix()), "clipped", "boundary.xml"],
        code=0,
        stdout=SQUARE_TRACE,
        messages=[START, CLIPPING, FINISHED],
        created=clipped_into(output.replace("deeper/../", "")),
    )


@pytest.mark.parametrize("path", ["ws\\scans", "ws\\scans\\", "ws\\\\scans", "ws/scans\\"])
def test_backslashes(program, tmp_path, path):
    """Separators on Windows, ordinary characters of a name elsewhere."""
    write_tree(tmp_path, {"boundary.xml": SQUARE_XML, "ws/scans/a.xyz": SCAN})
    if program.windows:
        output = "ws/scans/clipped" if path.endswith("\\") else "ws/clipped"
        expected = dict(code=0, stdout=SQUARE_TRACE, messages=[START, CLIPPING, FINISHED])
        expected.update(created=clipped_into(output))
    else:
        error = NO_INPUT if "/" in path else NO_WORKSPACE
        expected = dict(code=1, stdout=f"{SQUARE_TRACE}{error}\n", messages=reported(error))
    program.check(tmp_path, [path, "clipped", "boundary.xml"], **expected)


@pytest.mark.parametrize("output", ["deeper/clipped", "/clipped", "a b", "-p", "clipped.txt"])
def test_odd_output_names(program, tmp_path, output):
    """The name is joined to the workspace, whatever it is."""
    write_tree(tmp_path, {"boundary.xml": SQUARE_XML, "ws/scans/a.xyz": SCAN, "ws/deeper": None})
    program.check(
        tmp_path,
        ["ws/scans", output, "boundary.xml"],
        code=0,
        stdout=SQUARE_TRACE,
        messages=[START, CLIPPING, FINISHED],
        created=clipped_into("ws/" + output.lstrip("/")),
    )


@pytest.mark.parametrize(
    "path, output, error",
    [
        ("scans", "clipped", NO_WORKSPACE),
        ("", "clipped", NO_WORKSPACE),
        ("missing/scans", "clipped", NO_WORKSPACE),
        ("boundary.xml/scans", "clipped", NO_WORKSPACE),
        ("./missing", "clipped", NO_INPUT),
        ("./boundary.xml", "clipped", NO_INPUT),
        ("./missing", "old", NO_INPUT),
        ("./scans", "old", OUTPUT_EXISTS),
        ("./scans", "old/", OUTPUT_EXISTS),
        ("./scans", "scans", OUTPUT_EXISTS),
        ("./scans", ".", OUTPUT_EXISTS),
        ("./scans", "..", OUTPUT_EXISTS),
        ("./scans", "", OUTPUT_EXISTS),
    ],
)
def test_refused_before_anything_is_written(program, tmp_path, path, output, error):
    tree = {"scans/a.xyz": SCAN, "old/a.xyz": "kept", "old/more/b": "", "boundary.xml": SQUARE_XML}
    write_tree(tmp_path, tree)
    program.check(
        tmp_path,
        [path, output, "boundary.xml"],
        code=1,
        stdout=f"{SQUARE_TRACE}{error}\n",
        messages=reported(error),
    )


@pytest.mark.parametrize("output", ["file", "missing/clipped"])
def test_output_directory_cannot_be_created(program, tmp_path, output):
    """The system's words go into the error message alone, and nothing changes."""
    write_tree(tmp_path, {"scans/a.xyz": SCAN, "file": "kept", "boundary.xml": SQUARE_XML})
    arguments = ["./scans", output, "boundary.xml"]
    run = program.check(tmp_path, arguments, code=1, stdout=SQUARE_TRACE, messages=None)
    assert [message[:2] for message in run.messages] == [START[:2], ("error", 0), FAILED[:2]]
    assert output in run.messages[1][2] and run.messages[2] == FAILED
