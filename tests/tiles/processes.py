"""The processes of a run in shards, and tiles that keep them busy."""

import os
import signal
import time


def scan(records, first=0):
    return "x;y;z\n" + "".join(f"{9 if i % 3 else 5};5;{first + i}\n" for i in range(records))


def running():
    """The numbers of all processes that have not ended, and their parents."""
    parents = {}
    for number in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{number}/stat") as file:
                state, parent = file.read().rsplit(")", 1)[1].split()[:2]
        except OSError:
            continue
        if state != "Z":
            parents[int(number)] = int(parent)
    return parents


def descendants(process):
    """The numbers of all processes that a process has started, directly or not."""
    parents = running()
    found = [process]
    for each in found:
        found += [child for child, parent in parents.items() if parent == each]
    return found[1:]


def kill(numbers, how=signal.SIGKILL):
    for number in numbers:
        try:
            os.kill(number, how)
        except ProcessLookupError:
            pass


def wait_until(condition, seconds=60):
    """Waits until the condition is true, and returns it."""
    deadline = time.monotonic() + seconds
    while not (result := condition()):
        assert time.monotonic() < deadline, "waited too long"
        time.sleep(0.002)
    return result
