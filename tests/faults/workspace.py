"""A workspace with scans large enough to be met in the middle, and what a run must leave of it."""

import resource

from harness import SQUARE_XML, write_tree

PAGE = resource.getpagesize()
HEADER = b"x;y;z\n"


def scan(records, first=0):
    """Records of different lengths, two in three of them inside."""
    return HEADER + b"".join(
        b"%s;5;%d%s\n" % (b"9" if i % 3 == 0 else b"5", first + i, b"." * (i % 40))
        for i in range(records)
    )


def kept(scan):
    return b"".join(line for line in scan.splitlines(True) if not line.startswith(b"9"))


def kept_count(scan):
    return len(kept(scan).splitlines()) - 1


def write_workspace(root, scans):
    write_tree(root, {"boundary.xml": SQUARE_XML})
    write_tree(root / "scans", scans)


def is_cut_by_the_system(output):
    """Whether the output ends within a line at the border of a page.

    A line is one write, but where it crosses from one page of the file into the next, the kernel
    looks for a SIGKILL in between, and leaves the second part undone.
    """
    return output != b"" and not output.endswith(b"\n") and len(output) % PAGE == 0


def assert_beginning(output, scan):
    """The output is what a run writes, up to the end of some line."""
    assert kept(scan).startswith(output)
    assert output == b"" or output.endswith(b"\n")


def assert_inputs_unchanged(root, scans):
    for name, content in scans.items():
        assert (root / "scans" / name).read_bytes() == content
