"""Where the figures come from."""

import os
import re
import shutil
import subprocess

from .build import REPOSITORY

LIBRARIES = ["libbenchmark-dev", "libboost-filesystem-dev", "libgeos-dev", "libpugixml-dev"]
PROGRAMS = {
    "hyperfine": ["--version"],
    "valgrind": ["--version"],
    "gmt": ["--version"],
    "mawk": ["-W", "version"],
}


def first_line(command):
    if shutil.which(command[0]) is None:
        return ""
    process = subprocess.run(command, capture_output=True, text=True)
    return (process.stdout + process.stderr).split("\n")[0].strip()


def processor():
    with open("/proc/cpuinfo") as file:
        found = re.search(r"^model name\s*:\s*(.*)$", file.read(), re.MULTILINE)
    return found.group(1) if found else "unknown"


def memory_gibibytes():
    return os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30


def describe_machine(options, data_directory, build):
    """The lines below the table."""
    file_system = first_line(["findmnt", "-n", "-o", "FSTYPE", "-T", data_directory])
    versions = []
    for package in LIBRARIES:
        version = first_line(["dpkg-query", "-W", "-f", "${Version}", package])
        versions.append(f"{package} {version}" if version else package)
    for name, arguments in PROGRAMS.items():
        version = first_line([name, *arguments])
        if version:
            versions.append(version if name in version else f"{name} {version}")
    commit = first_line(["git", "-C", REPOSITORY, "describe", "--always", "--dirty"])
    lines = [
        f"Medians of {options.runs} runs, {options.records:,} records a file unless it says"
        " otherwise. Whole runs: wall time unless it says otherwise. Inside a process: processor"
        " time.",
        "",
        f"- Machine: {processor()}, {os.cpu_count()} processors, {memory_gibibytes():.0f} GiB,"
        f" Linux {os.uname().release}, files on {file_system}",
        f"- Compiler: {first_line([build.compiler(), '--version'])}, -O3 -DNDEBUG",
        f"- Versions: {', '.join(versions)}",
    ]
    if commit:
        lines.append(f"- Veldtrim at {commit}")
    if options.quick:
        lines.append("- A quick run: no figures to quote.")
    return "\n".join(lines)
