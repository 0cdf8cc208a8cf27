"""A disk or a file that takes no more."""

import resource

import pytest
from harness import CLIPPING, FAILED, FINISHED, START
from workspace import (
    ARGUMENTS,
    PAGE,
    assert_inputs_unchanged,
    assert_whole_lines,
    kept,
    scan,
    write_workspace,
)

LARGE = scan(30_000)
SMALL = scan(200)


def fill(disk, leave):
    """Fills the disk but for so many bytes, whole pages of which count."""
    with open(disk / "filler", "wb", buffering=0) as file:
        size = 0
        try:
            while True:
                size += file.write(b"\0" * PAGE)
        except OSError:
            file.truncate(size - -(-leave // PAGE) * PAGE)


def on_disk(tmp_path, disk, scans):
    """The workspace is the small disk; its scans stand elsewhere."""
    write_workspace(tmp_path / "large", scans)
    (disk / "scans").symlink_to(tmp_path / "large/scans")
    return ["disk/scans", "clipped", "large/boundary.xml"]


def assert_failed_write(run, path, reason):
    assert run.code == 1
    began = [message for message in run.messages if message != CLIPPING]
    assert began == [START, ("error", 0, f"cannot write {path}: {reason}"), FAILED]


@pytest.mark.parametrize("pages", [0, 1, 25])
def test_disk_full_in_an_output_file(program, tmp_path, small_disk, pages):
    leave = pages * PAGE
    arguments = on_disk(tmp_path, small_disk, {"a.xyz": LARGE})
    fill(small_disk, leave)
    run = program.run(tmp_path, *arguments, "-pipe")
    assert_failed_write(run, "disk/clipped/a.xyz", "No space left on device")
    output = (small_disk / "clipped/a.xyz").read_bytes()
    assert_whole_lines(output, LARGE)
    assert leave - 100 < len(output) <= leave
    assert not (small_disk / "clipped/total_node_count.txt").exists()
    assert_inputs_unchanged(tmp_path / "large", {"a.xyz": LARGE})


def test_disk_full_at_the_total(program, tmp_path, small_disk):
    """The clipped files are the result; the total beside them is lost without a word."""
    arguments = on_disk(tmp_path, small_disk, {"a.xyz": SMALL})
    fill(small_disk, len(kept(SMALL)))
    run = program.run(tmp_path, *arguments, "-pipe")
    assert (run.code, run.messages) == (0, [START, CLIPPING, FINISHED])
    assert (small_disk / "clipped/a.xyz").read_bytes() == kept(SMALL)
    assert (small_disk / "clipped/total_node_count.txt").read_bytes() == b""


@pytest.mark.parametrize("limit", [0, 3, 10_000])
def test_file_size_limit(program, tmp_path, limit):
    write_workspace(tmp_path, {"a.xyz": LARGE})
    run = program.run(
        tmp_path,
        *ARGUMENTS,
        "-pipe",
        preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)),
    )
    assert_failed_write(run, "./clipped/a.xyz", "File too large")
    output = (tmp_path / "clipped/a.xyz").read_bytes()
    assert_whole_lines(output, LARGE)
    assert len(output) >= limit - 100
    assert_inputs_unchanged(tmp_path, {"a.xyz": LARGE})
