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
    ("x;y;z", "5;5;1"),
    ("X;Y;Z", "5;5;1"),
    ("x y z", "5 5 1"),
    ("X\tY\tZ", "5\t5\t1"),
    ("x,y,z,g", "5,5,1,0"),
    ("X;Y;Z;G", "5;5;1;0"),
    ("x-y-z", "5-5-1"),
    ("xxyxz", "5x5x1"),
    (b"x\xa7y\xa7z", b"5\xa75\xa71"),
    (b"x\0y\0z", b"5\x005\x001"),
    ("x\ry\rz", "5\r5\r1"),
    ("n12;anything at all", "5;5;1"),
    ("N  \t", "5\t5\t1"),
    ("node list", "5 e5 e1"),
    ("nnn nnn", "5 5 1"),
]
REJECTED = [
    (" x;y;z", FIRST_CHARACTER),
    ("y;x;z", FIRST_CHARACTER),
    ("# x;y;z", FIRST_CHARACTER),
    (b"\xef\xbb\xbfx;y;z", FIRST_CHARACTER),
    ("\0", FIRST_CHARACTER),
    ("x", XYZ_FORMS),
    ("X", XYZ_FORMS),
    ("x;y", XYZ_FORMS),
    ("x;y,z", XYZ_FORMS),
    ("x;Y;z", XYZ_FORMS),
    ("X;Y;Z;g", XYZ_FORMS),
    ("x;y;z ", XYZ_FORMS),
    ("x;y;z\0", XYZ_FORMS),
    ("x;y;z;", XYZ_FORMS),
    ("x;y;z;g;h", XYZ_FORMS),
    ("Y;Y;Z;G", FIRST_CHARACTER),
    ("", NO_HEADER),
]

# separator, then the records; the second square is [-1, 1] x [-1, 1]
KEPT = {
    ";": [
        "5;5;1", "5;5;", "5;5 ", " 5 ;\t5\t;1", "\f5;\v5;1", "+5;+5;1", "5.;5.;1", "5.0;05.00;1",
        "5e0;5E+0;1", "50e-1;.5e1;1", "5,9;5,9;1", "5 6;5;1", "5abc;5abc;1", "5.0.7;5;1",
        "5e0e7;5;1", "5-4;5-4;1", "5\0;5\0", "5;5\x1a", "5;5;" + "long " * 20000,
        "5" + "," * 99 + ";5;1", "5" + "0" * 400 + "e-400;5;1", "0x10;0x10;1", "-0;-.0;1",
        "1e-999;0;1",
    ],
    " ": ["5 5 1", "5\t5\t1", "  5   5   1", "5 5 ", "5 5\t", "5 5;1", "5+5 1"],
    "\t": ["5\t5\t1", " 5 \t 5 \t1", "5 6\t5 "],
    ",": ["5,5,1", "5.0,5.0,1", "5 ,5 "],
    "5": ["4 55 ", "4;55;"],
    ".": ["4.4.5..", "4..4.5 "],
}
DROPPED = {
    ";": [
        "", " ", ";", "5", "5;", "5;5", "5; 5", "5;5.", "5;5e", ";5;5;1", "a;5;1", "5;a;1",
        "x=5;5;1", "--5;5;1", "- 5;5;1", "+;5;1", ".;5;1", "e0;5;1", ".e1;5;1", "5e;5;1",
        "5e+;5;1", "5;5e-;1", "inf;5;1", "nan;nan;1", "1e999;5;1", "5;-1e999;1", "5 5 1", "5,5,1",
        "\x005;5;1", "\x1a5;5;1", b"\xa05;5;1", "0,5;5;1", "5" + "," * 100 + ";5;1",
        "9" * 400 + ";5;1",
    ],
    " ": ["5 5", "5", "5,5 5", "5;5;5", "5-5 1", "55 1"],
    "\t": ["5 5 1", "5\t5", "5,5\t"],
    ",": ["5,5", "5;5;1", "5\t5\t1"],
    "5": ["45", "4 5", "4 45 "],
    ".": ["5.5.1", "5,5,1"],
}


def as_bytes(text):
    return text if isinstance(text, bytes) else text.encode()


