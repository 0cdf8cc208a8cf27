"""Paths as only Windows has them: drives, shares, devices, names in any case."""

import os

import pytest
from harness import (
    CLIPPING,
    FAILED,
    FINISHED,
    NO_HEADER,
    SQUARE_TRACE,
    SQUARE_XML,
    START,
    reported,
    skipped,
    write_tree,
)

pytestmark = pytest.mark.windows
SCAN = "x;y;z\n5;5;1\n9;9;2\n"
NO_WORKSPACE = "Workspace path does not exist"
NO_INPUT = "Input directory does not exist"
OUTPUT_EXISTS = (
    "output directory already exists, aborting in order avoid overwriting of existing data"
)


def clipped(directory):
    return {
        directory: None,
        f"{directory}/a.xyz": "x;y;z\n5;5;1\n",
        f"{directory}/total_node_count.txt": "1\n",
    }


@pytest.fixture
def workspace(tmp_path):
    write_tree(tmp_path, {"ws/scans/a.xyz": SCAN, "boundary.xml": SQUARE_XML})
    return tmp_path


@pytest.fixture
def places(workspace):
    """The drive of the workspace, and its path there. An emulator shows the root as drive Z."""
    drive, path = os.path.splitdrive(workspace) if os.name == "nt" else ("Z:", str(workspace))
    path = path.replace("/", "\\")
    return {"drive": drive, "path": path, "slashes": path.replace("\\", "/"), "letter": drive[0]}


@pytest.mark.parametrize(
    "form, output",
    [
        ("{drive}{path}\\ws\\scans", "ws/clipped"),
        ("{drive}{path}\\ws\\scans\\", "ws/scans/clipped"),
        ("{drive}{path}\\ws\\\\scans", "ws/clipped"),
        ("{drive}{slashes}/ws\\scans", "ws/clipped"),
        ("{path}\\ws\\scans", "ws/clipped"),
        ("{drive}ws\\scans", "ws/clipped"),
        ("{drive}.\\WS/Scans", "ws/clipped"),
        ("\\\\localhost\\{letter}${path}\\ws\\scans", "ws/clipped"),
        ("\\\\localhost\\{letter}${path}\\ws\\scans\\", "ws/scans/clipped"),
        ("//localhost/{letter}${slashes}/ws/scans", "ws/clipped"),
        ("\\\\?\\{drive}{path}\\ws\\scans", "ws/clipped"),
    ],
)
def test_where_paths_lead(program, workspace, places, form, output):
    path = form.format(**places)
    boundary = f"{places['drive']}{places['path']}\\Boundary.XML"
    program.check(
        workspace,
        [path, "clipped", boundary],
        code=0,
        stdout=SQUARE_TRACE,
        messages=[START, CLIPPING, FINISHED],
        created=clipped(output),
    )


@pytest.mark.parametrize(
    "path, output, error",
    [
        ("{letter}:", "clipped", NO_WORKSPACE),
        ("\\\\localhost\\none\\scans", "clipped", NO_WORKSPACE),
        ("nul\\scans", "clipped", NO_WORKSPACE),
        ("con", "clipped", NO_WORKSPACE),
        ("ws\\nul", "clipped", NO_INPUT),
        ("ws\\con", "clipped", NO_INPUT),
        ("ws\\scans", "SCANS", OUTPUT_EXISTS),
        ("ws\\scans", "scans\\", OUTPUT_EXISTS),
    ],
)
def test_refused_before_anything_is_written(program, workspace, places, path, output, error):
    program.check(
        workspace,
        [path.format(**places), output, "boundary.xml"],
        code=1,
        stdout=f"{SQUARE_TRACE}{error}\n",
        messages=reported(error),
    )


@pytest.mark.parametrize("output", ["nul", "NUL.txt", "con", "aux", "a?b", 'a"b', "a|b"])
def test_output_directory_that_cannot_be(program, workspace, output):
    """Names of devices, and names that no file has: the error names the path."""
    run = program.check(
        workspace,
        ["ws\\scans", output, "boundary.xml"],
        code=1,
        stdout=SQUARE_TRACE,
        messages=None,
    )
    assert [message[:2] for message in run.messages] == [START[:2], ("error", 0), FAILED[:2]]
    assert f"ws/{output}" in run.messages[1][2]


@pytest.mark.parametrize("path", ["nul", "con", "CON.xml", "conin$", "\\\\.\\nul", "ws"])
def test_boundary_file_that_is_none(program, workspace, path):
    """Above all, nobody waits for input from a console."""
    text = f"Boundary file named {path} not found"
    given_up = "boundary file does not exist"
    program.check(
        workspace,
        ["ws\\scans", "clipped", path],
        code=1,
        stdout=f"[readin_b_XML:]\n{text}\n{given_up}\n",
        messages=[START, ("error", 1, text.replace("\\", "/")), ("error", 2, given_up), FAILED],
    )


@pytest.mark.skipif(os.name == "nt", reason="the system does not let such files be made")
def test_scans_with_names_of_devices(program, workspace):
    """A share of another system may hold them."""
    names = ["con.txt", "nul.xyz", "aux.node"]
    write_tree(workspace, {f"ws/scans/{name}": SCAN for name in names})
    program.check(
        workspace,
        ["ws\\scans", "clipped", "boundary.xml"],
        code=0,
        stdout=SQUARE_TRACE,
        messages=[
            START,
            *[skipped(f"ws/scans/{name}", NO_HEADER) for name in names],
            CLIPPING,
            FINISHED,
        ],
        created=clipped("ws/clipped"),
    )
