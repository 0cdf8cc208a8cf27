"""Runs that are ended, and files that change under a run."""

import os
import random
import shutil
import signal
import subprocess
import time

import pytest
from harness import (
    ARGUMENTS, Link, boundary_not_found, in_any_order, messages, read_tree, write_tree
)
from workspace import (
    assert_beginning, assert_inputs_unchanged, is_cut_by_the_system, kept, kept_count, scan,
    write_workspace
)

KILLS = int(os.environ.get("VELDTRIM_KILLS", "100"))


def start(program, directory):
    """Begins a run whose output directory is not there yet."""
    shutil.rmtree(directory / "clipped", ignore_errors=True)
    quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    return subprocess.Popen([*program.command, *ARGUMENTS], cwd=directory, **quiet)


def test_killed_at_any_moment(program, tmp_path):
    """Every output file is the beginning of the right one and ends with a whole line.

    Only a kill in the midst of a single write can cut a line, and only where the kernel divides
    that write: one in some hundred kills.
    """
    scans = {f"{name}.xyz": scan(40_000, 100_000 * i) for i, name in enumerate("abc")}
    write_workspace(tmp_path, scans)
    total = b"%d\n" % sum(map(kept_count, scans.values()))
    began = time.monotonic()
    assert start(program, tmp_path).wait(60) == 0
    duration = time.monotonic() - began
    moments = random.Random(4711)
    unfinished = cut = 0
    for _ in range(KILLS):
        process = start(program, tmp_path)
        time.sleep(moments.uniform(0, duration))
        process.kill()
        assert process.wait(60) in (0, -signal.SIGKILL)
        for path in tmp_path.glob("clipped/*"):
            content = path.read_bytes()
            if path.name == "total_node_count.txt":
                assert content in (b"", total)
            elif is_cut_by_the_system(content):
                assert kept(scans[path.name]).startswith(content)
                cut += 1
            else:
                assert_beginning(content, scans[path.name])
                unfinished += kept(scans[path.name]) != content
    assert_inputs_unchanged(tmp_path, scans)
    assert unfinished > KILLS // 10, "the kills did not meet runs in the middle"
    assert cut <= 1 + KILLS // 50


def change_before_its_turn(program, directory, change):
    """Runs with two scans, and changes the one whose turn comes second while the first is clipped.

    Returns the names of the first and of the changed scan, and the run's exit code.
    """
    for _ in range(20):
        process = start(program, directory)
        while process.poll() is None and not list(directory.glob("clipped/*")):
            pass
        process.send_signal(signal.SIGSTOP)
        outputs = [path.name for path in directory.glob("clipped/*")]
        met = process.poll() is None and len(outputs) == 1
        if met:
            second = {"a.xyz": "b.xyz", "b.xyz": "a.xyz"}[outputs[0]]
            change(directory / "scans" / second)
        process.send_signal(signal.SIGCONT)
        code = process.wait(60)
        if met:
            return outputs[0], second, code
    return pytest.skip("the run could not be stopped in the middle")


SCAN = scan(150_000)
HALF = len(SCAN) // 2


@pytest.mark.parametrize(
    "change, expected",
    [
        (os.unlink, b""),
        (lambda path: os.truncate(path, 0), b""),
        (lambda path: os.truncate(path, HALF), kept(SCAN[:HALF]).removesuffix(b"\n") + b"\n"),
        (lambda path: path.write_bytes(SCAN + scan(10)), kept(SCAN)),
        (lambda path: path.write_bytes(b"another file\n" * 1000), b""),
    ],
    ids=["vanishes", "is emptied", "shrinks", "grows", "is replaced"],
)
def test_scan_changes_after_it_was_counted(program, tmp_path, change, expected):
    """As many records as were counted are read, of what is there then."""
    write_workspace(tmp_path, {"a.xyz": SCAN, "b.xyz": SCAN})
    first, second, code = change_before_its_turn(program, tmp_path, change)
    outputs = {first: kept(SCAN), **({second: expected} if expected else {})}
    total = sum(content.count(b"\n") - 1 for content in outputs.values())
    assert code == 0
    assert read_tree(tmp_path / "clipped") == {
        **outputs, "total_node_count.txt": b"%d\n" % total
    }


def test_what_is_no_file_keeps_no_run_waiting(program, workspace):
    """Pipes without a writer and devices without an end, as scans and as boundary file."""
    os.mkfifo(workspace / "scans/pipe.xyz")
    os.mkfifo(workspace / "pipe.xml")
    write_tree(workspace, {"scans/endless.txt": Link("/dev/zero"), "scans/directory.node": None})
    run = program.run(workspace, *ARGUMENTS, "-pipe")
    skipped = dict.fromkeys(["./scans/endless.txt", "./scans/pipe.xyz"], "no file")
    assert (run.code, in_any_order(run.messages)) == (0, in_any_order(messages(1, skipped)))
    for boundary in ("pipe.xml", "/dev/zero", "scans"):
        run = program.run(workspace, "./scans", "again", boundary, "-pipe")
        assert run.messages == boundary_not_found(boundary).messages
        assert run.code == 1 and not (workspace / "again").exists()
