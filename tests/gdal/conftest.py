"""Runs the programs of GDAL with the driver that was built."""

import os
import subprocess

import pytest

PLUGINS = os.environ["VELDTRIM_GDAL_PLUGINS"]


class Gdal:
    def __init__(self, directory):
        self.directory = directory
        self.environment = {**os.environ, "GDAL_DRIVER_PATH": PLUGINS}

    def run(self, *command, code=0, **options):
        """What the program prints, and what it says besides."""
        options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **options}
        done = subprocess.run([*map(str, command)], cwd=self.directory, env=self.environment,
                              timeout=120, **options)
        assert done.returncode == code, done.stderr.decode()
        return (done.stdout or b"").decode(), done.stderr.decode()

    def write(self, target, source, *options, code=0):
        """Writes a boundary file. Returns what ogr2ogr says; nothing else may come to be than the
        target, which must come to be unless the write fails."""
        before = set(self.directory.iterdir())
        path = self.directory / target
        existed = os.path.lexists(path)
        printed, said = self.run("ogr2ogr", "-f", "Veldtrim", *options, target, source, code=code)
        assert printed == ""
        assert set(self.directory.iterdir()) - before <= {path}
        assert os.path.lexists(path) == (code == 0 or existed)
        return said


@pytest.fixture
def gdal(tmp_path):
    return Gdal(tmp_path)
