"""Links, names and permissions that a source tree cannot hold, and receivers that go away."""

import os
import subprocess
import tempfile
from pathlib import Path

import pytest
from harness import (
    CLIPPING,
    FAILED,
    FINISHED,
    FIRST_CHARACTER,
    NO_HEADER,
    SQUARE_TRACE,
    SQUARE_XML,
    START,
    read_tree,
    reported,
    skipped,
    write_tree,
)

posix = pytest.mark.posix
ARGUMENTS = ["./scans", "clipped", "boundary.xml"]
SCAN = "x;y;z\n5;5;1\n9;9;2\n"
KEPT = b"x;y;z\n5;5;1\n"
OUTPUT_EXISTS = (
    "output directory already exists, aborting in order avoid overwriting of existing data"
)


@pytest.fixture
def workspace(tmp_path):
    write_tree(tmp_path, {"scans/a.xyz": SCAN, "boundary.xml": SQUARE_XML})
    return tmp_path


def created(*names):
    files = {f"clipped/{name}": KEPT for name in names}
    total = {"clipped": None, "clipped/total_node_count.txt": b"%d\n" % len(names)}
    return {**files, **total}


def assert_system_error(program, directory, arguments, created=(), **options):
    """The system's words are the error message; the console shows nothing more."""
    run = program.check(
        directory,
        arguments,
        code=1,
        stdout=SQUARE_TRACE,
        messages=None,
        created=created,
        **options,
    )
    assert [run.messages[0], run.messages[-1]] == [START, FAILED]
    assert [message[:2] for message in run.messages[1:-1]] == [("error", 0)]


@posix
def test_links_are_followed(program, workspace):
    write_tree(workspace, {"elsewhere/b": SCAN, "elsewhere/c.xyz": SCAN})
    (workspace / "scans/link.xyz").symlink_to("../elsewhere/b")
    (workspace / "scans/directory.xyz").symlink_to("../elsewhere")
    (workspace / "scans/dangling.xyz").symlink_to("nowhere")
    (workspace / "scans/dangling").symlink_to("nowhere")
    (workspace / "linked").symlink_to("scans")
    (workspace / "linked.xml").symlink_to("boundary.xml")
    program.check(
        workspace,
        ["./linked", "clipped", "linked.xml"],
        code=0,
        stdout=SQUARE_TRACE,
        messages=[START, skipped("./linked/dangling.xyz", NO_HEADER), CLIPPING, CLIPPING, FINISHED],
        created=created("a.xyz", "link.xyz"),
    )


@posix
@pytest.mark.parametrize("name", ["loop", "loop.xyz"])
def test_circular_link_among_the_scans(program, workspace, name):
    (workspace / "scans" / name).symlink_to(name)
    assert_system_error(program, workspace, ARGUMENTS, {"clipped": None})


@posix
@pytest.mark.parametrize("arguments", [["./loop", "clipped"], ["loop/a", "b"], ["./scans", "loop"]])
def test_circular_link_on_the_way(program, workspace, arguments):
    (workspace / "loop").symlink_to("loop")
    assert_system_error(program, workspace, [*arguments, "boundary.xml"])


@posix
def test_output_name_is_a_link(program, workspace):
    (workspace / "old").mkdir()
    (workspace / "directory").symlink_to("old")
    (workspace / "dangling").symlink_to("nowhere")
    (workspace / "file").symlink_to("boundary.xml")
    program.check(
        workspace,
        ["./scans", "directory", "boundary.xml"],
        code=1,
        stdout=f"{SQUARE_TRACE}{OUTPUT_EXISTS}\n",
        messages=reported(OUTPUT_EXISTS),
    )
    for output in ("dangling", "file", "n" * 300):
        assert_system_error(program, workspace, ["./scans", output, "boundary.xml"])


