"""Runs veldtrim-boundary, and reads what it writes by other means than the program."""

import json
import subprocess
from typing import NamedTuple

import pytest


class Conversion(NamedTuple):
    code: int
    said: str
    written: bytes  # the target, or None


class Converter:
    def __init__(self, command, directory):
        self.command = command
        self.directory = directory

    def run(self, *arguments, **how):
        return subprocess.run([*self.command, *arguments], cwd=self.directory, timeout=120,
                              capture_output=True, **how)

    def convert(self, what, source, *options):
        """Writes the source, converts it, and checks that nothing else comes to be."""
        before = set(self.directory.iterdir())
        names = {"import": ("m.json", "b.xml"), "export": ("b.xml", "m.json")}[what]
        paths = [self.directory / name for name in names]
        text = source if isinstance(source, (str, bytes)) else json.dumps(source)
        paths[0].write_bytes(text.encode() if isinstance(text, str) else text)
        run = self.run(what, *names, *options)
        assert set(self.directory.iterdir()) - before <= set(paths)
        written = paths[1].read_bytes() if paths[1].exists() else None
        for path in paths:
            path.unlink(missing_ok=True)
        assert (run.returncode == 0) == (written is not None)
        assert run.stdout == b""
        return Conversion(run.returncode, run.stderr.decode(errors="replace"), written)


@pytest.fixture
def boundary(converter, tmp_path):
    return Converter(converter, tmp_path)
