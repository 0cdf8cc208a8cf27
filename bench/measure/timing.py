"""Times whole commands, in turn with one another."""

import json
import os
import shlex
import statistics
import subprocess
import sys
from dataclasses import dataclass, field
from typing import Callable


def say(text):
    print(f"bench/run: {text}", file=sys.stderr, flush=True)


@dataclass
class Timed:
    """A command, and the seconds that each of its runs took."""

    command: list
    standard_output: str = "null"
    clean: Callable = lambda: None  # called after every run
    wall: list = field(default_factory=list)
    processor: list = field(default_factory=list)

    def run_once(self, scratch):
        result_path = os.path.join(scratch, "hyperfine.json")
        hyperfine = ["hyperfine", "--shell=none", "--style=none", "--runs=1"]
        hyperfine += ["--output", self.standard_output, "--export-json", result_path]
        process = subprocess.run(
            [*hyperfine, "--", shlex.join(self.command)], capture_output=True, text=True
        )
        if process.returncode != 0:
            raise SystemExit(f"bench/run: {shlex.join(self.command)}: {process.stderr}")
        with open(result_path) as file:
            result = json.load(file)["results"][0]
        return result["times"][0], result["user"] + result["system"]


def time_in_turn(commands, runs, scratch):
    """Runs A B A B ..., so that what else the machine does falls on all of them alike.

    A first round, which finds the caches cold, does not count.
    """
    for turn in range(runs + 1):
        for timed in commands:
            try:
                wall, processor = timed.run_once(scratch)
            finally:
                timed.clean()
            if turn > 0:
                timed.wall.append(wall)
                timed.processor.append(processor)


def median(values):
    return statistics.median(values)
