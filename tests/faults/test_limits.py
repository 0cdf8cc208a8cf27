"""Descriptors and memory that run out."""

import os
import resource
import subprocess

import pytest
from harness import CLIPPING, FAILED, START, skipped
from workspace import ARGUMENTS, COMPLETE, kept, scan, write_workspace

SCAN = scan(200)


def run_with(program, directory, limit, value):
    def set_limit():
        resource.setrlimit(limit, (value, value))

    return program.run(directory, *ARGUMENTS, "-pipe", preexec_fn=set_limit)


@pytest.fixture
def enough(program):
    """Memory for a run on small files, in bytes, and far from enough for a large one."""
    size = 200 << 20
    usual = subprocess.run(
        program.command,
        capture_output=True,
        preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (size, size)),
    )
    if not usual.stdout.startswith(b"Usage"):
        pytest.skip("a program with sanitizers lives with no limits")
    return size


@pytest.mark.usefixtures("enough")
@pytest.mark.parametrize("descriptors", [4, 5])
def test_no_more_descriptors(program, tmp_path, descriptors):
    """Three are the standard streams; a run needs two more."""
    write_workspace(tmp_path, {"a.xyz": SCAN})
    run = run_with(program, tmp_path, resource.RLIMIT_NOFILE, descriptors)
    output = tmp_path / "clipped/a.xyz"
    if descriptors == 5:
        assert run.code == 0
        assert output.read_bytes() == kept(SCAN)
        return
    assert run.code == 1
    assert run.messages == [
        START,
        skipped("./scans/a.xyz", "the header line is empty"),
        ("error", 2, "There are no input files."),
        FAILED,
    ]
    assert not output.exists()


def grow(path, size, end):
    """Lengthens the file by NUL bytes that take no place on disk, and `end`."""
    with open(path, "r+b") as file:
        file.truncate(size)
        file.seek(0, 2)
        file.write(end)


def test_no_more_memory_for_the_boundary_file(program, tmp_path, enough):
    write_workspace(tmp_path, {"a.xyz": SCAN})
    grow(tmp_path / "boundary.xml", 2 * enough, b"")
    run = run_with(program, tmp_path, resource.RLIMIT_AS, enough)
    assert run.code == 1
    assert run.messages == [START, ("error", 0, "std::bad_alloc"), FAILED]
    assert not (tmp_path / "clipped").exists()


def test_boundary_file_that_needs_less_memory_than_it_began(program, tmp_path, enough):
    """Two million elements, then blanks: the index must not insist on room for more of them."""
    write_workspace(tmp_path, {"a.xyz": SCAN})
    path = tmp_path / "boundary.xml"
    root, rest = path.read_bytes().split(b">", 1)
    path.write_bytes(root + b">" + b"<a/>" * 2_000_000 + b" " * (enough // 4) + rest)
    run = run_with(program, tmp_path, resource.RLIMIT_AS, enough)
    assert run.messages == COMPLETE
    assert (tmp_path / "clipped/a.xyz").read_bytes() == kept(SCAN)


def test_no_more_memory_for_a_line(program, tmp_path, enough):
    write_workspace(tmp_path, {"a.xyz": SCAN})
    grow(tmp_path / "scans/a.xyz", 2 * enough, b"\n")
    run = run_with(program, tmp_path, resource.RLIMIT_AS, enough)
    assert run.code == 1
    assert run.messages == [START, CLIPPING, ("error", 0, "std::bad_alloc"), FAILED]
    assert (tmp_path / "clipped/a.xyz").read_bytes() == kept(SCAN)
    assert not (tmp_path / "clipped/total_node_count.txt").exists()


def test_boundary_file_of_two_gib(program, tmp_path):
    """More than offsets can count is refused before any of it is read."""
    write_workspace(tmp_path, {"a.xyz": SCAN})
    os.truncate(tmp_path / "boundary.xml", 2 << 30)
    run = program.run(tmp_path, *ARGUMENTS, "-pipe")
    assert run.code == 1
    assert run.messages[1] == ("error", 1, "Boundary file named boundary.xml not found")
    assert not (tmp_path / "clipped").exists()
