"""Header and record forms through whole files. The square kept is [4, 6] x [4, 6]."""

from itertools import chain, zip_longest

import pytest
from harness import (
    BOUNDARY_READ, CLIPPING, FINISHED, FIRST_CHARACTER, NO_HEADER, SQUARE, SQUARE_TRACE,
    SQUARE_XML, START, XYZ_FORMS, boundary_trace, boundary_xml, skipped, write_tree
)

# header, and a record in it that is kept
ACCEPTED = [
    ("x;y;z", "5;5;1"), ("X;Y;Z", "5;5;1"), ("x y z", "5 5 1"), ("X\tY\tZ", "5\t5\t1"),
    ("x,y,z,g", "5,5,1,0"), ("X;Y;Z;G", "5;5;1;0"), ("x-y-z", "5-5-1"), ("xxyxz", "5x5x1"),
    (b"x\xa7y\xa7z", b"5\xa75\xa71"), (b"x\0y\0z", b"5\x005\x001"), ("x\ry\rz", "5\r5\r1"),
    ("n12;anything at all", "5;5;1"), ("N  \t", "5\t5\t1"), ("node list", "5 e5 e1"),
]
REJECTED = {
    FIRST_CHARACTER: [" x;y;z", "y;x;z", "Y;Y;Z;G", "# x;y;z", b"\xef\xbb\xbfx;y;z", "\0"],
    XYZ_FORMS: ["x", "X", "x;y", "x;y,z", "x;z;y", "x;Y;z", "X;Y;Z;g", "x;y;z ", "x;y;z\0",
                "x;y;z;", "x;y;z;g;h"],
    NO_HEADER: [""],
}

# The second square is [-1, 1] x [-1, 1].
KEPT = [
    "5;5;1", "5;5 ", " 5 ;\t5\t;1", "\f5;\v5;1", "+5;5.;1", "5,9;5,9;1", "5 6;5;1", "5abc;5;1",
    "5.0.7;5;1", "5-4;5-4;1", "5\0;5\0", "5;5\x1a", "5;5;" + "long " * 20000,
    "5" + "," * 99 + ";5;1", "5" + "0" * 400 + "e-400;5;1", "0x10;-.0;1", "1e-999;0;1",
]
DROPPED = [
    "", ";", "5;5", "5;5e", ";5;5;1", "a;5;1", "--5;5;1", "5e;5;1", "inf;5;1", "nan;nan;1",
    "1e999;5;1", "5 5 1", "5,5,1", "\x1a5;5;1", b"\xa05;5;1", "5" + "," * 100 + ";5;1",
]


def as_bytes(text):
    return text if isinstance(text, bytes) else text.encode()


def assert_clips(program, directory, messages, clipped, stdout=SQUARE_TRACE):
    return program.check(
        directory,
        ["./scans", "clipped", "boundary.xml"],
        code=0,
        stdout=stdout,
        messages=[START, *messages, FINISHED],
        created={"clipped": None, **{f"clipped/{name}": clipped[name] for name in clipped}},
    )


def test_header_forms(program, tmp_path):
    tree, clipped, messages = {"boundary.xml": SQUARE_XML}, {}, []
    for number, (header, record) in enumerate(ACCEPTED):
        content = as_bytes(header) + b"\n" + as_bytes(record) + b"\n"
        tree[f"scans/accepted{number}.xyz"] = content + b"0;0;outside\n"
        clipped[f"accepted{number}.xyz"] = content
        messages.append(CLIPPING)
    rejected = [(header, error) for error, headers in REJECTED.items() for header in headers]
    for number, (header, error) in enumerate(rejected):
        tree[f"scans/rejected{number}.txt"] = as_bytes(header) + b"\n5;5;1\n"
        messages.insert(0, skipped(f"./scans/rejected{number}.txt", error))
    write_tree(tmp_path, tree)
    clipped["total_node_count.txt"] = f"{len(ACCEPTED)}\n"
    assert_clips(program, tmp_path, messages, clipped)


@pytest.mark.parametrize("end", [b"\n", b"\r\n"], ids=["LF", "CR LF"])
def test_record_forms(program, tmp_path, end):
    """Kept and dropped records alternate, so that a line lost or read twice shows."""
    kept, dropped = list(map(as_bytes, KEPT)), list(map(as_bytes, DROPPED))
    pairs = zip_longest(kept, dropped, fillvalue=b"")
    scan = b"".join(line + end for line in [b"x;y;z", *chain.from_iterable(pairs)])
    boundary = boundary_xml(SQUARE, [(-1, -1), (-1, 1), (1, 1), (1, -1)])
    write_tree(tmp_path, {"boundary.xml": boundary, "scans/a.xyz": scan})
    clipped = {"a.xyz": b"\n".join([b"x;y;z", *kept, b""])}
    clipped["total_node_count.txt"] = f"{len(kept)}\n"
    assert_clips(program, tmp_path, [CLIPPING], clipped, boundary_trace(4, 4) + BOUNDARY_READ)


def test_counts_that_cancel(program, tmp_path):
    """A scan without a line feed counts as -1 record: no finite scale for the progress."""
    kept = {"b.txt": "x;y;z\n5;5;1\n"}
    write_tree(tmp_path, {"boundary.xml": SQUARE_XML})
    write_tree(tmp_path / "scans", {"a.xyz": "x;y;z", **kept})
    clipped = {**kept, "total_node_count.txt": "1\n"}
    run = assert_clips(program, tmp_path, [CLIPPING, CLIPPING], clipped)
    assert run.positions[-1:] == [100]


def test_scan_with_the_name_of_the_total(program, tmp_path):
    """The total takes its file."""
    scan = "x;y;z\n5;5;1\n5;5;2\n"
    write_tree(tmp_path, {"boundary.xml": SQUARE_XML, "scans/total_node_count.txt": scan})
    assert_clips(program, tmp_path, [CLIPPING], {"total_node_count.txt": "2\n"})
