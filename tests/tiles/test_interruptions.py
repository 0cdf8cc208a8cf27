"""Runs in shards that are ended, go on, fail, or meet each other."""

import os
import random
import resource
import shutil
import signal
import subprocess
import time

import pytest
from harness import ARGUMENTS, SQUARE_XML, read_tree, write_tree
from processes import descendants, kill, running, scan, wait_until

KILLS = int(os.environ.get("VELDTRIM_TILES_KILLS", "20"))
SHARDS = ["--shards", 5, "--jobs", 2]


@pytest.fixture
def area(tmp_path):
    """A workspace whose clipping takes a while, with a tile of several parts."""
    write_tree(tmp_path, {f"scans/{i}.xyz": scan(20_000, i) for i in range(6)})
    write_tree(tmp_path, {"scans/large.txt": scan(200_000), "boundary.xml": SQUARE_XML})
    return tmp_path


def quiet():
    return {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}


def test_killed_at_any_moment(tiles, area, tmp_path_factory, monkeypatch):
    """The command, one of its jobs or all at once: the same command goes on to the same end, and
    no copy of a part is left in the temporary directory."""
    monkeypatch.setenv("TMPDIR", str(tmp_path_factory.mktemp("copies")))
    _, expected = tiles.one_run(area)
    begun = time.monotonic()
    assert tiles.run(area, *ARGUMENTS, *SHARDS).code == 0
    duration = time.monotonic() - begun
    assert read_tree(area / "clipped") == expected
    moments = random.Random(4711)
    unfinished = 0
    for _ in range(KILLS):
        shutil.rmtree(area / "clipped")
        process = tiles.start(area, *ARGUMENTS, *SHARDS, **quiet())
        time.sleep(moments.uniform(0, duration))
        jobs = descendants(process.pid)
        victims = moments.choice([[process.pid], [process.pid, *jobs], moments.sample(jobs, 1)]
                                 if jobs else [[process.pid]])
        kill(victims)
        process.wait(60)
        if (area / "clipped").exists():
            assert read_tree(area / "clipped") == expected
        else:
            unfinished += 1
        if not (area / "clipped").exists() or (area / "clipped.staging").exists():
            run = tiles.run(area, *ARGUMENTS, *SHARDS)
            assert run.code == 0, run.stderr
        assert read_tree(area / "clipped") == expected
        assert sorted(os.listdir(area)) == ["boundary.xml", "clipped", "scans"]
    assert unfinished > KILLS // 5, "the kills did not meet runs in the middle"
    assert not [name for name in os.listdir(os.environ["TMPDIR"]) if name.startswith("veldtrim")]


@pytest.mark.parametrize("how", [signal.SIGINT, signal.SIGTERM], ids=["Ctrl-C", "end"])
def test_interrupted(tiles, area, how):
    """All jobs end, what they did not finish is removed, and the user hears how to go on."""
    _, expected = tiles.one_run(area)
    process = tiles.start(area, *ARGUMENTS, *SHARDS, stdout=subprocess.DEVNULL,
                          stderr=subprocess.PIPE)
    while not list(area.glob("clipped.staging/attempts/*")):
        assert process.poll() is None
    jobs = descendants(process.pid)
    process.send_signal(how)
    _, said = process.communicate(timeout=60)
    assert process.returncode == 1
    assert b"interrupted: give the same command to go on" in said
    assert jobs and not set(jobs) & set(running())
    assert os.listdir(area / "clipped.staging/attempts") == []
    assert not (area / "clipped").exists()
    assert tiles.run(area, *ARGUMENTS, *SHARDS).code == 0
    assert read_tree(area / "clipped") == expected


HASTY_ENGINE = """#!/bin/sh
# GNU parallel at the moment at which it has started a job and not noted it.
trap 'exit 255' TERM
for number in $(cat); do setsid sh -c "\"$VELDTRIM_TILES\" clip . $number" & done
sleep 60 & wait
"""


