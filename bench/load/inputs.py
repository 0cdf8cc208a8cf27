"""Inputs that are large or out of shape, written in blocks."""

BLOCK = 1 << 20
SQUARE = (
    b'<r><TavelDGM><group type="boundaries"><polygon id="1">'
    b'<point x="0" y="0" segmenttype="0"/><point x="9" y="0" segmenttype="0"/>'
    b'<point x="9" y="9" segmenttype="0"/><point x="0" y="9" segmenttype="0"/>'
    b"</polygon></group></TavelDGM></r>"
)
SCAN = b"x;y;z\n5;5;1\n"


def repeated(unit, size):
    """`unit` over and over, `size` bytes in all or a little more, in blocks."""
    block = unit * max(1, BLOCK // len(unit))
    while size > 0:
        part = block if size >= len(block) else unit * -(-size // len(unit))
        yield part
        size -= len(part)


def around(before, unit, size, after):
    yield before
    yield from repeated(unit, size)
    yield after


def in_model(before, unit, size, after):
    head, tail = b"<r><TavelDGM>" + before, after + b"</TavelDGM></r>"
    return around(head, unit, size, tail)


def numbered(before, pattern, count, after):
    """`pattern`, a text with %d, for each number below `count`."""
    yield before
    step = 10_000
    for start in range(0, count, step):
        yield "".join(pattern % i for i in range(start, min(start + step, count))).encode()
    yield after


GROUP = b'<r><TavelDGM><group type="boundaries">'
GROUP_END = b"</group></TavelDGM></r>"
POLYGON = GROUP + b'<polygon id="1">'
POLYGON_END = b"</polygon>" + GROUP_END
POINT_END = b' x="1" y="1" segmenttype="0"/>'


def boundary_of_squares(count):
    """`count` squares side by side, a thousand in a row."""
    yield GROUP
    rows = 1000
    point = '<point x="%d" y="%d" segmenttype="0"/>'
    for start in range(0, count, rows):
        text = []
        for i in range(start, min(start + rows, count)):
            x, y = 10 * (i % rows), 10 * (i // rows)
            corners = ((x, y), (x + 8, y), (x + 8, y + 8), (x, y + 8))
            points = "".join(point % corner for corner in corners)
            text.append(f'<polygon id="{i}">{points}</polygon>\n')
        yield "".join(text).encode()
    yield GROUP_END


def boundary_of_points(size):
    """One polygon of about `size` bytes: a saw along a wide strip."""
    yield POLYGON
    step = 5_000
    written = 0
    i = 0
    while written < size:
        block = "".join(
            f'<point x="{n}.25" y="{n % 2 * 1000}.5" segmenttype="0"/>\n'
            for n in range(i, i + step)
        ).encode()
        written += len(block)
        i += step
        yield block
    yield b'<point x="5" y="-1000000" segmenttype="0"/>' + POLYGON_END


# name -> (what a size counts, the size, blocks of the boundary file for a size)
BOUNDARIES = {
    'all "<"': ("MB", 100, lambda mb: repeated(b"<", mb * 1_000_000)),
    "all quotes": ("MB", 100, lambda mb: repeated(b'"', mb * 1_000_000)),
    "quotes in a tag": ("MB", 100, lambda mb: in_model(b"<group ", b'"', mb * 1_000_000, b"/>")),
    "unclosed tags": ("MB", 100, lambda mb: repeated(b"<a>", mb * 1_000_000)),
    "tags that do not end": ("MB", 100, lambda mb: repeated(b"<a ", mb * 1_000_000)),
    "brackets of a document type": ("MB", 100, lambda mb: around(b"<!", b"[", mb * 1_000_000, b"")),
    "comments": ("MB", 100, lambda mb: in_model(b"", b"<!---->", mb * 1_000_000, b"")),
    "one attribute value": (
        "MB",
        100,
        lambda mb: in_model(b'<group type="', b"a&lt;", mb * 1_000_000, b'"/>'),
    ),
    "one element name": ("MB", 100, lambda mb: in_model(b"<", b"a", mb * 1_000_000, b"/>")),
    "one name, start and end": (
        "MB",
        100,
        lambda mb: (
            part
            for blocks in (
                around(b"<r><TavelDGM><", b"a", mb * 500_000, b">"),
                around(b"</", b"a", mb * 500_000, b"></TavelDGM></r>"),
            )
            for part in blocks
        ),
    ),
    "one number": (
        "MB",
        100,
        lambda mb: around(
            POLYGON + b'<point x="',
            b"1234567890",
            mb * 1_000_000,
            b'" y="0" segmenttype="0"/>' + POLYGON_END,
        ),
    ),
    "siblings that are not looked for": (
        "thousand",
        1000,
        lambda k: in_model(b"", b"<other/>", k * 8_000, b""),
    ),
    "groups, each with its trace": (
        "thousand",
        1000,
        lambda k: in_model(b"", b"<group/>", k * 8_000, b""),
    ),
    "levels": (
        "thousand",
        1000,
        lambda k: (
            part
            for blocks in (repeated(b"<a>", k * 3_000), repeated(b"</a>", k * 4_000))
            for part in blocks
        ),
    ),
    "attributes before type": (
        "thousand",
        1000,
        lambda k: numbered(
            b"<r><TavelDGM><group", ' a%d="v"', k * 1000, b' type="other"/></TavelDGM></r>'
        ),
    ),
    "tokens in a point": (
        "thousand",
        1000,
        lambda k: numbered(POLYGON + b"<point", " t%d", k * 1000, POINT_END + POLYGON_END),
    ),
    "one number for all points": (
        "MB",
        100,
        lambda mb: (
            part
            for blocks in (
                around(POLYGON, b"<point a\"a' '\"/>", mb * 500_000, b"<point ' x=\""),
                around(b"", b" ", mb * 500_000, b'1" y="1" segmenttype="0"/>' + POLYGON_END),
            )
            for part in blocks
        ),
    ),
    "attributes in a point": (
        "thousand",
        1000,
        lambda k: numbered(POLYGON + b"<point", ' a%d="v"', k * 1000, POINT_END + POLYGON_END),
    ),
}

# name -> (what a size counts, the size, blocks of the scan for a size)
SCANS = {
    "no line feed": ("MB", 100, lambda mb: repeated(b"x;y;z", mb * 1_000_000)),
    "one record": ("MB", 100, lambda mb: around(b"x;y;z\n5;5;", b"a", mb * 1_000_000, b"\n")),
    "one number in a record": (
        "MB",
        100,
        lambda mb: around(b"x;y;z\n", b"1", mb * 1_000_000, b";5;1\n"),
    ),
    "blanks before a number": (
        "MB",
        100,
        lambda mb: around(b"x;y;z\n", b" ", mb * 1_000_000, b"5;5;1\n"),
    ),
    "line feeds": ("MB", 100, lambda mb: around(b"x;y;z\n", b"\n", mb * 1_000_000, b"")),
    "numbers that are none": (
        "MB",
        100,
        lambda mb: around(b"x;y;z\n", b"1e+;5;1\n", mb * 1_000_000, b""),
    ),
    "numbers out of range": (
        "MB",
        100,
        lambda mb: around(b"x;y;z\n", b"1e-999;5;1\n", mb * 1_000_000, b""),
    ),
}
