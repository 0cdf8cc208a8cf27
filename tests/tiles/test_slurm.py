"""Runs in shards on a real Slurm: the same as one run, whatever ends or cuts off."""

import os
import re
import resource
import shutil
import signal
import subprocess
import time
from pathlib import Path

import pytest
from conftest import Tiles
from harness import ARGUMENTS, SQUARE_XML, read_tree, write_tree
from processes import kill, scan, wait_until
from slurm_cluster import Cluster, missing
from test_equality import check_random_workspace

WORKSPACES = int(os.environ.get("VELDTRIM_SLURM_WORKSPACES", "6"))
SLURM = ["--slurm", "--shards", 6]
ROOT = Path(__file__).parents[2]
PAGE = (ROOT / "docs/cluster.md").read_text(encoding="utf-8")
RECIPES = dict(re.findall(r"^<!-- recipe: (\w+) -->\n```sh\n(.*?)^```$", PAGE, re.M | re.S))


@pytest.fixture(scope="module")
def cluster(tmp_path_factory):
    if missing():
        pytest.skip(missing())
    # Six shards need two arrays.
    with Cluster(str(tmp_path_factory.mktemp("cluster")), nodes=3, array_size=5) as cluster:
        yield cluster


@pytest.fixture
def slurm(tiles, cluster):
    wait_until(lambda: cluster.idle_nodes() == len(cluster.nodes), 90)
    yield Tiles(tiles.command, tiles.program, cluster.environment)
    subprocess.run(["scancel", "--me"], env=cluster.environment, check=True)


@pytest.fixture
def area(tmp_path):
    """A workspace with tiles of several parts, whose directory has a difficult name."""
    area = tmp_path / "an area; $(x) %j {} é"
    write_tree(area, {f"scans/{i}.xyz": scan(30_000, i) for i in range(8)})
    write_tree(area, {"scans/large.txt": scan(400_000), "boundary.xml": SQUARE_XML})
    return area


@pytest.fixture
def slow_area(area):
    """The same, whose shards take long enough to be caught."""
    write_tree(area, {"scans/slow.txt": scan(2_500_000)})
    return area


@pytest.fixture
def expected(tiles, area):
    return tiles.one_run(area)[1]


def check_result(area, expected):
    assert read_tree(area / "clipped") == expected
    assert sorted(os.listdir(area)) == ["boundary.xml", "clipped", "scans"]


def attempts(area):
    """The attempts that have begun to clip."""
    return list(area.glob("clipped.staging/attempts/*/out"))


@pytest.mark.parametrize("seed", range(WORKSPACES))
def test_random_workspace(slurm, tmp_path, seed):
    check_random_workspace(slurm, tmp_path, 10_000 + seed, ["--slurm"])


def test_commands_of_the_page(tiles, tmp_path):
    """What docs/cluster.md tells whoever tries a cluster on one machine."""
    if missing():
        pytest.skip(missing())
    shutil.copytree(ROOT / "examples/jacksboro", tmp_path / "build/example/jacksboro")
    (tmp_path / "build/release").mkdir()
    (tmp_path / "build/release/bin").symlink_to(os.path.dirname(tiles.command))
    script = "".join([RECIPES["start"], "trap '", RECIPES["stop"], "' EXIT\n", RECIPES["clip"]])
    run = subprocess.run(["bash", "-ec", script], cwd=tmp_path, stdin=subprocess.DEVNULL,
                         capture_output=True, text=True, timeout=120,
                         env={**os.environ, "HOME": str(tmp_path)})
    assert run.returncode == 0 and run.stdout.endswith("\n6033\n"), run.stdout + run.stderr
    assert os.listdir(tmp_path) == ["build"]


def test_several_arrays_and_parts(slurm, area, expected):
    run = slurm.run(area, *ARGUMENTS, *SLURM, "--jobs", 2)
    assert run.code == 0, run.stderr
    assert run.stderr.count("Submitted to Slurm as job ") == 2
    assert run.stderr.count("Clipping elevation data...") == len(os.listdir(area / "scans"))
    check_result(area, expected)


def test_nodes_that_fail(slurm, cluster, slow_area, expected):
    """One loses its power. Another loses its network, and its copy of a shard goes on beside the
    one that is started elsewhere."""
    if not cluster.has_namespaces:
        pytest.skip("needs namespaces")
    dark, alone, _ = cluster.nodes
    process = slurm.start(slow_area, *ARGUMENTS, *SLURM, stderr=subprocess.PIPE)

    def freeze():  # so that no shard is done before the other copy begins
        kill(dark.clipping() + alone.clipping(), signal.SIGSTOP)
        return dark.clipping() and alone.clipping()

    frozen = wait_until(freeze)
    dark.lose_power()
    alone.set_network(False)
    try:
        shard = os.path.basename(os.readlink(f"/proc/{frozen[0]}/cwd")).split("-")[0]
        staging = slow_area / "clipped.staging"
        wait_until(lambda: len(list(staging.glob(f"attempts/{shard}-*"))) > 1 or
                   (staging / "done" / shard).exists() or (slow_area / "clipped").exists(), 150)
        kill(frozen, signal.SIGCONT)
        _, said = process.communicate(timeout=120)
    finally:
        kill(frozen, signal.SIGCONT)
        alone.set_network(True)
        dark.start()
    assert process.returncode == 0, said
    check_result(slow_area, expected)


