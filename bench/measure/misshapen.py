"""Inputs that are large or out of shape, in blocks.

An input is a list of parts: fixed and repeated ones by turns, beginning and ending with a fixed
one. All repeated parts occur equally often. In them, %(n)d stands for the repetition's number.
"""

BLOCK = 1 << 20

MODEL, MODEL_END = b"<r><TavelDGM>", b"</TavelDGM></r>"
GROUP, GROUP_END = MODEL + b'<group type="boundaries">', b"</group>" + MODEL_END
POLYGON, POLYGON_END = GROUP + b'<polygon id="1">', b"</polygon>" + GROUP_END
POINT_END = b' x="1" y="1" segmenttype="0"/>' + POLYGON_END
SQUARE = (
    POLYGON
    + b'<point x="0" y="0" segmenttype="0"/><point x="9" y="0" segmenttype="0"/>'
    + b'<point x="9" y="9" segmenttype="0"/><point x="0" y="9" segmenttype="0"/>'
    + POLYGON_END
)
HEADER = b"x;y;z\n"
SCAN = HEADER + b"5;5;1\n"

# name -> (megabytes, the parts)
BOUNDARIES = {
    'all "<"': (100, b"", b"<", b""),
    "all quotes": (100, b"", b'"', b""),
    "quotes in a tag": (100, MODEL + b"<group ", b'"', b"/>" + MODEL_END),
    "unclosed tags": (100, b"", b"<a>", b""),
    "tags that do not end": (100, b"", b"<a ", b""),
    "brackets of a document type": (100, b"<!", b"[", b""),
    "comments": (100, MODEL, b"<!---->", MODEL_END),
    "one attribute value": (100, MODEL + b'<group type="', b"a&lt;", b'"/>' + MODEL_END),
    "one element name": (100, MODEL + b"<", b"a", b"/>" + MODEL_END),
    "one name, start and end": (100, MODEL + b"<", b"a", b"></", b"a", b">" + MODEL_END),
    "one number": (
        100, POLYGON + b'<point x="', b"1234567890", b'" y="0" segmenttype="0"/>' + POLYGON_END
    ),
    "siblings that are not looked for": (8, MODEL, b"<other/>", MODEL_END),
    "groups, each with its trace": (8, MODEL, b"<group/>", MODEL_END),
    "levels": (7, b"", b"<a>", b"", b"</a>", b""),
    "attributes before type": (
        12, MODEL + b"<group", b' a%(n)d="v"', b' type="other"/>' + MODEL_END
    ),
    "tokens in a point": (8, POLYGON + b"<point", b" t%(n)d", POINT_END),
    "one number for all points": (
        100, POLYGON, b"<point a\"a' '\"/>", b"<point ' x=\"", b" " * 17,
        b'1" y="1" segmenttype="0"/>' + POLYGON_END
    ),
    "attributes in a point": (12, POLYGON + b"<point", b' a%(n)d="v"', POINT_END),
}

SCANS = {
    "no line feed": (100, b"", b"x;y;z", b""),
    "one record": (100, HEADER + b"5;5;", b"a", b"\n"),
    "one number in a record": (100, HEADER, b"1", b";5;1\n"),
    "blanks before a number": (100, HEADER, b" ", b"5;5;1\n"),
    "line feeds": (100, HEADER, b"\n", b""),
    "numbers that are none": (100, HEADER, b"1e+;5;1\n", b""),
    "numbers out of range": (100, HEADER, b"1e-999;5;1\n", b""),
}

# A saw along a wide strip.
SAW = (
    POLYGON,
    b'<point x="%(n)d.25" y="0.5" segmenttype="0"/>\n'
    b'<point x="%(n)d.75" y="1000.5" segmenttype="0"/>\n',
    b'<point x="5" y="-1000000" segmenttype="0"/>' + POLYGON_END,
)

# Squares of 8 m, 10 m apart, a thousand in a row, from the corner of the area of all records.
SQUARES = (
    GROUP,
    b'<polygon id="%(n)d"><point x="50%(x)03d0" y="540%(y)03d0" segmenttype="0"/>'
    b'<point x="50%(x)03d8" y="540%(y)03d0" segmenttype="0"/>'
    b'<point x="50%(x)03d8" y="540%(y)03d8" segmenttype="0"/>'
    b'<point x="50%(x)03d0" y="540%(y)03d8" segmenttype="0"/></polygon>\n',
    GROUP_END,
)


def repeated(unit, count):
    step = max(1, BLOCK // len(unit))
    for start in range(0, count, step):
        numbers = range(start, min(start + step, count))
        if b"%" in unit:
            values = ({b"n": n, b"x": n % 1000, b"y": n // 1000} for n in numbers)
            yield b"".join(unit % each for each in values)
        else:
            yield unit * len(numbers)


def blocks(parts, count):
    """The parts, with `count` repetitions of each that is repeated."""
    for i, part in enumerate(parts):
        yield from [part] if i % 2 == 0 else repeated(part, count)


def count_for(parts, size):
    """The number of repetitions that makes about `size` bytes."""
    unit = b"".join(parts[1::2])
    return -(-size // len(unit % {b"n": 99_999, b"x": 0, b"y": 0} if b"%" in unit else unit))
