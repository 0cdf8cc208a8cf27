"""veldtrim-tiles, compared with one run of the program over the same workspace."""

import os
import shutil
import subprocess

import pytest
from harness import ARGUMENTS, Run, read_tree


class Tiles:
    def __init__(self, command, program, environment=None):
        self.command = command
        self.program = program
        self.environment = environment

    def start(self, directory, *arguments, **options):
        options = {"env": self.environment, **options}
        return subprocess.Popen([self.command, *map(str, arguments)], cwd=directory,
                                stdin=subprocess.DEVNULL, **options)

    def run(self, directory, *arguments, **options):
        options = {"env": self.environment, **options}
        process = subprocess.run([self.command, *map(str, arguments)], cwd=directory, timeout=120,
                                 stdin=subprocess.DEVNULL, capture_output=True, **options)
        return Run(process, "-pipe" in arguments)

    def one_run(self, directory):
        """What one run says, and the tree that it leaves, which is moved away."""
        command = [*self.program.command, *ARGUMENTS, "-pipe"]
        run = self.program.run_command(command, directory)
        tree = read_tree(directory / "clipped")
        shutil.rmtree(directory / "clipped", ignore_errors=True)
        return run, tree


@pytest.fixture(scope="session")
def tiles(pytestconfig, program):
    path = pytestconfig.getoption("tiles")
    if not path:
        pytest.exit("name veldtrim-tiles with --tiles or VELDTRIM_TILES", 2)
    if not shutil.which("parallel"):
        pytest.skip("needs GNU parallel")
    return Tiles(os.path.abspath(path), program)
