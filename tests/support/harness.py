"""Runs the program in a directory and compares all that it says and leaves there."""

import json
import os
import subprocess
from itertools import groupby
from typing import NamedTuple
from unittest.mock import ANY

import pytest

REASONS = {
    "first character": "ERROR: first character of node file must be one of n,N,x,X",
    "xyz form": "ERROR: Using the xyz format, the first header line must be one of x;y;z , X;Y;Z ,"
    ' x;y;z;g , Y;Y;Z;G , while the separator (e.g. ";" is variable',
    "no header": "the header line is empty",
    "no file": "it is not a regular file",
}
OUTPUT_EXISTS = (
    "output directory already exists, aborting in order avoid overwriting of existing data"
)
NO_WORKSPACE = "Workspace path does not exist"
NO_INPUT = "Input directory does not exist"
NO_SCANS = "There are no input files."
SYSTEM_ERROR = ("error", 0, ANY)  # in the system's words

# The states of a run that has just begun, and once it has read the boundary file.
STARTED = ["Starting Orlagon..."]
BOUNDARY_READ = [*STARTED]


def reason(why):
    """Why a file is skipped: by a key of REASONS, or by the errno of what the system refuses."""
    return f"it cannot be read: {os.strerror(why)}" if isinstance(why, int) else REASONS[why]


def messages(clipped=0, skipped=(), errors=(), before=BOUNDARY_READ):
    """What a run says, as (kind, code, text): after the states `before` it clips so many scans,
    skips others (path -> key of REASONS, or an errno), and fails if there are errors."""
    skips = [f"Skipping input file {path}: {reason(why)}" for path, why in dict(skipped).items()]
    failed = ("failed", 1, "Clipping of elevation data with model boundaries failed.")
    finished = ("finish", 1, "Finished clipping elevation data with model boundaries")
    states = [*before, *skips, *["Clipping elevation data..."] * clipped]
    return [*(("state", 1, text) for text in states), *errors, failed if errors else finished]


def boundary_file(*groups):
    """A boundary file with the groups (type, {id: ring}), and what the console says of it."""
    text, trace = "", "[readin_b_XML:]\nFound TavelDGM\n"
    for group, rings in groups:
        text += f'<group type="{group}">\n'
        trace += f"found group element\ntypestring = {group}\n"
        for number, ring in rings.items():
            points = "".join(f'<point x="{x}" y="{y}" segmenttype="0"/>' for x, y in ring)
            text += f'<polygon id="{number}">{points}</polygon>\n'
            if group == "boundaries":
                trace += f"current polygon id = {number} with type = 0\n"
                trace += f" ipts= {len(ring)} points read for the boundary\n"
        text += "</group>"
        trace += "" if group == "boundaries" else f"Unknown tag {group}\nIgnoring block"
    xml = f"<project><TavelDGM>{text}</TavelDGM></project>\n"
    return xml, trace + "     ... finished\n"


def boundary_xml(*rings):
    """A boundary file with one group of polygons, numbered from 1."""
    return boundary_file(("boundaries", dict(enumerate(rings, 1))))[0]


SQUARE = [(4, 4), (6, 4), (6, 6), (4, 6)]
SQUARE_XML, SQUARE_TRACE = boundary_file(("boundaries", {1: SQUARE}))
SCAN = "x;y;z\n5;5;1\n9;9;2\n"
KEPT = "x;y;z\n5;5;1\n"
ARGUMENTS = ["./scans", "clipped", "boundary.xml"]


class Outcome(NamedTuple):
    """All that a run shows: exit code, standard output, messages, and the files it adds."""

    code: int
    stdout: str
    messages: list
    created: dict


def clips(kept, dropped=0, skipped=(), trace=SQUARE_TRACE, output="clipped", total=None):
    """A run that keeps what the files `kept` (name -> content) say, and nothing of so many others.

    `total` says how many records where these are not in the files."""
    def lines(content):
        return content.count("\n" if isinstance(content, str) else b"\n")

    total = sum(lines(content) - 1 for content in kept.values()) if total is None else total
    files = {**kept, "total_node_count.txt": f"{total}\n"}
    created = {output: None, **{f"{output}/{name}": files[name] for name in files}}
    said = messages(clipped=len(kept) + dropped, skipped=skipped)
    return Outcome(0, trace + "boundary file read.\n", said, created)


