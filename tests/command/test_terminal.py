"""What a person sees at a terminal while the program runs, and a host that shows its progress."""

import os
import select
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

import pytest
from harness import CLIPPING, FINISHED, SQUARE_XML, START, plain_lines, write_tree

EXAMPLES = Path(__file__).parents[2] / "examples"
TEXTS = plain_lines([START, CLIPPING, FINISHED])


class Screen:
    """A terminal that knows carriage return and line feed, and rejects other control characters."""

    def __init__(self, columns):
        self.columns = columns
        self.lines = [""]
        self.column = 0
        self.history = []  # of the last line, at every carriage return and at the end

    def resize(self, columns):
        """What does not fit any more is cut off, as terminals do that do not wrap anew."""
        self.columns = columns
        self.lines = [line[:columns] for line in self.lines]

    def take(self, text):
        for character in text:
            if character == "\r":
                self.history.append(self.lines[-1])
                self.column = 0
            elif character == "\n":
                self.lines.append("")
                self.column = 0
            else:
                assert character.isprintable(), repr(character)
                line = self.lines[-1].ljust(self.column)
                self.lines[-1] = line[: self.column] + character + line[self.column + 1 :]
                self.column += 1
                assert "%" not in self.lines[-1] or self.column <= self.columns, "wrapped"


def readable(descriptor):
    return bool(select.select([descriptor], [], [], 0)[0])


def run_in_terminal(program, directory, columns, arguments, resize_to=None):
    """Runs with standard error at a terminal; the process is stopped for the change of width."""
    import fcntl
    import pty
    import struct
    import termios

    def set_width(width):
        fcntl.ioctl(inner, termios.TIOCSWINSZ, struct.pack("HHHH", 24, width, 0, 0))

    outer, inner = pty.openpty()
    set_width(columns)
    screen = Screen(columns)
    begun = time.monotonic()
    process = subprocess.Popen(
        [*program.command, *arguments], cwd=directory, stdout=subprocess.DEVNULL, stderr=inner
    )
    try:
        while True:
            if resize_to and any("%" in line for line in screen.history):
                process.send_signal(signal.SIGSTOP)
                time.sleep(0.05)
                screen.take(os.read(outer, 65536).decode("ascii") if readable(outer) else "")
                set_width(resize_to)
                screen.resize(resize_to)
                resize_to = None
                process.send_signal(signal.SIGCONT)
            if inner is not None and process.poll() is not None:
                os.close(inner)
                inner = None
            if not readable(outer):
                if inner is None:
                    break
                time.sleep(0.005)
                continue
            try:
                screen.take(os.read(outer, 65536).decode("ascii"))
            except OSError:  # the other side is closed
                break
    finally:
        process.kill()
        code = process.wait()
        os.close(outer)
    screen.history.append(screen.lines[-1])
    return code, screen, time.monotonic() - begun


@pytest.fixture
def long_run(tmp_path):
    write_tree(
        tmp_path,
        {"scans/points.xyz": b"x;y;z\n" + b"5;5;1\n" * 3_000_000, "boundary.xml": SQUARE_XML},
    )
    return ["./scans", "clipped", "boundary.xml"]


@pytest.mark.posix
@pytest.mark.parametrize("columns, resize_to", [(80, None), (40, None), (80, 40), (40, 80)])
def test_terminal(program, tmp_path, long_run, columns, resize_to):
    code, screen, seconds = run_in_terminal(program, tmp_path, columns, long_run, resize_to)
    drawn = [line.rstrip() for line in screen.history if "%" in line]
    assert code == 0
    assert len(drawn) >= 2
    # Each drawing is seen twice at most: at its own end, and before it is erased.
    assert len(set(drawn)) <= seconds * 10 + 2
    width = resize_to or columns
    assert all(line.startswith("[") for line in drawn)
    last = drawn[-1]
    assert len(last) < width
    assert ("records/s" in last and last.endswith("left")) if width == 80 else "/s  0:0" in last
    # Nothing of the bar is left; the texts stand as they would without it.
    assert [line.rstrip() for line in screen.lines] == TEXTS


def test_no_bar_into_a_file(program, tmp_path, long_run):
    with open(tmp_path / "messages", "wb") as messages:
        assert program.run(tmp_path, *long_run, stderr=messages).code == 0
    text = (tmp_path / "messages").read_text()
    assert text.split("\n") == TEXTS


@pytest.mark.posix
def test_host_program(program, tmp_path):
    """The host of the examples, on the example's own workspace."""
    shutil.copytree(EXAMPLES / "jacksboro", tmp_path / "jacksboro")
    host = [sys.executable, EXAMPLES / "host.py", *program.command[-1:]]
    arguments = ["jacksboro/scans", "clipped", "jacksboro/boundary.xml"]

    def run():
        return subprocess.run(
            [*host, *arguments], cwd=tmp_path, capture_output=True, text=True, timeout=60
        )

    first = run()
    assert (first.returncode, first.stderr) == (0, "")
    assert "100.0 %" in first.stdout
    assert first.stdout.rstrip().endswith(f"finish: {FINISHED[2]}")
    second = run()
    assert second.returncode == 1
    assert "error: output directory already exists" in second.stdout
