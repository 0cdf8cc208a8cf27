"""Where the figures come from."""

import os
import re

from .build import first_line

LIBRARIES = ["libbenchmark-dev", "libboost-filesystem-dev", "libgeos-dev", "libpugixml-dev"]
PROGRAMS = {"valgrind": ["--version"], "gmt": ["--version"], "mawk": ["-W", "version"]}


def processor():
    with open("/proc/cpuinfo") as file:
        found = re.search(r"^model name\s*:\s*(.*)$", file.read(), re.MULTILINE)
    return found.group(1) if found else "unknown"


def memory_gibibytes():
    return os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30


def describe_machine(plan):
    """The lines below the table."""
    file_system = first_line(["findmnt", "-n", "-o", "FSTYPE", "-T", plan.data.directory])
    versions = []
    for package in LIBRARIES:
        version = first_line(["dpkg-query", "-W", "-f", "${Version}", package])
        versions.append(f"{package} {version}" if version else package)
    for name, arguments in PROGRAMS.items():
        version = first_line([name, *arguments])
        if version:
            versions.append(version if name in version else f"{name} {version}")
    compiler = first_line([plan.build.setting("CMAKE_CXX_COMPILER"), "--version"])
    lines = [
        f"Medians of {plan.runs} runs, {plan.records:,} records a file unless it says otherwise."
        " Whole runs: wall time unless it says otherwise. Inside a process: processor time.",
        "",
        f"- Machine: {processor()}, {os.cpu_count()} processors, {memory_gibibytes():.0f} GiB,"
        f" Linux {os.uname().release}, files on {file_system}",
        f"- Compiler: {compiler}, -O3 -DNDEBUG",
        f"- Versions: {', '.join(versions)}",
        f"- Veldtrim at {plan.build.commit() or 'an unknown commit'}",
    ]
    if plan.against:
        lines.append(f"- Compared with Veldtrim at {plan.against.commit() or 'an unknown commit'}")
    if plan.quick:
        lines.append("- A quick run: no figures to quote.")
    return "\n".join(lines)
