"""Runs the program in a directory and reads what it said and left there."""

import json
import os
import subprocess
from itertools import groupby

import pytest

START = ("state", 1, "Starting Orlagon...")
CLIPPING = ("state", 1, "Clipping elevation data...")
FINISHED = ("finish", 1, "Finished clipping elevation data with model boundaries")
FAILED = ("failed", 1, "Clipping of elevation data with model boundaries failed.")

BOUNDARY_READ = "boundary file read.\n"
FIRST_CHARACTER = "ERROR: first character of node file must be one of n,N,x,X"
XYZ_FORMS = (
    "ERROR: Using the xyz format, the first header line must be one of x;y;z , X;Y;Z , x;y;z;g ,"
    ' Y;Y;Z;G , while the separator (e.g. ";" is variable'
)
NO_HEADER = "the header line is empty"


def skipped(path, reason):
    return ("state", 1, f"Skipping input file {path}: {reason}")


def reported(text):
    """The messages of a run that ends with an error line of the batch."""
    return [START, ("error", 2, text), FAILED]


def boundary_xml(*rings, type="boundaries"):
    """A boundary file with one group of polygons, numbered from 1."""
    polygons = "".join(
        f'<polygon id="{number}">'
        + "".join(f'<point x="{x}" y="{y}" segmenttype="0"/>' for x, y in ring)
        + "</polygon>\n"
        for number, ring in enumerate(rings, 1)
    )
    return f'<project><TavelDGM><group type="{type}">\n{polygons}</group></TavelDGM></project>\n'


def boundary_trace(*counts):
    """The console lines for one group of polygons with these numbers of points."""
    lines = ["[readin_b_XML:]", "Found TavelDGM", "found group element", "typestring = boundaries"]
    for number, count in enumerate(counts, 1):
        lines.append(f"current polygon id = {number} with type = 0")
        lines.append(f" ipts= {count} points read for the boundary")
    return "".join(line + "\n" for line in [*lines, "     ... finished"])


SQUARE = [(4, 4), (6, 4), (6, 6), (4, 6)]
SQUARE_XML = boundary_xml(SQUARE)
SQUARE_TRACE = boundary_trace(4) + BOUNDARY_READ


def write_tree(root, tree):
    """Creates files below `root`: path -> text or bytes; None makes a directory."""
    for name, content in tree.items():
        path = os.path.join(os.fsencode(root), os.fsencode(name))
        os.makedirs(path if content is None else os.path.dirname(path), exist_ok=True)
        if content is not None:
            with open(path, "wb") as file:
                file.write(content.encode() if isinstance(content, str) else content)


def read_tree(root):
    """Everything below `root`: path -> bytes, None for a directory, the target for a link."""
    tree = {}
    root = os.fsencode(root)
    for directory, directories, files in os.walk(root):
        for name in directories + files:
            path = os.path.join(directory, name)
            key = os.fsdecode(os.path.relpath(path, root)).replace(os.sep, "/")
            if os.path.islink(path):
                tree[key] = os.readlink(path)
            elif os.path.isdir(path):
                tree[key] = None
            elif not os.access(path, os.R_OK):
                tree[key] = "unreadable"
            else:
                with open(path, "rb") as file:
                    tree[key] = file.read()
    return tree


def in_any_order(messages):
    """The messages with the skipped files, which come in listing order, sorted."""
    runs = groupby(messages, key=lambda m: m[2].startswith("Skipping input file "))
    return [m for skips, run in runs for m in (sorted(run) if skips else run)]


def plain_lines(messages):
    marks = {"error": "error: ", "failed": "failed: "}
    return "".join(marks.get(kind, "") + text + "\n" for kind, _, text in messages).split("\n")


class Run:
    """What one run of the program said: exit code, standard output, messages."""

    def __init__(self, process, pipe, windows):
        self.code = process.returncode
        self.stdout = process.stdout
        self.stderr = process.stderr
        self.messages = []
        self.positions = []
        if not pipe:
            return
        for line in (self.stderr or b"").decode("utf-8").split("\n")[:-1]:
            fields = json.loads(line, parse_constant=pytest.fail)
            kind = fields.pop("kind")
            if kind == "progress":
                assert fields.keys() == {"position", "flag"} and fields["flag"] is False, line
                self.positions.append(fields["position"])
                continue
            assert (fields.pop("flag", None) is True) == (kind == "state"), line
            assert fields.keys() == {"code", "text"}, line
            text = fields["text"].replace("\\", "/") if windows else fields["text"]
            self.messages.append((kind, fields["code"], text))

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
    def __init__(self, path, emulator, eol, inspector=None):
        self.command = [*emulator, path]
        self.windows = eol == "crlf"
        self.inspector = inspector

    def line_ends(self, expected):
        """What the program writes for `expected`, whose line ends are LF."""
        expected = expected.encode() if isinstance(expected, str) else expected
        return expected.replace(b"\n", b"\r\n") if self.windows else expected

    def as_written(self, tree):
        """What the program leaves for the tree `tree`, whose line ends are LF."""
        return {
            name: content if content is None else self.line_ends(content)
            for name, content in dict(tree).items()
        }

    def inspect(self, directory, *arguments, code=None, **options):
        """The report of veldtrim-inspect, which must change nothing."""
        process = subprocess.run(
            [self.inspector, "--json", *map(str, arguments)],
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

    def run(self, directory, *arguments, **options):
        """Runs the program; veldtrim-inspect, where there is one, must have foretold the result."""
        paths = [str(argument) for argument in arguments[:3]]
        foretold = None
        if self.inspector and len(paths) == 3 and not {"", "-pipe"} & set(paths):
            who = {key: options[key] for key in ("user", "group", "extra_groups") if key in options}
            foretold = self.inspect(directory, "--", paths[0], paths[2], **who)
        run = self.run_alone(directory, *arguments, **options)
        if foretold and run.code == 0:
            workspace = os.path.join(directory, os.path.dirname(paths[0]))
            assert_foretold(foretold, os.path.join(workspace, paths[1].lstrip("/")))
        return run

    def run_alone(self, directory, *arguments, **options):
        options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **options}
        process = subprocess.run(
            [*self.command, *map(str, arguments)],
            cwd=directory,
            stdin=subprocess.DEVNULL,
            timeout=120,
            **options,
        )
        return Run(process, "-pipe" in arguments, self.windows)

    def check(self, directory, arguments, *, code, stdout, messages, created=(), **options):
        """Runs with "-pipe" among or after the arguments and compares everything.

        `messages` may be None where their texts are the system's. `created` is the tree that the
        run adds; what was there before must stay as it was, and nothing else may appear.
        """
        before = read_tree(directory)
        pipe = [] if "-pipe" in arguments else ["-pipe"]
        run = self.run(directory, *arguments, *pipe, **options)
        if messages is not None:
            assert in_any_order(run.messages) == in_any_order(messages)
        assert run.stdout == self.line_ends(stdout)
        assert run.code == code
        assert read_tree(directory) == {**before, **self.as_written(created)}
        return run
