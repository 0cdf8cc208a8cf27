"""Runs in shards against one run: the same files, messages and exit code."""

import os
import random

import pytest
from harness import ARGUMENTS, NO_SCANS, Link, boundary_file, read_tree, write_tree
from test_random_workspaces import random_groups, random_scan

WORKSPACES = int(os.environ.get("VELDTRIM_TILES_WORKSPACES", "60"))
NAMES = [
    " .txt", "a b.xyz", "line\nfeed.txt", "\"quoted'.node", "$HOME;rm -rf `x`.txt", "{}.txt",
    "{#}.xyz", "-pipe.txt", "--.xyz", "caf\udce9.txt", "%41.txt", "\\n.txt", "*.xyz", ".txt",
    "total_node_count.txt", "0.xyz", "x" * 251 + ".txt", "ü.node", "in.xyz", "\x1b[1m.txt",
]


def random_bytes(source, rings):
    """A tile: a random scan, whose lines may end in other ways, or what is none."""
    text, _ = random_scan(source, rings)
    kind = source.random()
    if kind < 0.1:
        return source.choice(["", "\n", "x;y;z", "x;y;z\n", "n", "y;x;z\n1;1;1\n", "\n1;1;1\n"])
    if kind < 0.2:
        text = text.replace("\r\n", "\n").replace("\n", source.choice(["\r\n", "\r\r\n"]))
    if kind > 0.9:
        text = text.replace("\n", "\n" * source.randint(1, 9))
    return text


def random_tiles(source, rings):
    tree = {}
    for name in source.sample(NAMES, source.randint(1, 8)):
        kind = source.random()
        if kind < 0.8:
            tree["scans/" + name] = random_bytes(source, rings)
        elif kind < 0.9:
            link = Link(source.choice(["../elsewhere", "../nowhere", ".", "/dev/null"]))
            tree.update({"elsewhere": random_bytes(source, rings), "scans/" + name: link})
        else:
            other = source.choice([name + "/a.xyz", name + "~", name.upper() + "X"])
            tree["scans/" + other[-250:]] = random_bytes(source, rings)
    return tree


