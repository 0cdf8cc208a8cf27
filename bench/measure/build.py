"""The packages that the benchmarks need, and their build."""

import os
import shutil
import subprocess
import sys

from .timing import say

REPOSITORY = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def install_packages():
    """Installs what is missing, where that can be known; elsewhere the build will tell."""
    if shutil.which("dpkg-query"):
        setup = os.path.join(REPOSITORY, "scripts", "setup")
        subprocess.run([setup, "bench"], check=True, stdout=sys.stderr)


class Build:
    """An optimised build of the program and of the benchmarks' own programs."""

    def __init__(self, directory):
        self.directory = os.path.join(directory, "build")
        self.program = os.path.join(self.directory, "bin", "Veldtrim")

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

    def tool(self, name):
        """The path of one of the benchmarks' own programs."""
        return os.path.join(self.directory, "bench", "bin", name)

    def compiler(self):
        with open(os.path.join(self.directory, "CMakeCache.txt")) as cache:
            for line in cache:
                if line.startswith("CMAKE_CXX_COMPILER:"):
                    return line.rstrip("\n").split("=", 1)[1]
        return "c++"