@posix
def test_odd_names(program, workspace):
    """Kept under exactly their names; named in messages that stay valid JSON."""
    names = ["a b.xyz", 'quo"te.txt', "line\nfeed.xyz", "back\\slash.xyz", "\x01.txt"]
    names.append("\u00fc\u4e16.node")
    write_tree(workspace / "scans", dict.fromkeys(names, SCAN))
    write_tree(workspace / "scans", {"bad" + name: "y" for name in names})
    messages = [skipped("./scans/bad" + name, FIRST_CHARACTER) for name in names]
    write_tree(workspace / "scans", {b"\xff\xfe.xyz": SCAN})
    program.check(
        workspace,
        ARGUMENTS,
        code=0,
        stdout=SQUARE_TRACE,
        messages=[START, *messages, *[CLIPPING] * 8, FINISHED],
        created=created("a.xyz", *names, os.fsdecode(b"\xff\xfe.xyz")),
    )
    write_tree(workspace / "scans", {b"bad\xff\xc3.xyz": "y"})
    run = program.run(workspace, "./scans", "again", "boundary.xml", "-pipe")
    assert len(run.messages) == 2 + 8 + 7


def test_names_outside_ascii(program, tmp_path):
    """Letters of other languages and characters beyond 16 bits, in every path and in the texts."""
    odd = "\u00e4\u0416\u4e16\U0001f30d"
    write_tree(tmp_path, {f"{odd}/sc {odd}/{odd}.xyz": SCAN, f"{odd}.xml": SQUARE_XML})
    write_tree(tmp_path, {f"{odd}/sc {odd}/bad {odd}.txt": "y"})
    program.check(
        tmp_path,
        [f"{odd}/sc {odd}", f"out {odd}", f"{odd}.xml"],
        code=0,
        stdout=SQUARE_TRACE,
        messages=[
            START,
            skipped(f"{odd}/sc {odd}/bad {odd}.txt", FIRST_CHARACTER),
            CLIPPING,
            FINISHED,
        ],
        created={
            f"{odd}/out {odd}": None,
            f"{odd}/out {odd}/{odd}.xyz": KEPT,
            f"{odd}/out {odd}/total_node_count.txt": "1\n",
        },
    )
    text = f"Boundary file named no {odd} not found"
    program.check(
        tmp_path,
        [f"{odd}/sc {odd}", f"again {odd}", f"no {odd}"],
        code=1,
        stdout=f"[readin_b_XML:]\n{text}\nboundary file does not exist\n",
        messages=[START, ("error", 1, text), ("error", 2, "boundary file does not exist"), FAILED],
    )


def test_long_paths(program, tmp_path):
    """More than 260 characters, relative and absolute."""
    deep = "/".join([letter * 120 for letter in "abc"])
    write_tree(tmp_path, {f"{deep}/scans/a.xyz": SCAN, f"{deep}/boundary.xml": SQUARE_XML})
    for start, output in (("", "clipped"), (f"{tmp_path.as_posix()}/", "again")):
        program.check(
            tmp_path,
            [f"{start}{deep}/scans", output, f"{start}{deep}/boundary.xml"],
            code=0,
            stdout=SQUARE_TRACE,
            messages=[START, CLIPPING, FINISHED],
            created={
                f"{deep}/{output}": None,
                f"{deep}/{output}/a.xyz": KEPT,
                f"{deep}/{output}/total_node_count.txt": "1\n",
            },
        )


def test_patterns_are_names(program, workspace):
    """Nothing expands them, whatever would match."""
    error = "Input directory does not exist"
    program.check(
        workspace,
        ["./sc*s", "clipped", "boundary.xml"],
        code=1,
        stdout=f"{SQUARE_TRACE}{error}\n",
        messages=reported(error),
    )


@posix
def test_control_characters_in_a_boundary_path(program, workspace):
    path = 'no "such"\n\t\x7f\x01file'
    text = f"Boundary file named {path} not found"
    program.check(
        workspace,
        ["./scans", "clipped", path],
        code=1,
        stdout=f"[readin_b_XML:]\n{text}\nboundary file does not exist\n",
        messages=[
            START,
            ("error", 1, text),
            ("error", 2, "boundary file does not exist"),
            FAILED,
        ],
    )


