"""The files that are measured on. The same names stand for the same bytes, on every machine."""

import os
import shutil
import subprocess

from .timing import say


class Data:
    """Generates a file when it is first asked for; the small ones are kept for the next time."""

    def __init__(self, directory, scratch, build):
        self.directory = directory
        self.scratch = scratch
        self.build = build

    def _generate(self, kind, which, path):
        if not os.path.exists(path):
            say(f"generating {kind} {which}")
            os.makedirs(os.path.dirname(path), exist_ok=True)
            command = [self.build.tool("generate"), kind, str(which), path + ".part"]
            subprocess.run(command, check=True)
            os.replace(path + ".part", path)
        return path

    def records(self, count):
        """The path of a file of random records, the only one in its directory."""
        path = os.path.join(self.directory, f"records-{count}", "scan.txt")
        return self._generate("records", count, path)

    def passing_records(self, count):
        """The same, gone with the run: for files too large to keep."""
        path = os.path.join(self.scratch, f"records-{count}", "scan.txt")
        return self._generate("records", count, path)

    def boundary(self, shape):
        return self._generate("boundary", shape, os.path.join(self.directory, f"{shape}.xml"))

    def table(self, shape):
        """The polygons of a shape as plain rows of coordinates."""
        return self._generate("table", shape, os.path.join(self.directory, f"{shape}.table"))

    def square(self):
        """West, south, east and north of the shape `square`."""
        with open(self.table("square")) as file:
            corners = [line.split() for line in file if not line.startswith(">")]
        return [*corners[0], *corners[2]]

    def output(self, name):
        """The path of an output file, which is not there."""
        path = os.path.join(self.scratch, name)
        remove_file(path)
        return path

    def clip_command(self, records, shape):
        """The command that clips a file of `records` to a shape, and its output directory, which
        is not there."""
        source = os.path.dirname(records)
        # The program puts its output beside its input, which may be among the files to keep.
        inputs = os.path.join(self.scratch, os.path.basename(source))
        if not os.path.exists(inputs):
            os.symlink(os.path.abspath(source), inputs)
        output = os.path.join(self.scratch, "clipped")
        remove_tree(output)
        command = [self.build.program, inputs, os.path.basename(output), self.boundary(shape)]
        return command, output


def remove_file(path):
    if os.path.exists(path):
        os.remove(path)


def remove_tree(path):
    shutil.rmtree(path, ignore_errors=True)