def test_controller_that_fails(slurm, cluster, slow_area, expected):
    process = slurm.start(slow_area, *ARGUMENTS, *SLURM, stderr=subprocess.PIPE)
    frozen = wait_until(lambda: [each for node in cluster.nodes for each in node.clipping()])
    kill(frozen, signal.SIGSTOP)
    time.sleep(6)  # a controller notes every five seconds what it knows
    cluster.controller.kill()
    cluster.controller.wait()
    wait_until(lambda: b"Slurm does not answer" in process.stderr.readline())
    kill(frozen, signal.SIGCONT)
    cluster.start_controller()
    _, said = process.communicate(timeout=120)
    assert process.returncode == 0, said
    check_result(slow_area, expected)


@pytest.mark.parametrize("how", [signal.SIGHUP, signal.SIGKILL], ids=["closed", "killed"])
def test_command_that_is_gone(slurm, area, expected, how):
    """The jobs end the run, and the same command tells the rest."""
    process = slurm.start(area, *ARGUMENTS, *SLURM)
    wait_until(lambda: attempts(area))
    process.send_signal(how)
    process.wait()
    if how == signal.SIGHUP:
        wait_until((area / "clipped").exists)
        assert read_tree(area / "clipped") == expected
    run = slurm.run(area, *ARGUMENTS, *SLURM)
    assert run.code == 0, run.stderr
    assert "Submitted" not in run.stderr
    assert run.stderr.count("Clipping elevation data...") == len(os.listdir(area / "scans"))
    check_result(area, expected)


def test_interrupted(slurm, cluster, area, expected):
    """No job is left, and the same command goes on."""
    process = slurm.start(area, *ARGUMENTS, *SLURM, stderr=subprocess.PIPE)
    wait_until(lambda: attempts(area))
    second = slurm.run(area, *ARGUMENTS, *SLURM)
    assert second.code == 1 and "another command is at work" in second.stderr
    process.send_signal(signal.SIGINT)
    _, said = process.communicate(timeout=60)
    assert process.returncode == 1
    assert b"interrupted: give the same command to go on" in said
    wait_until(lambda: not cluster.output("squeue", "--noheader", "--me"))
    assert not (area / "clipped").exists()
    assert slurm.run(area, *ARGUMENTS, *SLURM).code == 0
    check_result(area, expected)


def test_shard_that_always_fails(slurm, cluster, area, expected):
    """It is named with the error of one run, and no further shard begins."""
    limit = 300_000  # bytes: enough for all but the large tile
    options = ["--slurm", "--shard-size", "50MB", "-pipe"]
    begun = time.monotonic()
    run = slurm.run(area, *ARGUMENTS, *options, preexec_fn=lambda: (
        resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))))
    assert run.code == 1 and time.monotonic() - begun < 20
    assert ("error", 0, "cannot write ./clipped/large.txt: File too large") in run.messages
    assert ("state", 1, "Shard 1 failed; its log is ./clipped.staging/failed/1.log") in run.messages
    assert not (area / "clipped").exists()
    assert cluster.output("squeue", "--noheader", "--me") == ""
    assert slurm.run(area, *ARGUMENTS, "--slurm").code == 0
    check_result(area, expected)


def test_disk_full(slurm, cluster, area, expected):
    """With room again, the same command goes on."""
    if not cluster.has_namespaces:
        pytest.skip("mounting a small disk needs privileges")
    os.symlink(area / "scans", os.path.join(cluster.disk, "scans"))
    arguments = [os.path.join(cluster.disk, "scans"), "clipped", "boundary.xml", *SLURM]
    run = slurm.run(area, *arguments)
    assert run.code == 1 and "No space left on device" in run.stderr, run.stderr
    assert "clipped" not in os.listdir(cluster.disk)
    cluster.run("mount", "-o", "remount,size=100m", cluster.disk)
    assert slurm.run(area, *arguments).code == 0
    assert read_tree(os.path.join(cluster.disk, "clipped")) == expected


@pytest.mark.parametrize("sbatch, words", [
    ("--partition=none", "Slurm does not take the job: sbatch: error: invalid partition"),
    ("--time=0:05 --job-name=mine --no-such", "unrecognized option"),
])
def test_jobs_that_slurm_refuses(slurm, cluster, area, expected, sbatch, words):
    run = slurm.run(area, *ARGUMENTS, *SLURM, "--sbatch", sbatch)
    assert run.code == 1 and words in run.stderr
    assert cluster.output("squeue", "--noheader", "--me") == ""
    assert slurm.run(area, *ARGUMENTS, *SLURM, "--sbatch", '"--comment=a b" --nice=5').code == 0
    check_result(area, expected)


def test_job_that_slurm_ends(slurm, cluster, area, expected):
    """Slurm alone knows why: the user hears it."""
    process = slurm.start(area, *ARGUMENTS, *SLURM, stderr=subprocess.PIPE)
    wait_until(lambda: attempts(area))
    subprocess.run(["scancel", "--me"], env=cluster.environment, check=True)
    _, said = process.communicate(timeout=60)
    assert process.returncode == 1 and b" as CANCELLED" in said, said
    assert slurm.run(area, *ARGUMENTS, *SLURM).code == 0
    check_result(area, expected)


def test_tile_index(slurm, tiles, area, expected):
    assert tiles.run(area, "index", "./scans", "here.geojson").code == 0
    run = slurm.run(area, "index", "./scans", "there.geojson", "--slurm")
    assert run.code == 0, run.stderr
    assert (area / "here.geojson").read_bytes() == (area / "there.geojson").read_bytes()
    (area / "here.geojson").unlink()
    assert slurm.run(area, *ARGUMENTS, *SLURM, "--tile-index", "there.geojson").code == 0
    (area / "there.geojson").unlink()
    check_result(area, expected)