def fails(error, created=(), skipped=(), trace=SQUARE_TRACE):
    """A run that ends with an error after the boundary file was read: a text that the console
    shows too, or SYSTEM_ERROR."""
    shown = "" if error == SYSTEM_ERROR else error + "\n"
    errors = [error if error == SYSTEM_ERROR else ("error", 2, error)]
    stdout = f"{trace}boundary file read.\n{shown}"
    return Outcome(1, stdout, messages(skipped=skipped, errors=errors), dict(created))


def rejects_boundary(error, trace=""):
    """A run whose boundary file cannot be read; `trace` is what the console says of it."""
    given_up = "boundary file does not exist"
    errors = [("error", 1, error), ("error", 2, given_up)]
    stdout = f"[readin_b_XML:]\n{trace}{given_up}\n"
    return Outcome(1, stdout, messages(errors=errors, before=STARTED), {})


def boundary_not_found(path):
    text = f"Boundary file named {path} not found"
    return rejects_boundary(text, f"{text}\n")


class Link(str):
    """A symbolic link to this path."""


def write_tree(root, tree):
    """Creates files below `root`: path -> text, bytes or Link; None makes a directory."""
    for name, content in tree.items():
        path = os.path.join(os.fsencode(root), os.fsencode(name))
        os.makedirs(path if content is None else os.path.dirname(path), exist_ok=True)
        if isinstance(content, Link):
            os.symlink(os.fsencode(content), path)
        elif content is not None:
            with open(path, "wb") as file:
                file.write(content.encode() if isinstance(content, str) else content)


def read_tree(root):
    """Everything below `root`: path -> bytes, None for a directory, a Link."""
    tree = {}
    root = os.fsencode(root)
    for directory, directories, files in os.walk(root):
        for name in directories + files:
            path = os.path.join(directory, name)
            key = os.fsdecode(os.path.relpath(path, root)).replace(os.sep, "/")
            if os.path.islink(path):
                tree[key] = Link(os.readlink(path))
            elif os.path.isdir(path):
                tree[key] = None
            elif not os.access(path, os.R_OK):
                tree[key] = "unreadable"
            else:
                with open(path, "rb") as file:
                    tree[key] = file.read()
    return tree


def in_any_order(messages, windows=False):
    """The messages with the skipped files, which come in listing order, sorted."""
    if windows:  # either separator
        messages = [
            (*rest, text if text is ANY else text.replace("\\", "/")) for *rest, text in messages
        ]
    runs = groupby(messages, key=lambda m: str(m[-1]).startswith("Skipping input file "))
    return [m for skips, run in runs for m in (sorted(run) if skips else run)]


def as_lines(messages):
    """The messages as a person reads them."""
    marks = {"error": "error: ", "failed": "failed: "}
    return [(marks.get(kind, "") + text.removesuffix("\n"),) for kind, _, text in messages]


class Run:
    """What one run of the program said: exit code, standard output, messages."""

    def __init__(self, process, pipe):
        self.code = process.returncode
        self.stdout = process.stdout
        self.stderr = (process.stderr or b"").decode("utf-8").replace("\r\n", "\n")
        self.messages = []
        self.positions = []
        lines = self.stderr.split("\n")[:-1]
        for line in lines if pipe else []:
            fields = json.loads(line, parse_constant=pytest.fail)
            kind = fields.pop("kind")
            if kind == "progress":
                assert fields.keys() == {"position", "flag"} and fields["flag"] is False, line
                self.positions.append(fields["position"])
                continue
            assert (fields.pop("flag", None) is True) == (kind == "state"), line
            assert fields.keys() == {"code", "text"}, line
            self.messages.append((kind, fields["code"], fields["text"]))
        if not pipe:
            self.messages = [(line,) for line in lines]

    def assert_progress_rises(self):
        """From 0 to 100, as it does unless a scan has no line feed at all, a count of -1."""
        assert self.positions == sorted(self.positions)
        assert 0 <= self.positions[0] and self.positions[-1] == 100


