"""Boundary files that end the run, and those that a lenient reader takes."""

import pytest
from harness import (
    BOUNDARY_READ,
    CLIPPING,
    FAILED,
    FINISHED,
    SQUARE_TRACE,
    SQUARE_XML,
    START,
    write_tree,
)

SCAN = "x;y;z\n5;5;1\n"
GIVEN_UP = "boundary file does not exist\n"
FOUND = "[readin_b_XML:]\nFound TavelDGM\n"
GROUP = "found group element\ntypestring = boundaries\n"
NOT_FOUND = "Boundary file named boundary.xml not found"
NO_ROOT_TAG = "Could not find the TavelDGM tag in the boundary file boundary.xml\n"
NO_ID = "Cannot find the id of a polygon in a group of type "
POINT = '<point x="5" y="5" segmenttype="0"/>'


def run_with(program, directory, content, **expected):
    write_tree(directory, {"scans/a.xyz": SCAN})
    if content is not None:
        write_tree(directory, {"boundary.xml": content})
    program.check(directory, ["./scans", "clipped", "boundary.xml"], **expected)


def assert_fails(program, directory, content, stdout, error):
    messages = [START, ("error", 1, error), ("error", 2, GIVEN_UP[:-1]), FAILED]
    run_with(program, directory, content, code=1, stdout=stdout + GIVEN_UP, messages=messages)


@pytest.mark.parametrize(
    "content",
    [
        None,
        "",
        "no markup",
        "<!-- a comment alone -->",
        "</project>",
        "<project><TavelDGM></project>",
        "<project><TavelDGM/>",
        "<project><!-- open </project>",
        "<project><TavelDGM/></project",
        "<\0project><TavelDGM/></project>",
    ],
)
def test_not_loaded(program, tmp_path, content):
    stdout = f"[readin_b_XML:]\n{NOT_FOUND}\n"
    assert_fails(program, tmp_path, content, stdout, NOT_FOUND)


@pytest.mark.parametrize("path", [".", "scans", "missing/boundary.xml", ""])
def test_path_that_is_no_file(program, tmp_path, path):
    """Reported before anybody looks at the workspace, which is missing too."""
    write_tree(tmp_path, {"scans/a.xyz": SCAN})
    text = f"Boundary file named {path} not found"
    program.check(
        tmp_path,
        ["missing/scans", "clipped", path],
        code=1,
        stdout=f"[readin_b_XML:]\n{text}\n{GIVEN_UP}",
        messages=[START, ("error", 1, text), ("error", 2, GIVEN_UP[:-1]), FAILED],
    )


@pytest.mark.parametrize(
    "content",
    [
        "<project/>",
        "<TavelDGM><group/></TavelDGM>",
        "<project><area><TavelDGM/></area></project>",
        "<project><TavelDGM2/><Tavel/></project>",
        "<project><!-- <TavelDGM/> --></project>",
    ],
)
def test_without_root_tag(program, tmp_path, content):
    assert_fails(program, tmp_path, content, "[readin_b_XML:]\n", NO_ROOT_TAG)


@pytest.mark.parametrize("id", ["", 'id=""', 'id="x1"', "id=1", 'name="1"', 'id="99999999999"'])
def test_polygon_without_id(program, tmp_path, id):
    """Also after a complete polygon and a group that is passed over."""
    content = (
        '<p><TavelDGM><group type="other"/><group type="boundaries">'
        f'<polygon id="1">{POINT}</polygon><polygon {id}>{POINT}</polygon></group></TavelDGM></p>'
    )
    stdout = (
        f"{FOUND}found group element\ntypestring = other\nUnknown tag other\nIgnoring block{GROUP}"
        "current polygon id = 1 with type = 0\n ipts= 1 points read for the boundary\n"
    )
    assert_fails(program, tmp_path, content, stdout, NO_ID)


@pytest.mark.parametrize("before", [0, 2])
@pytest.mark.parametrize(
    "point",
    [
        '<point x="1.5" y="2"/>',
        '<point x="1.5" segmenttype="0"/>',
        '<point y="1.5" segmenttype="0"/>',
        '<point x="1" y="letters" segmenttype="0"/>',
        '<point x="" y="2" segmenttype="0"/>',
        '<point x="1e999" y="2" segmenttype="0"/>',
        '<point x="inf" y="2" segmenttype="0"/>',
        '<point x="1" y="&#50;" segmenttype="0"/>',
        '<point x="1" y="2" segmenttype="none"/>',
        '<point x=1 y=2 segmenttype="0"/>',
    ],
)
def test_point_that_cannot_be_read(program, tmp_path, point, before):
    content = (
        '<p><TavelDGM><group type="boundaries">'
        f'<polygon id="12">{POINT * before}{point}</polygon></group></TavelDGM></p>'
    )
    text = f"cannot read point {before} in polygon 12\n"
    stdout = f"{FOUND}{GROUP}current polygon id = 12 with type = 0\n{text}"
    assert_fails(program, tmp_path, content, stdout, text)


@pytest.mark.parametrize(
    "content, stdout, keeps",
    [
        ("<project><TavelDGM/></project>", f"{FOUND}     ... finished\n{BOUNDARY_READ}", False),
        (f"before{SQUARE_XML}<after", SQUARE_TRACE, True),
        (SQUARE_XML.replace("\n", "\r\n"), SQUARE_TRACE, True),
        (SQUARE_XML + "\0<", SQUARE_TRACE, True),
        ("\ufeff" + SQUARE_XML, SQUARE_TRACE, True),
        (SQUARE_XML.replace("</TavelDGM>", "</TAVELDGM tolerated = '1' >"), SQUARE_TRACE, True),
    ],
    ids=["no group", "text around", "CR LF", "NUL", "byte-order mark", "end tag"],
)
def test_taken(program, tmp_path, content, stdout, keeps):
    created = {"clipped": None, "clipped/total_node_count.txt": f"{keeps:d}\n"}
    if keeps:
        created["clipped/a.xyz"] = SCAN
    messages = [START, CLIPPING, FINISHED]
    run_with(
        program, tmp_path, content, code=0, stdout=stdout, messages=messages, created=created
    )
