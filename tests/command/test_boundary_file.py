"""Boundary files that end the run, and those that a lenient reader takes."""

import pytest
from harness import (
    BOUNDARY_READ, CLIPPING, FAILED, FINISHED, SQUARE_TRACE, SQUARE_XML, START, write_tree
)

SCAN = "x;y;z\n5;5;1\n"
READ = "[readin_b_XML:]\n"
GROUP = f"{READ}Found TavelDGM\nfound group element\ntypestring = boundaries\n"
POINT = '<point x="5" y="5" segmenttype="0"/>'


def assert_fails(program, directory, stdout, error, path="boundary.xml", scans="./scans"):
    given_up = "boundary file does not exist"
    program.check(
        directory,
        [scans, "clipped", path],
        code=1,
        stdout=f"{stdout}{given_up}\n",
        messages=[START, ("error", 1, error), ("error", 2, given_up), FAILED],
    )


@pytest.mark.parametrize("path", ["boundary.xml", ".", "scans", "missing/boundary.xml", ""])
def test_not_loaded(program, tmp_path, path):
    """Reported before anybody looks at the workspace, which is missing too."""
    write_tree(tmp_path, {"scans/a.xyz": SCAN, "boundary.xml": "<project><TavelDGM/>"})
    error = f"Boundary file named {path} not found"
    assert_fails(program, tmp_path, f"{READ}{error}\n", error, path, "missing/scans")


@pytest.mark.parametrize(
    "content",
    ["<project/>", "<TavelDGM><group/></TavelDGM>", "<p><q><TavelDGM/></q><TavelDGM2/></p>"],
)
def test_without_root_tag(program, tmp_path, content):
    write_tree(tmp_path, {"boundary.xml": content})
    error = "Could not find the TavelDGM tag in the boundary file boundary.xml\n"
    assert_fails(program, tmp_path, READ, error)


@pytest.mark.parametrize("id", ["", 'id=""', 'id="x1"', "id=1", 'id="99999999999"'])
def test_polygon_without_id(program, tmp_path, id):
    polygons = f'<polygon id="1">{POINT}</polygon><polygon {id}>{POINT}</polygon>'
    content = f'<p><TavelDGM><group type="boundaries">{polygons}</group></TavelDGM></p>'
    write_tree(tmp_path, {"boundary.xml": content})
    first = "current polygon id = 1 with type = 0\n ipts= 1 points read for the boundary\n"
    error = "Cannot find the id of a polygon in a group of type "
    assert_fails(program, tmp_path, GROUP + first, error)


@pytest.mark.parametrize("before", [0, 2])
@pytest.mark.parametrize(
    "attributes",
    [
        'x="1.5" y="2"',
        'x="1.5" segmenttype="0"',
        'y="1.5" segmenttype="0"',
        'x="" y="2" segmenttype="0"',
        'x="1" y="1e999" segmenttype="0"',
        'x="1" y="2" segmenttype="none"',
        'x=1 y=2 segmenttype="0"',
    ],
)
def test_point_that_cannot_be_read(program, tmp_path, attributes, before):
    polygon = f'<polygon id="12">{POINT * before}<point {attributes}/></polygon>'
    content = f'<p><TavelDGM><group type="boundaries">{polygon}</group></TavelDGM></p>'
    write_tree(tmp_path, {"boundary.xml": content})
    error = f"cannot read point {before} in polygon 12\n"
    first = "current polygon id = 12 with type = 0\n"
    assert_fails(program, tmp_path, GROUP + first + error, error)


@pytest.mark.parametrize(
    "content, stdout, keeps",
    [
        ("<p><TavelDGM/></p>", f"{READ}Found TavelDGM\n     ... finished\n{BOUNDARY_READ}", False),
        (f"\ufeffbefore{SQUARE_XML}<after\0<", SQUARE_TRACE, True),
        (SQUARE_XML.replace("\n", "\r\n"), SQUARE_TRACE, True),
        (SQUARE_XML.replace("</TavelDGM>", "</TAVELDGM tolerated = '1' >"), SQUARE_TRACE, True),
    ],
    ids=["no group", "text around", "CR LF", "end tag"],
)
def test_taken(program, tmp_path, content, stdout, keeps):
    write_tree(tmp_path, {"scans/a.xyz": SCAN, "boundary.xml": content})
    program.check(
        tmp_path,
        ["./scans", "clipped", "boundary.xml"],
        code=0,
        stdout=stdout,
        messages=[START, CLIPPING, FINISHED],
        created={
            "clipped": None,
            "clipped/total_node_count.txt": f"{keeps:d}\n",
            **({"clipped/a.xyz": SCAN} if keeps else {}),
        },
    )
