"""The files that are measured on: written when they are first asked for."""

import os

from . import shapes
from .build import say
from .runner import remove


def write(path, blocks):
    """Writes the blocks of a file; returns its path."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path + ".part", "wb") as file:
        file.writelines(blocks)
    os.replace(path + ".part", path)
    return path


class Inputs:
    """Files in `directory`, kept for the next time, and in `scratch`, gone with the run."""

    def __init__(self, directory, scratch):
        self.directory = directory
        self.scratch = scratch

    def _kept(self, name, form, *content):
        path = os.path.join(self.directory, name)
        if not os.path.exists(path):
            say(f"generating {name}")
            write(path, form(*content))
        return path

    def records(self, count):
        """The path of a file of random records, the only one in its directory."""
        return self._kept(f"records-{count}/scan.txt", shapes.records, count)

    def boundary(self, shape):
        return self._kept(f"{shape}.xml", shapes.boundary_file, shape)

    def table(self, shape):
        """The rings of a shape as plain rows of coordinates."""
        return self._kept(f"{shape}.table", shapes.table_of_points, shape)

    def workspace(self, name, boundary, scans):
        """A boundary file and a directory of scans, from their blocks; gone with the run, or with
        drop_workspaces. Returns the two paths."""
        root = os.path.join(self.scratch, "workspaces", name)
        for scan, blocks in scans.items():
            write(os.path.join(root, "scans", scan), blocks)
        return os.path.join(root, "scans"), write(os.path.join(root, "boundary.xml"), boundary)

    def drop_workspaces(self):
        remove(os.path.join(self.scratch, "workspaces"))

    def output(self, name):
        return os.path.join(self.scratch, name)
