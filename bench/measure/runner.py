"""Runs commands and programs of benchmarks, in turn with one another."""

import json
import os
import re
import resource
import shlex
import shutil
import subprocess
import time
from dataclasses import dataclass

NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


@dataclass
class Run:
    """What a run of a command has taken."""

    code: int
    wall: float  # seconds
    processor: float  # seconds
    peak: int  # KiB


def remove(path):
    if os.path.isdir(path):
        shutil.rmtree(path)
    elif os.path.exists(path):
        os.remove(path)


class Command:
    """A command. Its output, a file or an output directory of Veldtrim, is removed after each run.

    `kept` is the number of records in that output, once the command has run.
    """

    def __init__(self, words, scratch, output="", to_output=False, codes=(0,)):
        self.words = words
        self.output = output
        self.to_output = to_output  # whether the output is what the command prints
        self.codes = codes
        self.kept = None
        self.report = os.path.join(scratch, "peak")

    def __call__(self):
        remove(self.output)
        # The system counts in a peak what a process held before it became the command. So a small
        # program has to start it.
        words = ["/usr/bin/time", "--quiet", "-f", "%M", "-o", self.report, *self.words]
        with open(self.output if self.to_output else os.devnull, "w") as printed:
            before = resource.getrusage(resource.RUSAGE_CHILDREN)
            start = time.perf_counter()
            process = subprocess.run(words, stdout=printed, stderr=subprocess.PIPE, text=True)
            wall = time.perf_counter() - start
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
        if process.returncode not in self.codes:
            raise SystemExit(f"bench/run: {shlex.join(self.words)}: {process.stderr}")
        self._count_kept()
        remove(self.output)
        with open(self.report) as report:
            peak = int(report.read())
        processor = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        return Run(process.returncode, wall, processor, peak)

    def _count_kept(self):
        total = os.path.join(self.output, "total_node_count.txt")
        if self.kept is None and os.path.exists(total):
            with open(total) as file:
                self.kept = int(file.read())
        elif self.kept is None and os.path.isfile(self.output):
            with open(self.output, "rb") as file:
                self.kept = sum(1 for _ in file) - 1  # the header


class Profile:
    """A command under a tool of valgrind; gives the number that follows `pattern` in its report."""

    def __init__(self, command, tool, pattern):
        self.command = command
        self.words = ["valgrind", *tool, *command.words]
        self.pattern = pattern

    def __call__(self):
        remove(self.command.output)
        process = subprocess.run(self.words, capture_output=True, text=True, check=True)
        remove(self.command.output)
        return int(re.search(self.pattern, process.stderr).group(1).replace(",", ""))


class GoogleBenchmark:
    """One round of benchmarks inside a process, in random order; gives the results by name."""

    def __init__(self, program, names, seconds, data):
        self.result = os.path.join(data.scratch, "benchmark.json")
        self.directory = data.directory
        self.words = [program, f"--benchmark_filter=^({'|'.join(names)})$"]
        self.words += [f"--benchmark_min_time={seconds}", "--benchmark_out_format=json"]
        self.words += ["--benchmark_enable_random_interleaving=true"]
        self.words += [f"--benchmark_out={self.result}"]

    def __call__(self):
        process = subprocess.run(self.words, cwd=self.directory, capture_output=True, text=True)
        if process.returncode != 0:
            raise SystemExit(f"bench/run: {self.words[0]}: {process.stderr}")
        with open(self.result) as file:
            text = file.read()  # nothing when the program has none of the benchmarks
        results = json.loads(text)["benchmarks"] if text else []
        for each in results:
            each["nanoseconds"] = each["cpu_time"] * NANOSECONDS[each["time_unit"]]
        return {each["run_name"]: each for each in results}


def in_turn(samplers, runs, first_counts=False):
    """Runs A B A B ..., so that what else the machine does falls on all of them alike.

    Gives a list of the samples of each. A first round, which finds the caches cold, does not count
    unless it says so.
    """
    rounds = range(runs if first_counts else runs + 1)
    samples = [[sample() for sample in samplers] for _ in rounds]
    return [list(each) for each in zip(*samples[-runs:])]
