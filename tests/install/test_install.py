"""Installs the build into an empty prefix, moves it, and uses it as other programs would.

VELDTRIM_BUILD is the build directory; VELDTRIM_FEATURES lists what was built, in the words of
manifest.txt.
"""

import fnmatch
import os
import re
import shlex
import shutil
import subprocess
from pathlib import Path

import pytest

TESTS = Path(__file__).parents[1]
BUILD = os.environ["VELDTRIM_BUILD"]
CMAKE = os.environ.get("VELDTRIM_CMAKE", "cmake")
CXX = os.environ.get("VELDTRIM_CXX", "c++")
CXX_FLAGS = os.environ.get("VELDTRIM_CXX_FLAGS", "")
FEATURES = set(os.environ.get("VELDTRIM_FEATURES", "").split())
BOUNDARY = TESTS.parent / "examples/jacksboro/boundary.xml"
SAID = "boundaries from x = 747012\n"


def run(*command, **options):
    process = subprocess.run(
        [*map(str, command)], capture_output=True, text=True, timeout=300, **options
    )
    assert process.returncode == 0, process.stdout + process.stderr
    return process.stdout


@pytest.fixture(scope="module")
def prefix(tmp_path_factory):
    """The installed tree, moved away from the prefix that it was installed to."""
    place = tmp_path_factory.mktemp("install")
    run(CMAKE, "--install", BUILD, "--prefix", place / "first")
    return Path(shutil.move(place / "first", place / "moved"))


def test_manifest(prefix):
    installed = {
        str(path.relative_to(prefix)) for path in prefix.rglob("*") if not path.is_dir()
    }
    expected = []
    for line in (Path(__file__).parent / "manifest.txt").read_text().splitlines():
        pattern, *needed = line.split()
        if FEATURES.issuperset(needed):
            expected.append(pattern)
    for pattern in expected:
        assert fnmatch.filter(installed, pattern), f"{pattern} is missing"
    for name in installed:
        assert any(fnmatch.fnmatch(name, pattern) for pattern in expected), f"{name} is not listed"


def test_program(prefix, tmp_path):
    shutil.copytree(BOUNDARY.parent, tmp_path / "area")
    run(prefix / "bin/Veldtrim", "area/scans", "clipped", "area/boundary.xml", cwd=tmp_path)
    assert (tmp_path / "area/clipped/total_node_count.txt").read_text() == "6033\n"


@pytest.mark.parametrize("form", ["static", "shared"])
def test_consumer_by_cmake_package(prefix, tmp_path, form):
    if form not in FEATURES:
        pytest.skip(f"no {form} library was built")
    run(
        CMAKE, "-S", TESTS / "consumer", "-B", tmp_path, f"-DCMAKE_PREFIX_PATH={prefix}",
        f"-DBUILD_SHARED_LIBS={'ON' if form == 'shared' else 'OFF'}",
        f"-DCMAKE_CXX_COMPILER={CXX}", f"-DCMAKE_CXX_FLAGS={CXX_FLAGS}",
    )  # fmt: skip
    run(CMAKE, "--build", tmp_path)
    assert run(tmp_path / "consumer", BOUNDARY) == SAID
    assert ("libveldtrim_xml.so" in run("ldd", tmp_path / "consumer")) == (form == "shared")


@pytest.mark.skipif(not shutil.which("pkg-config"), reason="needs pkg-config")
def test_consumer_by_pkg_config(prefix, tmp_path):
    environment = {**os.environ, "PKG_CONFIG_PATH": str(prefix / "lib/pkgconfig")}
    flags = shlex.split(run("pkg-config", "--cflags", "--libs", "veldtrim-xml", env=environment))
    run(
        CXX, *shlex.split(CXX_FLAGS), "-std=c++20", TESTS / "consumer/main.cpp",
        "-o", tmp_path / "consumer", *flags,
    )  # fmt: skip
    library = {**os.environ, "LD_LIBRARY_PATH": str(prefix / "lib")}
    assert run(tmp_path / "consumer", BOUNDARY, env=library) == SAID


def test_documented_consumer():
    """The program in the documentation is the one that is built here."""
    shown = (TESTS.parent / "docs/install.md").read_text()
    assert (TESTS / "consumer/main.cpp").read_text() in shown
    assert (TESTS / "consumer/CMakeLists.txt").read_text() in shown


@pytest.mark.skipif("shared" not in FEATURES, reason="no shared library was built")
@pytest.mark.skipif("sanitize" in CXX_FLAGS, reason="sanitizers export additional symbols")
def test_shared_library_exports_its_interface_alone(prefix):
    symbols = run("nm", "-DC", "--defined-only", prefix / "lib/libveldtrim_xml.so").splitlines()
    # Instances of standard templates are weak symbols, present in every program that uses them.
    own = (
        r"^\S+ (\w (vtable for |typeinfo (name )?for )?veldtrim::(XMLReader|CMarkupSTL)\b"
        r"|[uVW] .*\bstd::)"
    )
    foreign = [line for line in symbols if not re.search(own, line)]
    assert foreign == []


@pytest.mark.skipif("gdal" not in FEATURES, reason="no driver for GDAL was built")
def test_driver_exports_its_registration_alone(prefix):
    driver = next(prefix.rglob("ogr_Veldtrim.so"))
    assert driver.parent.name == "gdalplugins"  # GDAL would look in a deeper folder alone
    symbols = run("nm", "-D", "--defined-only", driver).split()
    assert symbols[1:] == ["T", "RegisterOGRVeldtrim"]


@pytest.mark.skipif(
    "man" not in FEATURES or not shutil.which("man"), reason="needs man and the manual pages"
)
def test_manual_pages(prefix):
    for page in (prefix / "share/man/man1").iterdir():
        environment = {**os.environ, "MANWIDTH": "80", "LC_ALL": "C.UTF-8", "MANROFFSEQ": ""}
        process = subprocess.run(
            ["man", "--warnings", "-l", page], env=environment, capture_output=True, text=True
        )
        assert (process.returncode, process.stderr) == (0, ""), page
        for heading in ("NAME", "SYNOPSIS", "EXIT STATUS", "EXAMPLES"):
            assert re.search(f"^{heading}$", process.stdout, re.MULTILINE), (page, heading)
