"""Links, names and permissions that a source tree cannot hold, and receivers that go away."""

import errno
import os
import subprocess
import tempfile
from pathlib import Path

import pytest
from harness import (
    ARGUMENTS, KEPT, OUTPUT_EXISTS, SCAN, SQUARE_XML, SYSTEM_ERROR, Link, boundary_not_found,
    clips, fails, read_tree, write_tree
)

posix = pytest.mark.posix
CLIPPED = clips({"a.xyz": KEPT})
LINKED = {
    "scans/link.xyz": Link("../elsewhere/b"),
    "scans/directory.xyz": Link("../elsewhere"),
    "scans/dangling.xyz": Link("nowhere"),
    "scans/dangling": Link("nowhere"),
    "elsewhere/b": SCAN,
    "elsewhere/c.xyz": SCAN,
    "linked": Link("scans"),
    "linked.xml": Link("boundary.xml"),
}
LOOP = {"loop": Link("loop")}
CONTROLS = 'no "such"\n\t\x7f\x01file'
ODD = [
    "a b.xyz", 'quo"te.txt', "line\nfeed.xyz", "back\\slash.xyz", "\x01.txt", "\u00fc\u4e16.node"
]


@posix
@pytest.mark.parametrize(
    "tree, arguments, outcome",
    [
        (
            LINKED,
            ["./linked", "clipped", "linked.xml"],
            clips(
                {"a.xyz": KEPT, "link.xyz": KEPT}, skipped={"./linked/dangling.xyz": errno.ENOENT}
            ),
        ),
        ({"scans/loop": Link("loop")}, ARGUMENTS, fails(SYSTEM_ERROR, {"clipped": None})),
        ({"scans/loop.xyz": Link("loop.xyz")}, ARGUMENTS, fails(SYSTEM_ERROR, {"clipped": None})),
        (LOOP, ["./loop", "clipped", "boundary.xml"], fails(SYSTEM_ERROR)),
        (LOOP, ["loop/a", "b", "boundary.xml"], fails(SYSTEM_ERROR)),
        (LOOP, ["./scans", "loop", "boundary.xml"], fails(SYSTEM_ERROR)),
        ({"o": None, "l": Link("o")}, ["./scans", "l", "boundary.xml"], fails(OUTPUT_EXISTS)),
        ({"l": Link("nowhere")}, ["./scans", "l", "boundary.xml"], fails(SYSTEM_ERROR)),
        ({"l": Link("boundary.xml")}, ["./scans", "l", "boundary.xml"], fails(SYSTEM_ERROR)),
        ({}, ["./scans", "n" * 300, "boundary.xml"], fails(SYSTEM_ERROR)),
        ({}, ["./scans", "clipped", CONTROLS], boundary_not_found(CONTROLS)),
        (
            {f"scans/{start}{name}": start + SCAN for name in ODD for start in ("", "bad ")},
            ARGUMENTS,
            clips(
                dict.fromkeys(["a.xyz", *ODD], KEPT),
                skipped={f"./scans/bad {name}": "first character" for name in ODD},
            ),
        ),
        (
            {b"scans/\xff\xfe.xyz": SCAN},
            ARGUMENTS,
            clips({"a.xyz": KEPT, os.fsdecode(b"\xff\xfe.xyz"): KEPT}),
        ),
        (
            {b"scans/\xff\xc3.xyz": "y"},
            ARGUMENTS,
            clips({"a.xyz": KEPT}, skipped={"./scans/\ufffd\ufffd.xyz": "first character"}),
        ),
    ],
)
def test_links_and_names(program, workspace, tree, arguments, outcome):
    """Odd names are kept exactly, and messages that name them stay valid JSON."""
    write_tree(workspace, tree)
    program.check(workspace, arguments, outcome)


