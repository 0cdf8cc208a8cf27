"""What every section needs: the builds, the inputs, and how samples become rows."""

import os
from dataclasses import dataclass, field
from typing import Optional

from . import table
from .build import Build, MissingProgram, say
from .inputs import Inputs
from .runner import Command, GoogleBenchmark, in_turn


@dataclass
class Plan:
    build: Build
    against: Optional[Build]  # measured instead of what else a case would be compared with
    data: Inputs
    runs: int
    records: int
    gigabytes: float
    quick: bool
    failures: list = field(default_factory=list)

    def against_name(self):
        return self.against.commit() or "the other build"

    def clip(self, build, inputs, boundary, codes=(0,)):
        """The command that clips the scans in the directory `inputs`."""
        output = os.path.join(os.path.dirname(inputs), "clipped")
        words = [build.program(), inputs, os.path.basename(output), boundary]
        return Command(words, self.data.scratch, output, codes=codes)

    def compare(self, section, what, figures, own, others=None, **rounds):
        """A row for each figure and each of `others`, samplers by name. `own` makes a build's
        sampler. Also returns the samplers and their samples, `own` first."""
        samplers = {"": own(self.build)}
        if self.against:
            try:
                samplers[self.against_name()] = own(self.against)
            except MissingProgram as missing:
                say(f"left out, there is no {missing}")
                return [], [], []
        else:
            samplers.update(others or {})
        rounds.setdefault("runs", self.runs)
        samples = in_turn(list(samplers.values()), **rounds)
        names = [described(name, sampler) for name, sampler in samplers.items()]
        rows = []
        for figure in figures:
            label = f"{what}{names[0]}" + (f": {figure.name}" if len(figures) > 1 else "")
            for name, other in list(zip(names, samples))[1:] or [("", ())]:
                rows.append(table.compare(section, label, figure, samples[0], name, other))
        return rows, list(samplers.values()), samples

    def compare_inside(self, section, tool, figures, cases):
        """Rows of benchmarks inside a process. A case is a text, the name of a benchmark, and the
        names of others by what they are called."""
        builds = [self.build, self.against] if self.against else [self.build]
        names = {name for _, name, _ in cases}
        if not self.against:
            names.update(name for _, _, others in cases for name in others.values())
        try:
            programs = [build.tool(tool) for build in builds]
        except MissingProgram as missing:
            say(f"left out, there is no {missing}")
            return []
        seconds = 0.05 if self.quick else 0.3
        samplers = [GoogleBenchmark(each, sorted(names), seconds, self.data) for each in programs]
        samples = in_turn(samplers, self.runs, first_counts=True)
        rows = []
        for what, name, others in cases:
            if self.against:
                others = {self.against_name(): name}
            # The last samples are those of the other build, where there is one.
            found = {beside: benchmark(samples[-1], other) for beside, other in others.items()}
            if self.against and not all(found.values()):
                continue
            own = benchmark(samples[0], name)
            for figure in figures:
                label = what + (f": {figure.name}" if len(figures) > 1 else "")
                for beside, other in found.items() or [("", ())]:
                    rows.append(table.compare(section, label, figure, own, beside, other))
        return rows


def described(name, sampler):
    kept = getattr(sampler, "kept", None)
    return f"{name}, {kept:,} kept" if kept else name


def benchmark(rounds, name):
    """The results of one benchmark in all rounds; none if the program does not have it."""
    return [results[name] for results in rounds if name in results]
