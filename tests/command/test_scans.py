"""Header and record forms through whole files. The square kept is [4, 6] x [4, 6]."""

from itertools import chain, zip_longest

import pytest
from harness import ARGUMENTS, KEPT, SQUARE, boundary_file, clips, write_tree
from model import node_header

# header, and a record in it that is kept
ACCEPTED = [
    ("x;y;z", "5;5;1"), ("X;Y;Z", "5;5;1"), ("x y z", "5 5 1"), ("X\tY\tZ", "5\t5\t1"),
    ("x,y,z,g", "5,5,1,0"), ("X;Y;Z;G", "5;5;1;0"), ("x-y-z", "5-5-1"), ("xxyxz", "5x5x1"),
    (b"x\xa7y\xa7z", b"5\xa75\xa71"), (b"x\0y\0z", b"5\x005\x001"), ("x\ry\rz", "5\r5\r1"),
    (node_header("n", ";", "anything at all"), "5;5;1"), (node_header("N", "\t"), "5\t5\t1"),
    (node_header("n", "e", " list"), "5 e5 e1"),
]
REJECTED = {
    "first character": [" x;y;z", "y;x;z", "Y;Y;Z;G", "# x;y;z", b"\xef\xbb\xbfx;y;z", "\0"],
    "xyz form": ["x", "X", "x;y", "x;y,z", "x;z;y", "x;Y;z", "X;Y;Z;g", "x;y;z ", "x;y;z\0",
                 "x;y;z;", "x;y;z;g;h"],
    "no header": [""],
}

# The second square is [-1, 1] x [-1, 1].
KEPT_RECORDS = [
    "5;5;1", "5;5 ", " 5 ;\t5\t;1", "\f5;\v5;1", "+5;5.;1", "5,9;5,9;1", "5 6;5;1", "5abc;5;1",
    "5.0.7;5;1", "5-4;5-4;1", "5\0;5\0", "5;5\x1a", "5;5;" + "long " * 20000,
    "5" + "," * 99 + ";5;1", "5" + "0" * 400 + "e-400;5;1", "0x10;-.0;1", "1e-999;0;1",
]
DROPPED_RECORDS = [
    "", ";", "5;5", "5;5e", ";5;5;1", "a;5;1", "--5;5;1", "5e;5;1", "inf;5;1", "nan;nan;1",
    "1e999;5;1", "5 5 1", "5,5,1", "\x1a5;5;1", b"\xa05;5;1", "5" + "," * 100 + ";5;1",
]


def lines(*texts, end=b"\n"):
    return b"".join((t if isinstance(t, bytes) else t.encode()) + end for t in texts)


def test_header_forms(program, workspace):
    kept = {f"accepted{n}.xyz": lines(*each) for n, each in enumerate(ACCEPTED)}
    write_tree(workspace / "scans", {name: kept[name] + b"0;0;outside\n" for name in kept})
    skipped = {}
    for reason, headers in REJECTED.items():
        for header in headers:
            name = f"rejected{len(skipped)}.txt"
            write_tree(workspace / "scans", {name: lines(header, "5;5;1")})
            skipped[f"./scans/{name}"] = reason
    program.check(workspace, ARGUMENTS, clips({"a.xyz": KEPT, **kept}, skipped=skipped))


@pytest.mark.parametrize("end", [b"\n", b"\r\n"], ids=["LF", "CR LF"])
def test_record_forms(program, workspace, end):
    """Kept and dropped records alternate, so that a line lost or read twice shows."""
    pairs = zip_longest(KEPT_RECORDS, DROPPED_RECORDS, fillvalue="")
    scan = lines("x;y;z", *chain.from_iterable(pairs), end=end)
    rings = {1: SQUARE, 2: [(-1, -1), (-1, 1), (1, 1), (1, -1)]}
    boundary, trace = boundary_file(("boundaries", rings))
    write_tree(workspace, {"boundary.xml": boundary, "scans/a.xyz": scan})
    kept = {"a.xyz": lines("x;y;z", *KEPT_RECORDS)}
    program.check(workspace, ARGUMENTS, clips(kept, trace=trace))


def test_counts_that_cancel(program, workspace):
    """A scan without a line feed counts as -1 record: no finite scale for the progress."""
    write_tree(workspace, {"scans/b.txt": "x;y;z", "scans/a.xyz": KEPT})
    program.check(workspace, ARGUMENTS, clips({"a.xyz": KEPT}, dropped=1))


def test_scan_with_the_name_of_the_total(program, workspace):
    """The total takes its file."""
    write_tree(workspace, {"scans/total_node_count.txt": KEPT})
    outcome = clips({"a.xyz": KEPT}, dropped=1, total=2)
    program.check(workspace, ARGUMENTS, outcome)