def test_engine_that_leaves_jobs_behind(tiles, area):
    """They are ended all the same, so that nothing is at work after the command."""
    write_tree(area, {"programs/parallel": HASTY_ENGINE})
    (area / "programs/parallel").chmod(0o755)
    process = tiles.start(area, *ARGUMENTS, *SHARDS, **quiet(), env={
        **os.environ, "PATH": f"{area}/programs:{os.environ['PATH']}"})
    while len(list(area.glob("clipped.staging/attempts/*"))) < 3:
        assert process.poll() is None
    jobs = descendants(process.pid)
    process.terminate()
    assert process.wait(60) == 1
    assert len(jobs) >= 3 and not set(jobs) & set(running())
    assert os.listdir(area / "clipped.staging/attempts") == []


def test_two_commands_at_once(tiles, area):
    first = tiles.start(area, *ARGUMENTS, *SHARDS, **quiet())
    wait_until((area / "clipped.staging/plan").exists)
    for command in (ARGUMENTS, ["plan", *ARGUMENTS], ["merge", "clipped.staging"]):
        second = tiles.run(area, *command)
        assert second.code == 1
        assert "another command is at work in " in second.stderr
    assert first.wait(60) == 0


def change_tile(area):
    write_tree(area, {"scans/0.xyz": scan(10)})


def touch_tile(area):
    os.utime(area / "scans/0.xyz", (1, 1))


def add_tile(area):
    write_tree(area, {"scans/new.txt": scan(1)})


def change_boundary(area):
    write_tree(area, {"boundary.xml": SQUARE_XML + "\n"})


@pytest.mark.parametrize(
    "change, arguments, code",
    [
        (None, [*ARGUMENTS, "--shards", 5], 0),
        (None, ARGUMENTS, 0),
        (None, [*ARGUMENTS, "--jobs", 3], 0),
        (None, [*ARGUMENTS, "--shards", 6], 1),
        (None, ["././scans", *ARGUMENTS[1:]], 1),
        (change_tile, ARGUMENTS, 1),
        (touch_tile, ARGUMENTS, 1),
        (add_tile, ARGUMENTS, 1),
        (change_boundary, ARGUMENTS, 1),
    ],
)
def test_only_the_same_plan_goes_on(tiles, area, change, arguments, code):
    assert tiles.run(area, "plan", *ARGUMENTS, "--shards", 5).code == 0
    plan = read_tree(area / "clipped.staging/plan")
    if change:
        change(area)
    run = tiles.run(area, *arguments)
    assert run.code == code, run.stderr
    if code:
        assert "./clipped.staging belongs to another plan" in run.stderr
        assert read_tree(area / "clipped.staging/plan") == plan
    assert (area / "clipped").exists() == (code == 0)


@pytest.mark.parametrize("engine, words", [([], "GNU parallel is not installed"),
                                           (["--slurm"], "Slurm is not installed")])
def test_engine_that_is_not_installed(tiles, area, engine, words):
    """A single shard needs none on this machine."""
    nowhere = {**os.environ, "PATH": "/nowhere"}
    run = tiles.run(area, *ARGUMENTS, *engine, "--shards", 2, env=nowhere)
    assert run.code == 1 and words in run.stderr
    shutil.rmtree(area / "clipped.staging")
    assert tiles.run(area, *ARGUMENTS, "--shards", 1, env=nowhere).code == 0


def test_directory_of_somebody_else(tiles, workspace):
    write_tree(workspace, {"clipped.staging/mine": "kept"})
    before = read_tree(workspace)
    run = tiles.run(workspace, *ARGUMENTS)
    assert run.code == 1 and "it is not a staging directory" in run.stderr
    assert read_tree(workspace) == before


