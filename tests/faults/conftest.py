"""The options and the harness of the command tests serve here too."""

import importlib.util
import os
import subprocess
import sys
from pathlib import Path

import pytest

COMMAND = Path(__file__).parent.parent / "command"
sys.path.insert(0, str(COMMAND))
module = importlib.util.spec_from_file_location("command_conftest", COMMAND / "conftest.py")
command = importlib.util.module_from_spec(module)
module.loader.exec_module(command)

pytest_addoption = command.pytest_addoption
pytest_configure = command.pytest_configure
pytest_collection_modifyitems = command.pytest_collection_modifyitems
program = command.program


@pytest.fixture
def small_disk(tmp_path):
    """A file system in memory of 256 KiB, mounted for the test."""
    disk = tmp_path / "disk"
    disk.mkdir()
    mount = ["mount", "-t", "tmpfs", "-o", "size=256k", "veldtrim-test", disk]
    if os.geteuid() != 0 or subprocess.run(mount, capture_output=True).returncode != 0:
        pytest.skip("mounting a small disk needs privileges")
    yield disk
    subprocess.run(["umount", disk], check=True)
