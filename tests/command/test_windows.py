"""Paths as only Windows has them: drives, shares, devices, names in any case."""

import os

import pytest
from harness import (
    ARGUMENTS, KEPT, NO_INPUT, NO_WORKSPACE, OUTPUT_EXISTS, SCAN, SYSTEM_ERROR,
    boundary_not_found, clips, fails, read_tree, write_tree
)

pytestmark = pytest.mark.windows
BESIDE = clips({"a.xyz": KEPT}, output="clipped")
INSIDE = clips({"a.xyz": KEPT}, output="scans/clipped")


@pytest.fixture
def places(workspace):
    """The drive of the workspace, and its path there. An emulator shows the root as drive Z."""
    drive, path = os.path.splitdrive(workspace) if os.name == "nt" else ("Z:", str(workspace))
    path = path.replace("/", "\\")
    return {"drive": drive, "path": path, "slashes": path.replace("\\", "/"), "letter": drive[0]}


@pytest.mark.parametrize(
    "path, name, outcome",
    [
        ("{drive}{path}\\scans", "clipped", BESIDE),
        ("{drive}{path}\\scans\\", "clipped", INSIDE),
        ("{drive}{path}\\\\scans", "clipped", BESIDE),
        ("{drive}{slashes}/.\\scans", "clipped", BESIDE),
        ("{path}\\scans", "clipped", BESIDE),
        ("{drive}scans", "clipped", BESIDE),
        ("{drive}.\\SCANS", "clipped", BESIDE),
        ("\\\\localhost\\{letter}${path}\\scans", "clipped", BESIDE),
        ("\\\\localhost\\{letter}${path}\\scans\\", "clipped", INSIDE),
        ("//localhost/{letter}${slashes}/scans", "clipped", BESIDE),
        ("\\\\?\\{drive}{path}\\scans", "clipped", BESIDE),
        ("{letter}:", "clipped", fails(NO_WORKSPACE)),
        ("\\\\localhost\\none\\scans", "clipped", fails(NO_WORKSPACE)),
        ("nul\\scans", "clipped", fails(NO_WORKSPACE)),
        ("con", "clipped", fails(NO_WORKSPACE)),
        (".\\nul", "clipped", fails(NO_INPUT)),
        (".\\con", "clipped", fails(NO_INPUT)),
        (".\\scans", "SCANS", fails(OUTPUT_EXISTS)),
        (".\\scans", "scans\\", fails(OUTPUT_EXISTS)),
    ],
)
def test_paths(program, workspace, places, path, name, outcome):
    boundary = f"{places['drive']}{places['path']}\\Boundary.XML"
    program.check(workspace, [path.format(**places), name, boundary], outcome)


@pytest.mark.parametrize("output", ["nul", "NUL.txt", "con", "aux", "a?b", 'a"b', "a|b"])
def test_output_directory_that_cannot_be(program, workspace, output):
    """Names of devices, and names that no file has: the error names the path."""
    run = program.check(workspace, ["scans\\", output, "boundary.xml"], fails(SYSTEM_ERROR))
    assert f"scans/{output}" in run.messages[-2][2].replace("\\", "/")


@pytest.mark.parametrize("path", ["nul", "con", "CON.xml", "conin$", "\\\\.\\nul", "scans"])
def test_boundary_file_that_is_none(program, workspace, path):
    """Above all, nobody waits for input from a console."""
    program.check(workspace, [".\\scans", "clipped", path], boundary_not_found(path))


@pytest.mark.skipif(os.name == "nt", reason="the system does not let such files be made")
def test_scans_with_names_of_devices(program, workspace):
    """A share of another system may hold them."""
    names = ["con.txt", "nul.xyz", "aux.node"]
    write_tree(workspace / "scans", dict.fromkeys(names, SCAN))
    run = program.run(workspace, *ARGUMENTS, "-pipe")
    said = [text.replace("\\", "/") for _, _, text in run.messages]
    for name in names:  # the reason depends on whether there is a console
        start = f"Skipping input file ./scans/{name}: it cannot be read: "
        assert [text.startswith(start) for text in said].count(True) == 1, said
    assert run.code == 0
    assert read_tree(workspace / "clipped").keys() == {"a.xyz", "total_node_count.txt"}
