"""The program under test, for whole runs."""

import os
import shlex
import subprocess

import pytest

pytest.register_assert_rewrite("harness")  # its failures say what differs

from harness import SCAN, SQUARE_XML, Program, write_tree  # noqa: E402

OPTIONS = {
    "program": (None, "the program under test"),
    "emulator": ("", "command that runs the program where the system cannot"),
    "inspector": (None, "veldtrim-inspect, compared with every run where it is named"),
    "boundary": (None, "veldtrim-boundary, for its own tests"),
    "tiles": (None, "veldtrim-tiles, for its own tests"),
    "eol": ("lf", "the line end of the program's platform, lf or crlf; crlf stands for Windows"),
}


def pytest_addoption(parser):
    for name, (default, meaning) in OPTIONS.items():
        variable = f"VELDTRIM_{name.upper()}"
        default = os.environ.get(variable, default)
        parser.addoption(f"--{name}", default=default, help=f"{meaning} (or {variable})")


def pytest_collection_modifyitems(config, items):
    windows = config.getoption("eol") == "crlf"
    for item in items:
        if item.get_closest_marker("posix" if windows else "windows"):
            item.add_marker(pytest.mark.skip(reason="for another platform"))


@pytest.fixture(scope="session")
def program(pytestconfig):
    path, emulator, inspector, eol = map(
        pytestconfig.getoption, ("program", "emulator", "inspector", "eol")
    )
    if not path:
        pytest.exit("name the program under test with --program or VELDTRIM_PROGRAM", 2)
    inspector = inspector and os.path.abspath(inspector)
    return Program([*shlex.split(emulator), os.path.abspath(path)], eol == "crlf", inspector)


@pytest.fixture(scope="session")
def converter(pytestconfig):
    """The command line of veldtrim-boundary."""
    path, emulator = map(pytestconfig.getoption, ("boundary", "emulator"))
    if not path:
        pytest.exit("name veldtrim-boundary with --boundary or VELDTRIM_BOUNDARY", 2)
    return [*shlex.split(emulator), os.path.abspath(path)]


@pytest.fixture(scope="session")
def inspector(program):
    if not program.inspector:
        pytest.skip("veldtrim-inspect was not built")
    return program.inspector


@pytest.fixture
def workspace(tmp_path):
    """A directory with one scan, one of whose two records is kept."""
    write_tree(tmp_path, {"scans/a.xyz": SCAN, "boundary.xml": SQUARE_XML})
    return tmp_path


@pytest.fixture
def small_disk(tmp_path):
    """A directory on a file system in memory of 256 KiB."""
    disk = tmp_path / "disk"
    disk.mkdir()
    mount = ["mount", "-t", "tmpfs", "-o", "size=256k", "veldtrim-test", disk]
    if os.geteuid() != 0 or subprocess.run(mount, capture_output=True).returncode != 0:
        pytest.skip("mounting a small disk needs privileges")
    yield disk
    subprocess.run(["umount", disk], check=True)
