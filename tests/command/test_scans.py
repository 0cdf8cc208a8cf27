"""Header and record forms through whole files. The square kept is [4, 6] x [4, 6]."""

import pytest
from harness import (
    BOUNDARY_READ,
    CLIPPING,
    FINISHED,
    FIRST_CHARACTER,
    NO_HEADER,
    SQUARE,
    SQUARE_TRACE,
    SQUARE_XML,
    START,
    XYZ_FORMS,
    boundary_trace,
    boundary_xml,
    skipped,
    write_tree,
)

ARGUMENTS = ["./scans", "clipped", "boundary.xml"]

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


def test_header_forms(program, tmp_path):
    tree, created, messages = {"boundary.xml": SQUARE_XML}, {"clipped": None}, []
    for number, (header, record) in enumerate(ACCEPTED):
        name, content = f"accepted{number}.xyz", as_bytes(header) + b"\n" + as_bytes(record) + b"\n"
        tree[f"scans/{name}"] = content + b"0;0;outside\n"
        created[f"clipped/{name}"] = content
        messages.append(CLIPPING)
    rejected = [(header, error) for error, headers in REJECTED.items() for header in headers]
    for number, (header, error) in enumerate(rejected):
        tree[f"scans/rejected{number}.txt"] = as_bytes(header) + b"\n5;5;1\n"
        messages.insert(0, skipped(f"./scans/rejected{number}.txt", error))
    created["clipped/total_node_count.txt"] = f"{len(ACCEPTED)}\n"
    write_tree(tmp_path, tree)
    program.check(
        tmp_path,
        ARGUMENTS,
        code=0,
        stdout=SQUARE_TRACE,
        messages=[START, *messages, FINISHED],
        created=created,
    )


@pytest.mark.parametrize("end", [b"\n", b"\r\n"], ids=["LF", "CR LF"])
def test_record_forms(program, tmp_path, end):
    """Kept and dropped records alternate, so that a line lost or read twice shows."""
    kept, dropped = list(map(as_bytes, KEPT)), list(map(as_bytes, DROPPED))
    pairs = zip(kept, dropped + [b""] * (len(kept) - len(dropped)))
    lines = [b"x;y;z", *(line for pair in pairs for line in pair)]
    boundary = boundary_xml(SQUARE, [(-1, -1), (-1, 1), (1, 1), (1, -1)])
    scan = b"".join(line + end for line in lines)
    write_tree(tmp_path, {"boundary.xml": boundary, "scans/a.xyz": scan})
    program.check(
        tmp_path,
        ARGUMENTS,
        code=0,
        stdout=boundary_trace(4, 4) + BOUNDARY_READ,
        messages=[START, CLIPPING, FINISHED],
        created={
            "clipped": None,
            "clipped/a.xyz": b"".join(line + b"\n" for line in [b"x;y;z", *kept]),
            "clipped/total_node_count.txt": f"{len(kept)}\n",
        },
    )


@pytest.mark.parametrize(
    "scans, kept, total",
    [
        ({"a.xyz": "x;y;z", "b.txt": "x;y;z\n5;5;1\n"}, {"b.txt": "x;y;z\n5;5;1\n"}, 1),
        ({"total_node_count.txt": "x;y;z\n5;5;1\n5;5;2\n"}, {}, 2),
    ],
    ids=["counts that cancel", "name of the total"],
)
def test_counts_at_the_edge(program, tmp_path, scans, kept, total):
    """No finite scale for the progress; and the total takes its file from a scan of that name."""
    write_tree(tmp_path, {"boundary.xml": SQUARE_XML})
    write_tree(tmp_path / "scans", scans)
    clipped = {**kept, "total_node_count.txt": f"{total}\n"}
    run = program.check(
        tmp_path,
        ARGUMENTS,
        code=0,
        stdout=SQUARE_TRACE,
        messages=[START, *[CLIPPING] * len(scans), FINISHED],
        created={"clipped": None, **{f"clipped/{name}": clipped[name] for name in clipped}},
    )
    assert run.positions[-1:] == [100]
