"""Files that the system withholds at a system call of a run: each is said once, with the reason."""

import errno
import os
import shutil
import subprocess

import pytest
from harness import ARGUMENTS, KEPT, SQUARE_XML, messages, read_tree, write_tree

DENIED = os.strerror(errno.EACCES)
FULL = os.strerror(errno.ENOSPC)
SCAN = KEPT + "9;9;2\n"
SKIPPED = "Skipping input file ./scans/b.xyz: it cannot be read: "
NOT_CREATED = f"Cannot create output file ./clipped/b.xyz: {DENIED}: its records are counted but" \
    " not written"
NO_TOTAL = "Cannot write ./clipped/total_node_count.txt: "
B, OUTPUT, TOTAL = "./scans/b.xyz", "./clipped/b.xyz", "./clipped/total_node_count.txt"


@pytest.fixture(scope="session")
def traced(program, tmp_path_factory):
    """Runs the program with a system call on a path that fails: (call, error, times)."""
    if not shutil.which("strace"):
        pytest.skip("needs strace")
    log = tmp_path_factory.mktemp("strace") / "log"

    def command(directory, path, call, error, when):
        # A call may name the path as the program does, or by a descriptor.
        paths = ["-P", path, "-P", directory / path]
        fault = ["-e", f"trace={call}", "-e", f"inject={call}:error={error}:when={when}"]
        return ["strace", "--quiet=all", "-f", "-o", log, *paths, *fault]

    probe = [*command(log.parent, "none", "openat", "EACCES", 9), "true"]
    if subprocess.run(probe).returncode != 0:
        pytest.skip("strace may not trace here")
    return command


# What fails, at which of its calls; what the run says; which scans are written, and how many
# records are in the total, None where it cannot be written. A scan is opened to read its header, to
# count its records, and to clip it.
@pytest.mark.parametrize(
    "fault, said, written, total",
    [
        ((B, "openat", "EACCES", "1"), SKIPPED + DENIED, "ac", 2),
        ((B, "openat", "EACCES", "2"), SKIPPED + DENIED, "ac", 2),
        ((B, "openat", "EACCES", "3"), SKIPPED + DENIED, "ac", 2),
        ((B, "openat", "EACCES", "2+"), SKIPPED + DENIED, "ac", 2),
        ((B, "read", "EIO", "1"), SKIPPED + os.strerror(errno.EIO), "ac", 2),
        ((OUTPUT, "openat", "EACCES", "1"), NOT_CREATED, "ac", 3),
        ((TOTAL, "openat", "EACCES", "1"), NO_TOTAL + DENIED, "abc", None),
        ((TOTAL, "write", "ENOSPC", "1"), NO_TOTAL + FULL, "abc", ""),
        ((TOTAL, "close", "ENOSPC", "1"), NO_TOTAL + FULL, "abc", 3),
    ],
    ids=lambda value: "-".join(value[1:]) if isinstance(value, tuple) else "",
)
def test_said_once(program, traced, tmp_path, fault, said, written, total):
    write_tree(tmp_path, {f"scans/{name}.xyz": SCAN for name in "abc"})
    write_tree(tmp_path, {"boundary.xml": SQUARE_XML})
    # LeakSanitizer cannot work in a traced process.
    environment = {**os.environ, "ASAN_OPTIONS": "detect_leaks=0"}
    command = [*traced(tmp_path, *fault), *program.command, *ARGUMENTS, "-pipe"]
    run = program.run_command(command, tmp_path, env=environment)
    assert run.code == 0
    clipped = sum(text == "Clipping elevation data..." for _, _, text in run.messages)
    assert sorted(run.messages) == sorted([*messages(clipped), ("state", 1, said)])
    assert clipped == 3 - said.startswith("Skipping") + (fault[1:] == ("openat", "EACCES", "2"))
    expected = {f"{name}.xyz": KEPT.encode() for name in written}
    if total is not None:
        expected["total_node_count.txt"] = f"{total}\n".encode() if total != "" else b""
    assert read_tree(tmp_path / "clipped") == expected