def prepare_index(tiles, source, directory):
    """The options for a tile index: none, a new one, one of all tiles, or one of some as they
    were."""
    kind = source.choice(["none", "none", "new", "whole", "outdated"])
    if kind == "none":
        return []
    if kind in ("whole", "outdated"):
        run = tiles.run(directory, "index", "./scans", "index.geojson", "--jobs", 2)
        assert run.code == 0, run.stderr
    if kind == "outdated":
        scans = [path for path in sorted((directory / "scans").iterdir()) if path.is_file()]
        for path in source.sample(scans, len(scans) // 2):
            if path.stat().st_size and os.access(path, os.W_OK) and not path.is_char_device():
                moved = path.read_bytes().replace(b"9", b"0").replace(b"7", b"1")
                path.write_bytes(moved + b"\n" * source.randint(0, 1))
    return ["--tile-index", "index.geojson"]


def without_clipping(messages):
    return sorted(message for message in messages if message[2] != "Clipping elevation data...")


def check_random_workspace(tiles, tmp_path, seed, engine):
    """Compares a run in shards on an engine with one run."""
    source = random.Random(seed)
    groups, rings = random_groups(source)
    tree = {"boundary.xml": boundary_file(*groups)[0], **random_tiles(source, rings)}
    tree.update({"scans": None} if not any(name.startswith("scans/") for name in tree) else {})
    write_tree(tmp_path, tree)
    index = prepare_index(tiles, source, tmp_path)
    before = read_tree(tmp_path)
    expected, expected_tree = tiles.one_run(tmp_path)
    largest = max([len(content) for content in tree.values() if content], default=1)
    sizes = [[], ["--shards", source.randint(1, 6)],
             ["--shard-size", max(1, largest // source.randint(1, 8))]]
    run = tiles.run(tmp_path, *ARGUMENTS, "-pipe", *engine, *index, *source.choice(sizes))
    run.messages = [message for message in run.messages if "Slurm" not in message[2]]
    assert run.code == expected.code, run.stderr
    assert run.stdout == expected.stdout
    if index:  # what is left out is not clipped
        assert without_clipping(run.messages) == without_clipping(expected.messages)
    else:
        assert sorted(run.messages) == sorted(expected.messages)
    if run.code == 0:
        assert run.positions == sorted(run.positions) and run.positions[-1] == 100
    result = {f"clipped/{name}": content for name, content in expected_tree.items()}
    is_made = run.code == 0 or ("error", 2, NO_SCANS) in expected.messages
    created = {"clipped": None, **result} if is_made else {}
    after = read_tree(tmp_path)
    known = after.pop("index.geojson", None) or before.get("index.geojson")
    before.pop("index.geojson", None)
    assert after == {**before, **created}
    if index and run.code == 0:
        assert tiles.run(tmp_path, "index", "./scans", "index.geojson").code == 0
        assert (tmp_path / "index.geojson").read_bytes() == known, "the index was out of date"


@pytest.mark.parametrize("seed", range(WORKSPACES))
def test_random_workspace(tiles, tmp_path, seed):
    check_random_workspace(tiles, tmp_path, seed, ["--jobs", 2])


@pytest.mark.parametrize(
    "arguments, tree",
    [
        (["./scans", "clipped", "none.xml"], {}),
        (["./scans", "clipped", "boundary.xml"], {"boundary.xml": "<project><TavelDGM"}),
        (["scans", "clipped", "boundary.xml"], {}),
        (["./none", "clipped", "boundary.xml"], {}),
        (["none/scans", "clipped", "boundary.xml"], {}),
        (["./scans", "scans", "boundary.xml"], {}),
        (["./scans", "clipped", "boundary.xml"], {"clipped/mine": "kept"}),
        (["./scans", ".", "boundary.xml"], {}),
        (["./scans", "none/clipped", "boundary.xml"], {}),
        (["./scans", "file", "boundary.xml"], {"file": "mine"}),
        (["./scans", "link/", "boundary.xml"], {"link": Link("nowhere")}),
        (["./scans", "", "boundary.xml"], {}),
    ],
)
def test_failed_checks(tiles, workspace, arguments, tree):
    """The checks of a run, in its order and words, before anything is changed."""
    for name in tree:
        (workspace / name).unlink(missing_ok=True)
    write_tree(workspace, tree)
    before = read_tree(workspace)
    command = [*tiles.program.command, *arguments, "-pipe"]
    expected = tiles.program.run_command(command, workspace)
    assert expected.code == 1
    run = tiles.run(workspace, *arguments, "-pipe")
    assert (run.code, run.stdout, run.messages) == (1, expected.stdout, expected.messages)
    assert read_tree(workspace) == before


def test_steps_of_another_engine(tiles, workspace):
    """Each step from another directory, each shard twice, in any order; under a name that a pattern
    of the library would change."""
    workspace = workspace.rename(workspace.with_name("100%aa %j"))
    write_tree(workspace, {f"scans/{i}.xyz": "x y z\n" + "5 5 1\n" * i for i in range(9)})
    expected, tree = tiles.one_run(workspace)
    assert tiles.run(workspace, "plan", *ARGUMENTS, "--shards", 4).code == 0
    staging = workspace / "clipped.staging"
    numbers = (staging / "plan/numbers").read_text().split()
    assert numbers == ["1", "2", "3", "4"]
    merged = tiles.run("/", "merge", staging, "-pipe")
    assert merged.code == 1 and "shard 1 has not been clipped" in merged.stderr
    copies = [tiles.start("/", "clip", staging, number) for number in numbers[::-1] * 2]
    assert [copy.wait(60) for copy in copies] == [0] * 8
    assert sorted(os.listdir(staging / "done")) == numbers
    assert os.listdir(staging / "attempts") == []
    merged = tiles.run("/", "merge", staging, "-pipe")
    assert (merged.code, merged.messages[:-1]) == (0, expected.messages[1:-1])
    assert read_tree(workspace / "clipped") == tree
    assert not staging.exists()