@pytest.mark.parametrize("arguments", [ARGUMENTS, [*ARGUMENTS, "-pipe"]], ids=["plain", "pipe"])
@pytest.mark.parametrize("gone", ["stdout", "stderr", "both"])
def test_receiver_goes_away(program, workspace, gone, arguments):
    reader, writer = os.pipe()
    os.close(reader)
    streams = {name: writer for name in ("stdout", "stderr") if gone in (name, "both")}
    before = read_tree(workspace)
    run = program.run(workspace, *arguments, **streams)
    os.close(writer)
    assert run.code == 0
    assert read_tree(workspace) == {**before, **program.as_written(created("a.xyz"))}


@pytest.mark.skipif(os.name == "nt", reason="needs a shell that can close streams")
@pytest.mark.parametrize("streams", ["1>&-", "2>&-", pytest.param("<&- >&- 2>&-", marks=posix)])
def test_closed_streams(program, workspace, streams):
    """No message may end up in a file that took the number of a closed stream."""
    before = read_tree(workspace)
    command = f'"$@" {streams}'
    words = ["sh", "-c", command, "sh", *program.command, *ARGUMENTS]
    code = subprocess.run(words, cwd=workspace, capture_output=True, timeout=120).returncode
    assert code == 0
    assert read_tree(workspace) == {**before, **program.as_written(created("a.xyz"))}


@pytest.fixture
def unprivileged(program):
    """A workspace of a user whom permissions bind, and the options to run as that user."""
    user = 65534 if os.geteuid() == 0 else os.geteuid()
    options = {} if user == os.geteuid() else {"user": user, "group": user, "extra_groups": []}
    with tempfile.TemporaryDirectory() as name:
        directory = Path(name)
        write_tree(directory, {"scans/a.xyz": SCAN, "boundary.xml": SQUARE_XML})
        for path in (directory, *directory.rglob("*")):
            os.chown(path, user, -1)
        try:
            program.run(directory, **options)
        except PermissionError:
            pytest.skip("the program is out of reach for a user without privileges")
        yield directory, options
        for path in directory.rglob("*"):
            path.chmod(0o700)


@posix
def test_unreadable_scan(program, unprivileged):
    directory, options = unprivileged
    write_tree(directory, {"scans/secret.xyz": SCAN})
    (directory / "scans/secret.xyz").chmod(0)
    run = program.run(directory, *ARGUMENTS, "-pipe", **options)
    assert run.code == 0
    secret = skipped("./scans/secret.xyz", NO_HEADER)
    assert run.messages == [START, secret, CLIPPING, FINISHED]
    tree = read_tree(directory)
    added = {name: tree[name] for name in tree if name.startswith("clipped")}
    assert added == created("a.xyz")


@posix
@pytest.mark.parametrize("locked, mode", [("scans", 0o300), (".", 0o500)])
def test_unreadable_directories(program, unprivileged, locked, mode):
    directory, options = unprivileged
    (directory / locked).chmod(mode)
    run = program.run(directory, *ARGUMENTS, "-pipe", **options)
    (directory / locked).chmod(0o700)
    assert (run.code, run.stdout.decode()) == (1, SQUARE_TRACE)
    assert [run.messages[0], run.messages[-1]] == [START, FAILED]
    assert [message[:2] for message in run.messages[1:-1]] == [("error", 0)]
    assert [p.name for p in directory.glob("clipped/**/*")] == []


@posix
def test_unreadable_boundary_file(program, unprivileged):
    directory, options = unprivileged
    (directory / "boundary.xml").chmod(0)
    run = program.run(directory, *ARGUMENTS, "-pipe", **options)
    text = "Boundary file named boundary.xml not found"
    assert run.stdout.decode() == f"[readin_b_XML:]\n{text}\nboundary file does not exist\n"
    assert run.messages[1] == ("error", 1, text)
    assert not (directory / "clipped").exists()