def test_output_that_comes_to_exist(tiles, workspace):
    """It stays as it is, and so does what is done."""
    assert tiles.run(workspace, "plan", *ARGUMENTS).code == 0
    assert tiles.run(workspace, "clip", "clipped.staging", 1).code == 0
    write_tree(workspace, {"clipped": None})
    run = tiles.run(workspace, "merge", "clipped.staging")
    assert run.code == 1 and "File exists" in run.stderr
    assert os.listdir(workspace / "clipped") == []
    (workspace / "clipped").rmdir()
    assert tiles.run(workspace, *ARGUMENTS).code == 0
    assert (workspace / "clipped/total_node_count.txt").read_text() == "1\n"


def test_shard_that_always_fails(tiles, area):
    """It is named with the error of one run and its log, and goes on when the cause is gone."""
    _, expected = tiles.one_run(area)
    limit = 300_000  # bytes: enough for all but the large tile
    begun = time.monotonic()
    run = tiles.run(area, *ARGUMENTS, "--shard-size", "50MB", "-pipe", preexec_fn=lambda: (
        resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))))
    assert time.monotonic() - begun < 20
    assert run.code == 1
    assert ("error", 0, "cannot write ./clipped/large.txt: File too large") in run.messages
    said = run.messages[-3][2]
    assert said == "Shard 1 failed; its log is ./clipped.staging/failed/1.log"
    assert "File too large" in (area / "clipped.staging/failed/1.log").read_text()
    assert not (area / "clipped").exists()
    assert tiles.run(area, *ARGUMENTS).code == 0
    assert read_tree(area / "clipped") == expected


def test_tile_that_is_lost(tiles, area):
    """One run would go on without it. A shard does not: a machine may have lost its disk."""
    assert tiles.run(area, "plan", *ARGUMENTS, "--shards", 1).code == 0
    lost, place = area / "scans/0.xyz", area / "0.xyz"
    lost.rename(place)
    run = tiles.run(area, "clip", "clipped.staging", 1)
    assert run.code == 1
    assert "./scans/0.xyz: it cannot be read: No such file or directory" in run.stderr
    assert os.listdir(area / "clipped.staging/done") == []
    place.rename(lost)
    assert tiles.run(area, *ARGUMENTS).code == 0


@pytest.mark.parametrize("damage", ["report.json", "out/0.xyz"])
def test_results_that_were_damaged(tiles, area, damage):
    """After a power failure, say: the shard is clipped again."""
    _, expected = tiles.one_run(area)
    assert tiles.run(area, "plan", *ARGUMENTS, "--shards", 5).code == 0
    for shard in range(1, 6):
        assert tiles.run(area, "clip", "clipped.staging", shard).code == 0
    os.truncate(area / "clipped.staging/done/3" / damage, 0)
    run = tiles.run(area, *ARGUMENTS)
    assert run.code == 1 and "the results of shard 3 are damaged" in run.stderr
    assert not (area / "clipped").exists()
    assert tiles.run(area, *ARGUMENTS).code == 0
    assert read_tree(area / "clipped") == expected


def test_disk_full(tiles, area):
    """With room again, the same command goes on."""
    _, expected = tiles.one_run(area)
    disk = area / "disk"
    disk.mkdir()
    mount = ["mount", "-t", "tmpfs", "-o", "size=1m", "veldtrim-test", disk]
    if os.geteuid() != 0 or subprocess.run(mount, capture_output=True).returncode != 0:
        pytest.skip("mounting a small disk needs privileges")
    try:
        (disk / "scans").symlink_to(area / "scans")
        arguments = ["disk/scans", "clipped", "boundary.xml", *SHARDS]
        run = tiles.run(area, *arguments, "-pipe")
        assert run.code == 1
        assert "No space left on device" in run.stderr
        assert not (disk / "clipped").exists()
        subprocess.run(["mount", "-o", "remount,size=100m", disk], check=True)
        assert tiles.run(area, *arguments).code == 0
        assert read_tree(disk / "clipped") == expected
    finally:
        subprocess.run(["umount", disk], check=True)