def test_names_outside_ascii(program, tmp_path):
    """Letters of other languages and characters beyond 16 bits, in every path and in the texts."""
    odd = "\u00e4\u0416\u4e16\U0001f30d"
    scans = f"{odd}/sc {odd}"
    write_tree(tmp_path, {f"{scans}/{odd}.xyz": SCAN, f"{odd}.xml": SQUARE_XML})
    write_tree(tmp_path, {f"{scans}/bad {odd}.txt": "y"})
    skipped = {f"{scans}/bad {odd}.txt": "first character"}
    outcome = clips({f"{odd}.xyz": KEPT}, skipped=skipped, output=f"{odd}/out {odd}")
    program.check(tmp_path, [scans, f"out {odd}", f"{odd}.xml"], outcome)
    missing = f"no {odd}"
    program.check(tmp_path, [scans, f"again {odd}", missing], boundary_not_found(missing))


def test_long_paths(program, tmp_path):
    """More than 260 characters, relative and absolute."""
    deep = "/".join([letter * 120 for letter in "abc"])
    write_tree(tmp_path, {f"{deep}/scans/a.xyz": SCAN, f"{deep}/boundary.xml": SQUARE_XML})
    for start, output in (("", "clipped"), (f"{tmp_path.as_posix()}/", "again")):
        arguments = [f"{start}{deep}/scans", output, f"{start}{deep}/boundary.xml"]
        program.check(tmp_path, arguments, clips({"a.xyz": KEPT}, output=f"{deep}/{output}"))


@pytest.mark.parametrize("pipe", [[], ["-pipe"]], ids=["person", "host"])
@pytest.mark.parametrize("gone", [["stdout"], ["stderr"], ["stdout", "stderr"]])
def test_receiver_goes_away(program, workspace, gone, pipe):
    reader, writer = os.pipe()
    os.close(reader)
    before = read_tree(workspace)
    run = program.run(workspace, *ARGUMENTS, *pipe, **dict.fromkeys(gone, writer))
    os.close(writer)
    assert run.code == 0
    assert read_tree(workspace) == {**before, **program.tree(CLIPPED.created)}


@pytest.mark.skipif(os.name == "nt", reason="needs a shell that can close streams")
@pytest.mark.parametrize("streams", ["1>&-", "2>&-", pytest.param("<&- >&- 2>&-", marks=posix)])
def test_closed_streams(program, workspace, streams):
    """No message may end up in a file that took the number of a closed stream."""
    before = read_tree(workspace)
    words = ["sh", "-c", f'"$@" {streams}', "sh", *program.command, *ARGUMENTS]
    subprocess.run(words, cwd=workspace, capture_output=True, timeout=120, check=True)
    assert read_tree(workspace) == {**before, **program.tree(CLIPPED.created)}


@pytest.fixture
def unprivileged(program):
    """A workspace of a user whom permissions bind, and the options to run as that user."""
    user = 65534 if os.geteuid() == 0 else os.geteuid()
    options = {} if user == os.geteuid() else {"user": user, "group": user, "extra_groups": []}
    with tempfile.TemporaryDirectory() as name:
        directory = Path(name)
        scans = dict.fromkeys(["scans/a.xyz", "scans/b.xyz"], SCAN)
        write_tree(directory, {**scans, "boundary.xml": SQUARE_XML})
        for path in (directory, *directory.rglob("*")):
            os.chown(path, user, -1)
        try:
            program.run(directory, **options)
        except PermissionError:
            pytest.skip("the program is out of reach for a user without privileges")
        yield directory, options
        for path in (directory, *directory.rglob("*")):
            path.chmod(0o700)


@posix
@pytest.mark.parametrize(
    "locked, mode, outcome",
    [
        ("scans/b.xyz", 0, clips({"a.xyz": KEPT}, skipped={"./scans/b.xyz": errno.EACCES})),
        ("boundary.xml", 0, boundary_not_found("boundary.xml")),
        ("scans", 0o300, fails(SYSTEM_ERROR, {"clipped": None})),
        (".", 0o500, fails(SYSTEM_ERROR)),
    ],
)
def test_permissions(program, unprivileged, locked, mode, outcome):
    directory, options = unprivileged
    (directory / locked).chmod(mode)
    program.check(directory, ARGUMENTS, outcome, **options)
