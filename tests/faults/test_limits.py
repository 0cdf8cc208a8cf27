"""Descriptors and memory that run out."""

import errno
import os
import resource
import subprocess

import pytest
from harness import (
    ARGUMENTS, NO_SCANS, STARTED, boundary_not_found, clips, fails, messages
)
from workspace import kept, scan, write_workspace

SCAN = scan(200)
CLIPPED = clips({"a.xyz": kept(SCAN)})
NO_MEMORY = ("error", 0, "std::bad_alloc")


@pytest.fixture
def workspace(tmp_path):
    write_workspace(tmp_path, {"a.xyz": SCAN})
    return tmp_path


def limit_to(limit, value):
    return {"preexec_fn": lambda: resource.setrlimit(limit, (value, value))}


@pytest.fixture
def enough(program):
    """Memory for a run on small files, in bytes, and far from enough for a large one."""
    size = 200 << 20
    limited = limit_to(resource.RLIMIT_AS, size)
    usual = subprocess.run(program.command, capture_output=True, **limited)
    if not usual.stdout.startswith(b"Usage"):
        pytest.skip("a program with sanitizers lives with no limits")
    return size


@pytest.mark.usefixtures("enough")
@pytest.mark.parametrize(
    "descriptors, outcome",
    [
        (4, fails(NO_SCANS, {"clipped": None}, {"./scans/a.xyz": errno.EMFILE})),
        (5, CLIPPED),
    ],
)
def test_no_more_descriptors(program, workspace, descriptors, outcome):
    """Three are the standard streams; a run needs two more."""
    limited = limit_to(resource.RLIMIT_NOFILE, descriptors)
    program.check(workspace, ARGUMENTS, outcome, **limited)


def run_with(program, directory, memory):
    limited = limit_to(resource.RLIMIT_AS, memory)
    run = program.run(directory, *ARGUMENTS, "-pipe", **limited)
    return run.code, run.messages


def grow(path, size, end=b""):
    """Lengthens the file by NUL bytes that take no place on disk, and `end`."""
    with open(path, "r+b") as file:
        file.truncate(size)
        file.seek(0, 2)
        file.write(end)


def test_no_more_memory_for_the_boundary_file(program, workspace, enough):
    grow(workspace / "boundary.xml", 2 * enough)
    assert run_with(program, workspace, enough) == (1, messages(errors=[NO_MEMORY], before=STARTED))
    assert not (workspace / "clipped").exists()


def test_boundary_file_that_needs_less_memory_than_it_began(program, workspace, enough):
    """Two million elements, then blanks: the index must not insist on room for more of them."""
    path = workspace / "boundary.xml"
    root, rest = path.read_bytes().split(b">", 1)
    path.write_bytes(root + b">" + b"<a/>" * 2_000_000 + b" " * (enough // 4) + rest)
    program.check(workspace, ARGUMENTS, CLIPPED, **limit_to(resource.RLIMIT_AS, enough))


def test_no_more_memory_for_a_line(program, workspace, enough):
    grow(workspace / "scans/a.xyz", 2 * enough, b"\n")
    expected = (1, messages(clipped=1, errors=[NO_MEMORY]))
    assert run_with(program, workspace, enough) == expected
    assert (workspace / "clipped/a.xyz").read_bytes() == kept(SCAN)
    assert not (workspace / "clipped/total_node_count.txt").exists()


def test_boundary_file_of_two_gib(program, workspace):
    """More than offsets can count is refused before any of it is read."""
    os.truncate(workspace / "boundary.xml", 2 << 30)
    run = program.run(workspace, *ARGUMENTS, "-pipe")
    expected = boundary_not_found("boundary.xml")
    assert (run.code, run.messages) == (expected.code, expected.messages)
    assert not (workspace / "clipped").exists()
