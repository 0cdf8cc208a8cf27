import os
import shlex

import pytest

pytest.register_assert_rewrite("harness")  # its failures say what differs

from harness import Program  # noqa: E402


def pytest_addoption(parser):
    parser.addoption(
        "--program",
        default=os.environ.get("VELDTRIM_PROGRAM"),
        help="the program under test (or VELDTRIM_PROGRAM)",
    )
    parser.addoption(
        "--emulator",
        default=os.environ.get("VELDTRIM_EMULATOR", ""),
        help="command that runs the program where the system cannot (or VELDTRIM_EMULATOR)",
    )
    parser.addoption(
        "--inspector",
        default=os.environ.get("VELDTRIM_INSPECTOR"),
        help="veldtrim-inspect, held against every run where it is named (or VELDTRIM_INSPECTOR)",
    )
    parser.addoption(
        "--eol",
        choices=("lf", "crlf"),
        default=os.environ.get("VELDTRIM_EOL", "lf"),
        help="the line end of the program's platform; crlf stands for Windows (or VELDTRIM_EOL)",
    )


def pytest_configure(config):
    config.addinivalue_line("markers", "posix: needs links, signals or names of a POSIX system")
    config.addinivalue_line("markers", "windows: needs drives, devices or names of Windows")


def pytest_collection_modifyitems(config, items):
    windows = config.getoption("eol") == "crlf"
    for item in items:
        if item.get_closest_marker("posix" if windows else "windows"):
            item.add_marker(pytest.mark.skip(reason="for another platform"))


@pytest.fixture(scope="session")
def program(pytestconfig):
    path = pytestconfig.getoption("program")
    if not path:
        pytest.exit("name the program under test with --program or VELDTRIM_PROGRAM", 2)
    emulator = shlex.split(pytestconfig.getoption("emulator"))
    inspector = pytestconfig.getoption("inspector")
    return Program(
        os.path.abspath(path),
        emulator,
        pytestconfig.getoption("eol"),
        os.path.abspath(inspector) if inspector else None,
    )