def assert_foretold(report, output):
    """The clipped files in the directory `output` hold the records that the report names."""
    tree = read_tree(output)
    total = int(tree.pop("total_node_count.txt"))
    kept = {file["name"]: file["records"]["kept"] for file in report["files"] if file["taken"]}
    kept.pop("total_node_count.txt", None)  # of that name only the total is left
    kept = {name: count for name, count in kept.items() if count}
    written = {name: content.count(b"\n") - 1 for name, content in tree.items()}
    assert report["failure"] is None
    assert report["records"]["kept"] == total
    if all(name.isascii() for name in written):
        assert written == kept
    else:  # JSON cannot say every name
        assert sorted(written.values()) == sorted(kept.values())


class Program:
    """The program, and veldtrim-inspect, which must foretell what each run keeps."""

    def __init__(self, command, windows, inspector):
        self.command = command
        self.windows = windows
        self.inspector = inspector

    def as_written(self, content):
        """What the program writes for `content`, whose line ends are LF; None for a directory."""
        content = content.encode() if isinstance(content, str) else content
        return content.replace(b"\n", b"\r\n") if content and self.windows else content

    def tree(self, created):
        """What the program writes for a tree."""
        return {name: self.as_written(created[name]) for name in created}

    def inspect(self, directory, *arguments, code=None, **options):
        """The report of veldtrim-inspect, which must change nothing."""
        process = subprocess.run(
            [self.inspector, "--json", "--all", *map(str, arguments)],
            cwd=directory,
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=120,
            **options,
        )
        assert process.returncode in ((0, 1) if code is None else (code,)), process.stderr
        report = json.loads(process.stdout)
        assert report["wouldKeep"] == (process.returncode == 0)
        return report

    def inspect_text(self, directory, *arguments):
        """The same report as text."""
        return subprocess.run(
            [self.inspector, "--all", *map(str, arguments)],
            cwd=directory,
            capture_output=True,
            text=True,
            errors="replace",
            timeout=120,
        ).stdout

    def run(self, directory, *arguments, **options):
        paths = [str(argument) for argument in arguments[:3]]
        foretold = None
        if self.inspector and len(paths) == 3 and not {"", "-pipe"} & set(paths):
            who = {key: options[key] for key in ("user", "group", "extra_groups") if key in options}
            foretold = self.inspect(directory, "--", paths[0], paths[2], **who)
        run = self.run_command([*self.command, *map(str, arguments)], directory, **options)
        if foretold and run.code == 0:
            output = os.path.join(os.path.dirname(paths[0]), paths[1].lstrip("/"))
            assert_foretold(foretold, os.path.join(directory, output))
        return run

    def run_command(self, command, directory, **options):
        options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **options}
        stdin = subprocess.DEVNULL
        process = subprocess.run(command, cwd=directory, stdin=stdin, timeout=120, **options)
        return Run(process, "-pipe" in command)

    def check(self, directory, arguments, outcome, pipe=("-pipe",), **options):
        """Runs with `pipe` after the arguments, unless the switch is one of them, and compares all
        that the outcome names. What was there before must stay as it was, and nothing else may
        appear."""
        before = read_tree(directory)
        run = self.run(directory, *arguments, *(() if "-pipe" in arguments else pipe), **options)
        said = in_any_order(run.messages, self.windows)
        expected = outcome.messages if pipe else as_lines(outcome.messages)
        assert said == in_any_order(expected, self.windows)
        assert run.stdout == self.as_written(outcome.stdout)
        assert run.code == outcome.code
        assert read_tree(directory) == {**before, **self.tree(outcome.created)}
        if pipe and outcome.code == 0:
            assert run.positions[-1] == 100
        return run
