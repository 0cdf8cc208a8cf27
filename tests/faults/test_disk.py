"""A disk or a file that takes no more."""

import resource

import pytest
from harness import ARGUMENTS, messages
from workspace import (
    PAGE, assert_beginning, assert_inputs_unchanged, kept, scan, write_workspace
)

LARGE = {"a.xyz": scan(30_000)}
SMALL = {"a.xyz": scan(200)}


@pytest.fixture
def disk(small_disk, tmp_path):
    """A workspace on the small disk; its scans are elsewhere."""
    (small_disk / "scans").symlink_to(tmp_path / "scans")
    return small_disk


def run_on_full(program, disk, scans, leave):
    """A run on the disk, which is full but for so many bytes, whole pages of which count."""
    write_workspace(disk.parent, scans)
    with open(disk / "filler", "wb", buffering=0) as file:
        size = 0
        try:
            while True:
                size += file.write(b"\0" * PAGE)
        except OSError:
            file.truncate(size - -(-leave // PAGE) * PAGE)
    return program.run(disk.parent, "disk/scans", "clipped", "boundary.xml", "-pipe")


def assert_failed_write(run, directory, path, reason, size):
    """The output ends with the last whole line that found room."""
    error = ("error", 0, f"cannot write {path}/clipped/a.xyz: {reason}")
    assert run.code == 1
    assert run.messages in (messages(errors=[error]), messages(clipped=1, errors=[error]))
    output = (directory / path / "clipped/a.xyz").read_bytes()
    assert_beginning(output, LARGE["a.xyz"])
    assert size - 100 < len(output) <= size
    assert not (directory / path / "clipped/total_node_count.txt").exists()
    assert_inputs_unchanged(directory, LARGE)


@pytest.mark.parametrize("pages", [0, 1, 25])
def test_disk_full_in_an_output_file(program, disk, pages):
    run = run_on_full(program, disk, LARGE, pages * PAGE)
    assert_failed_write(run, disk.parent, "disk", "No space left on device", pages * PAGE)


def test_disk_full_at_the_total(program, disk):
    """The clipped files are the result; the loss of the total beside them is only reported."""
    output = kept(SMALL["a.xyz"])
    run = run_on_full(program, disk, SMALL, len(output))
    lost = "Cannot write disk/clipped/total_node_count.txt: No space left on device"
    assert (run.code, sorted(run.messages)) == (0, sorted([*messages(1), ("state", 1, lost)]))
    assert (disk / "clipped/a.xyz").read_bytes() == output
    assert (disk / "clipped/total_node_count.txt").read_bytes() == b""


@pytest.mark.parametrize("limit", [0, 3, 10_000])
def test_file_size_limit(program, tmp_path, limit):
    def set_limit():
        resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))

    write_workspace(tmp_path, LARGE)
    run = program.run(tmp_path, *ARGUMENTS, "-pipe", preexec_fn=set_limit)
    assert_failed_write(run, tmp_path, ".", "File too large", limit)