def test_header_forms(program, tmp_path):
    tree, created, messages, total = {"boundary.xml": SQUARE_XML}, {"clipped": None}, [], 0
    for number, (header, record) in enumerate(ACCEPTED):
        name, content = f"accepted{number}.xyz", as_bytes(header) + b"\n" + as_bytes(record) + b"\n"
        tree[f"scans/{name}"] = content + b"0;0;outside\n"
        created[f"clipped/{name}"] = content
        messages.append(CLIPPING)
        total += 1
    for number, (header, error) in enumerate(REJECTED):
        tree[f"scans/rejected{number}.txt"] = as_bytes(header) + b"\n5;5;1\n"
        messages.insert(0, skipped(f"./scans/rejected{number}.txt", error))
    created["clipped/total_node_count.txt"] = f"{total}\n"
    write_tree(tmp_path, tree)
    program.check(
        tmp_path,
        ARGUMENTS,
        code=0,
        stdout=SQUARE_TRACE,
        messages=[START, *messages, FINISHED],
        created=created,
    )


@pytest.mark.parametrize("ends", ["\n", "\r\n"], ids=["LF", "CR LF"])
@pytest.mark.parametrize("separator", KEPT)
def test_record_forms(program, tmp_path, separator, ends):
    """Kept and dropped records alternate, so that a line lost or read twice shows."""
    header = f"x{separator}y{separator}z"
    kept = [as_bytes(record) for record in KEPT[separator]]
    dropped = [as_bytes(record) for record in DROPPED[separator]]
    records = []
    for index in range(max(len(kept), len(dropped))):
        records += kept[index : index + 1] + dropped[index : index + 1]
    lines = [header.encode(), *records]
    origin = [(-1, -1), (-1, 1), (1, 1), (1, -1)]
    write_tree(
        tmp_path,
        {
            "boundary.xml": boundary_xml(SQUARE, origin),
            "scans/a.xyz": b"".join(line + ends.encode() for line in lines),
        },
    )
    program.check(
        tmp_path,
        ARGUMENTS,
        code=0,
        stdout=boundary_trace(4, 4) + BOUNDARY_READ,
        messages=[START, CLIPPING, FINISHED],
        created={
            "clipped": None,
            "clipped/a.xyz": b"".join(line + b"\n" for line in [header.encode(), *kept]),
            "clipped/total_node_count.txt": f"{len(kept)}\n",
        },
    )


@pytest.mark.parametrize(
    "scans, kept",
    [
        ({"a.xyz": "x;y;z"}, {}),
        ({"a.xyz": "x;y;z\n"}, {}),
        ({"a.xyz": "x;y;z", "b.txt": "x;y;z\n5;5;1\n"}, {"b.txt": "x;y;z\n5;5;1\n"}),
        ({"total_node_count.txt": "x;y;z\n5;5;1\n5;5;2\n"}, {}),
    ],
    ids=["count -1", "count 0", "counts that cancel", "name of the total"],
)
def test_counts_at_the_edge(program, tmp_path, scans, kept):
    """No finite scale for the progress; and the total takes its file from a scan of that name."""
    write_tree(tmp_path, {"boundary.xml": SQUARE_XML})
    write_tree(tmp_path / "scans", scans)
    total = 2 if "total_node_count.txt" in scans else len(kept)
    run = program.check(
        tmp_path,
        ARGUMENTS,
        code=0,
        stdout=SQUARE_TRACE,
        messages=[START, *[CLIPPING] * len(scans), FINISHED],
        created={
            "clipped": None,
            **{f"clipped/{name}": text for name, text in kept.items()},
            "clipped/total_node_count.txt": f"{total}\n",
        },
    )
    assert run.positions[-1:] == [100]


def test_output_serves_as_input(program, tmp_path):
    """Clipping what was clipped changes nothing."""
    scan = "X,Y,Z,G\n5,5,1,a\n9,9,1,b\n4,6,1,c\n"
    write_tree(tmp_path, {"boundary.xml": SQUARE_XML, "scans/a.xyz": scan})
    for source, target in (("./scans", "once"), ("./once", "twice")):
        assert program.run(tmp_path, source, target, "boundary.xml").code == 0
        if target == "once":
            (tmp_path / "once" / "total_node_count.txt").rename(tmp_path / "total")
    for name in ("once/a.xyz", "twice/a.xyz"):
        assert (tmp_path / name).read_bytes() == program.line_ends("X,Y,Z,G\n5,5,1,a\n4,6,1,c\n")
    total = (tmp_path / "total").read_bytes()
    assert total == (tmp_path / "twice/total_node_count.txt").read_bytes()
