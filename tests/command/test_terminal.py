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
from harness import ARGUMENTS, as_lines, messages, write_tree

EXAMPLES = Path(__file__).parents[2] / "examples"
TEXTS = [line for line, in as_lines(messages(clipped=1))] + [""]


class Screen:
    """A terminal that knows carriage return and line feed, and rejects other control characters."""

    def __init__(self, columns):
        self.columns = columns
        self.lines = [""]
        self.column = 0
        self.history = []  # of the last line, at every carriage return

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
                self.lines[-1] = line[: self.column] + character + line[self.column + 1:]
                self.column += 1
                assert "%" not in self.lines[-1] or self.column <= self.columns, "wrapped"

    def bars(self):
        return [line.rstrip() for line in self.history if "%" in line]


def run_in_terminal(command, directory, columns, resize_to):
    """Runs with standard error at a terminal, which changes its width at the first bar."""
    termios = pytest.importorskip("termios")
    outer, inner = os.openpty()
    termios.tcsetwinsize(outer, (24, columns))
    screen = Screen(columns)
    process = subprocess.Popen(command, cwd=directory, stdout=subprocess.DEVNULL, stderr=inner)
    os.close(inner)
    try:
        while True:
            screen.take(os.read(outer, 65536).decode("ascii"))
            if screen.bars() and screen.columns != resize_to:
                process.send_signal(signal.SIGSTOP)
                while select.select([outer], [], [], 0.05)[0]:
                    screen.take(os.read(outer, 65536).decode("ascii"))
                termios.tcsetwinsize(outer, (24, resize_to))
                screen.resize(resize_to)
                process.send_signal(signal.SIGCONT)
    except OSError:  # the program has closed its side
        return process.wait(60), screen
    finally:
        process.kill()
        os.close(outer)


@pytest.fixture
def long_run(workspace):
    write_tree(workspace, {"scans/a.xyz": b"x;y;z\n" + b"5;5;1\n" * 3_000_000})
    return workspace


@pytest.mark.posix
@pytest.mark.parametrize("columns, resize_to", [(80, 80), (80, 40), (40, 80)])
def test_terminal(program, long_run, columns, resize_to):
    begun = time.monotonic()
    command = [*program.command, *ARGUMENTS]
    code, screen = run_in_terminal(command, long_run, columns, resize_to)
    bars = screen.bars()
    assert code == 0
    assert len(bars) >= 2
    # Each drawing is seen twice at most: at its own end, and before it is erased.
    assert len(set(bars)) <= (time.monotonic() - begun) * 10 + 2
    assert all(line.startswith("[") for line in bars)
    last = bars[-1]
    assert len(last) < resize_to
    wide = "records/s" in last and last.endswith("left")
    assert wide if resize_to == 80 else "/s  0:0" in last
    # Nothing of the bar is left; the texts are what they would be without it.
    assert [line.rstrip() for line in screen.lines] == TEXTS


def test_no_bar_into_a_file(program, long_run):
    with open(long_run / "messages", "wb") as file:
        assert program.run(long_run, *ARGUMENTS, stderr=file).code == 0
    assert (long_run / "messages").read_text().split("\n") == TEXTS


@pytest.mark.posix
def test_host_program(program, tmp_path):
    """The host of the examples, on the example's own workspace."""
    shutil.copytree(EXAMPLES / "jacksboro", tmp_path / "jacksboro")
    host = [sys.executable, EXAMPLES / "host.py", *program.command[-1:]]
    arguments = ["jacksboro/scans", "clipped", "jacksboro/boundary.xml"]
    first, second = (
        subprocess.run([*host, *arguments], cwd=tmp_path, capture_output=True, text=True)
        for _ in range(2)
    )
    assert (first.returncode, first.stderr) == (0, "")
    assert "100.0 %" in first.stdout
    assert first.stdout.rstrip().endswith(f"finish: {TEXTS[-2]}")
    assert second.returncode == 1
    assert "error: output directory already exists" in second.stdout
