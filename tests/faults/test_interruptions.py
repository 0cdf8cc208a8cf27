"""Runs that are ended, and files that change under a run."""

import os
import random
import signal
import subprocess
import time

import pytest
from harness import CLIPPING, FINISHED, START
from workspace import (
    ARGUMENTS,
    assert_inputs_unchanged,
    assert_whole_lines,
    is_cut_by_the_system,
    kept,
    kept_count,
    scan,
    write_workspace,
)

KILLS = int(os.environ.get("VELDTRIM_KILLS", "100"))


def start(program, directory):
    return subprocess.Popen(
        [*program.command, *ARGUMENTS],
        cwd=directory,
        stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL,
    )


def empty(directory):
    """Removes the output directory, which may not be there."""
    if directory.exists():
        for path in directory.iterdir():
            path.unlink()
        directory.rmdir()


def test_killed_at_any_moment(program, tmp_path):
    """Every output file is the beginning of the right one and ends with a whole line.

    Only a kill in the midst of a single write can cut a line, and only where the kernel divides
    that write: one in some hundred kills.
    """
    scans = {f"{name}.xyz": scan(40_000, 100_000 * i) for i, name in enumerate("abc")}
    write_workspace(tmp_path, scans)
    output = tmp_path / "clipped"
    began = time.monotonic()
    assert start(program, tmp_path).wait(60) == 0
    duration = time.monotonic() - began
    moments = random.Random(4711)
    unfinished = cut = 0
    for _ in range(KILLS):
        empty(output)
        process = start(program, tmp_path)
        time.sleep(moments.uniform(0, duration))
        process.kill()
        assert process.wait(60) in (0, -signal.SIGKILL)
        if not output.exists():
            continue
        for path in output.iterdir():
            content = path.read_bytes()
            if path.name == "total_node_count.txt":
                assert content in (b"", b"%d\n" % sum(map(kept_count, scans.values())))
                continue
            if is_cut_by_the_system(content):
                assert kept(scans[path.name]).startswith(content)
                cut += 1
            else:
                assert_whole_lines(content, scans[path.name])
            unfinished += kept(scans[path.name]) != content
    assert_inputs_unchanged(tmp_path, scans)
    assert unfinished > KILLS // 10, "the kills did not meet runs in the middle"
    assert cut <= 1 + KILLS // 50
    print(f"{KILLS} kills: {unfinished} unfinished files, {cut} cut by the kernel within a line")


def change_before_its_turn(program, directory, change):
    """Runs with two scans, and changes the one whose turn comes second while the first is clipped.

    Returns the name of the changed scan and the run's exit code.
    """
    for _ in range(20):
        empty(directory / "clipped")
        process = start(program, directory)
        outputs = []
        while process.poll() is None and not outputs:
            outputs = [path.name for path in directory.glob("clipped/*")]
        process.send_signal(signal.SIGSTOP)
        outputs = [path.name for path in directory.glob("clipped/*")]
        if process.poll() is None and len(outputs) == 1:
            second = {"a.xyz": "b.xyz", "b.xyz": "a.xyz"}[outputs[0]]
            change(directory / "scans" / second)
            process.send_signal(signal.SIGCONT)
            return second, process.wait(60)
        process.send_signal(signal.SIGCONT)
        process.wait(60)
    return pytest.skip("the run could not be stopped in the middle")


RECORDS = 150_000
SCAN = scan(RECORDS)
HALF = len(SCAN) // 2


@pytest.mark.parametrize(
    "change, expected",
    [
        (os.unlink, None),
        (lambda path: os.truncate(path, 0), None),
        (lambda path: os.truncate(path, HALF), SCAN[:HALF]),
        (lambda path: path.write_bytes(SCAN + scan(10)), SCAN),
        (lambda path: path.write_bytes(b"another file\n" * 1000), None),
    ],
    ids=["vanishes", "is emptied", "shrinks", "grows", "is replaced"],
)
def test_scan_changes_after_it_was_counted(program, tmp_path, change, expected):
    """As many records as were counted are read, of what is there then."""
    write_workspace(tmp_path, {"a.xyz": SCAN, "b.xyz": SCAN})
    second, code = change_before_its_turn(program, tmp_path, change)
    assert code == 0
    first = "b.xyz" if second == "a.xyz" else "a.xyz"
    assert (tmp_path / "clipped" / first).read_bytes() == kept(SCAN)
    output = tmp_path / "clipped" / second
    total = kept_count(SCAN)
    if expected is None:
        assert not output.exists()
    else:
        lines = kept(expected)
        lines += b"" if lines.endswith(b"\n") else b"\n"
        assert output.read_bytes() == lines
        total += len(lines.splitlines()) - 1
    assert (tmp_path / "clipped/total_node_count.txt").read_bytes() == b"%d\n" % total


def test_what_is_no_file_keeps_no_run_waiting(program, tmp_path):
    """Pipes without a writer and devices without an end, as scans and as boundary file."""
    write_workspace(tmp_path, {"a.xyz": scan(10)})
    scans = tmp_path / "scans"
    os.mkfifo(scans / "pipe.xyz")
    (scans / "endless.txt").symlink_to("/dev/zero")
    (scans / "directory.node").mkdir()
    run = program.run(tmp_path, *ARGUMENTS, "-pipe")
    assert run.code == 0
    skips = [m[2].rsplit("/", 1)[1] for m in run.messages if m[2].startswith("Skipping")]
    reason = ": it is not a regular file"
    assert sorted(skips) == ["endless.txt" + reason, "pipe.xyz" + reason]
    assert [m for m in run.messages if not m[2].startswith("Skipping")] == [
        START,
        CLIPPING,
        FINISHED,
    ]
    os.mkfifo(tmp_path / "pipe.xml")
    for boundary in ("pipe.xml", "/dev/zero", "scans"):
        run = program.run(tmp_path, "./scans", "again", boundary, "-pipe")
        assert run.code == 1
        assert run.messages[1] == ("error", 1, f"Boundary file named {boundary} not found")
        assert not (tmp_path / "again").exists()
