"""Boundary files that end the run, and those that a lenient reader takes."""

import pytest
from harness import (
    ARGUMENTS, KEPT, SQUARE_TRACE, SQUARE_XML, boundary_not_found, clips, rejects_boundary,
    write_tree
)

FOUND = "Found TavelDGM\n"
POINT = '<point x="5" y="5" segmenttype="0"/>'
FIRST = f'<polygon id="1">{POINT}</polygon>'
FIRST_TRACE = "current polygon id = 1 with type = 0\n ipts= 1 points read for the boundary\n"
TAKEN = clips({"a.xyz": KEPT}, trace=SQUARE_TRACE)
NOTHING_KEPT = clips({}, dropped=1, trace=f"[readin_b_XML:]\n{FOUND}     ... finished\n")
NO_ROOT = rejects_boundary(
    "Could not find the TavelDGM tag in the boundary file boundary.xml\n"
)


def broken(polygon, error, trace):
    """A boundary file whose second polygon is this one, and the run that it ends."""
    group = f'<group type="boundaries">{FIRST}{polygon}</group>'
    trace = f"{FOUND}found group element\ntypestring = boundaries\n{FIRST_TRACE}{trace}"
    return f"<p><TavelDGM>{group}</TavelDGM></p>", rejects_boundary(error, trace)


def no_id(attribute):
    polygon = f"<polygon {attribute}>{POINT}</polygon>"
    return broken(polygon, "Cannot find the id of a polygon in a group of type ", "")


def no_point(attributes, number=0):
    polygon = f'<polygon id="12">{POINT * number}<point {attributes}/></polygon>'
    error = f"cannot read point {number} in polygon 12\n"
    return broken(polygon, error, f"current polygon id = 12 with type = 0\n{error}")


@pytest.mark.parametrize(
    "content, outcome",
    [
        ("<project><TavelDGM/>", boundary_not_found("boundary.xml")),
        ("<project/>", NO_ROOT),
        ("<TavelDGM><group/></TavelDGM>", NO_ROOT),
        ("<p><q><TavelDGM/></q><TavelDGM2/></p>", NO_ROOT),
        no_id(""),
        no_id('id=""'),
        no_id('id="x1"'),
        no_id("id=1"),
        no_id('id="99999999999"'),
        no_point('x="1.5" y="2"'),
        no_point('x="1.5" segmenttype="0"'),
        no_point('y="1.5" segmenttype="0"', 2),
        no_point('x="" y="2" segmenttype="0"'),
        no_point('x="1" y="1e999" segmenttype="0"'),
        no_point('x="1" y="2" segmenttype="none"', 1),
        no_point('x=1 y=2 segmenttype="0"'),
        ("<p><TavelDGM/></p>", NOTHING_KEPT),
        (f"\ufeffbefore{SQUARE_XML}<after\0<", TAKEN),
        (SQUARE_XML.replace("\n", "\r\n"), TAKEN),
        (SQUARE_XML.replace("</TavelDGM>", "</TAVELDGM tolerated = '1' >"), TAKEN),
    ],
)
def test_content(program, workspace, content, outcome):
    write_tree(workspace, {"boundary.xml": content})
    program.check(workspace, ARGUMENTS, outcome)


@pytest.mark.parametrize("path", [".", "scans", "missing/boundary.xml", ""])
def test_no_file(program, workspace, path):
    """Reported before anybody looks at the workspace, which is missing too."""
    program.check(workspace, ["missing/scans", "clipped", path], boundary_not_found(path))
