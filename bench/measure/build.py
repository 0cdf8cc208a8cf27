"""The packages that the benchmarks need, and the builds that are measured."""

import os
import re
import shutil
import subprocess
import sys

REPOSITORY = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


class MissingProgram(Exception):
    """A build does not have a program that is to be measured."""


def say(text):
    print(f"bench/run: {text}", file=sys.stderr, flush=True)


def install_packages():
    """Installs what is missing, where that can be known; elsewhere the build will tell."""
    if shutil.which("dpkg-query"):
        setup = os.path.join(REPOSITORY, "scripts", "setup")
        subprocess.run([setup, "bench"], check=True, stdout=sys.stderr)


def first_line(command):
    """The first line that a command prints; empty if there is no such command."""
    if shutil.which(command[0]) is None:
        return ""
    process = subprocess.run(command, capture_output=True, text=True)
    return (process.stdout + process.stderr).split("\n")[0].strip()


class Build:
    """A directory with a build of the program and of the benchmarks' own programs."""

    def __init__(self, directory):
        self.directory = os.path.abspath(directory)

    def make(self):
        say("building")
        os.makedirs(self.directory, exist_ok=True)
        log_path = os.path.join(self.directory, "build.log")
        configure = ["cmake", "-S", REPOSITORY, "-B", self.directory, "-G", "Ninja"]
        configure += ["-DCMAKE_BUILD_TYPE=Release", "-DVELDTRIM_BENCH=ON", "-DVELDTRIM_TESTS=OFF"]
        with open(log_path, "w") as log:
            for command in (configure, ["cmake", "--build", self.directory]):
                if subprocess.run(command, stdout=log, stderr=log).returncode != 0:
                    raise SystemExit(f"bench/run: the build failed, see {log_path}")

    def _existing(self, *parts):
        path = os.path.join(self.directory, *parts)
        if not os.path.exists(path):
            raise MissingProgram(path)
        return path

    def program(self):
        """The path of Veldtrim."""
        return self._existing("bin", "Veldtrim")

    def tool(self, name):
        """The path of one of the benchmarks' own programs."""
        return self._existing("bench", "bin", name)

    def setting(self, name):
        """What CMake has stored under a name; empty if nothing."""
        with open(self._existing("CMakeCache.txt")) as cache:
            found = re.search(f"^{name}:[A-Z]+=(.*)$", cache.read(), re.MULTILINE)
        return found.group(1) if found else ""

    def commit(self):
        """The commit of the sources; empty if they are not under version control."""
        source = self.setting("CMAKE_HOME_DIRECTORY")
        described = first_line(["git", "-C", source, "describe", "--always", "--dirty"])
        return "" if described.startswith("fatal") else described
