"""The records and boundaries that are measured on: the same on every machine.

All records lie in a square. Shapes are lists of rings, with coordinates in whole millimetres:

- square: covers half of the area.
- ring-N: one wavy ring of N vertices with a rough line, which covers half of the area.
- everything: a square around the area.
- spikes-N: one ring of N vertices at random distances of 3900 to 4900 m from the middle.
- needles-N: the same with 100 to 4900 m: nearly no cell of any grid is free of edges.
- polygons-N: N separate polygons of 20 vertices in rows, which cover half of the area.
- frame-N: one ring of about N vertices that runs along the outside of the area and back, without
  closing: the area lies within its bounds, and none of it within the ring.
"""

import math

WEST = 500_000
SOUTH = 5_400_000
SIDE = 10_000
EAST = WEST + SIDE
NORTH = SOUTH + SIDE
CENTRE = (WEST + SIDE / 2, SOUTH + SIDE / 2)
FULL_TURN = 2 * math.pi

RECORD_HEADER = b"x;y;z\n"
RECORD_SIZE = 27  # bytes, the line feed included: 503214.07;5401876.93;46.50


def random_numbers(seed):
    """SplitMix64 (G. L. Steele et al., "Fast Splittable Pseudorandom Number Generators", OOPSLA
    2014): numbers below 2**64."""
    state, limit = seed, (1 << 64) - 1
    while True:
        state = (state + 0x9E3779B97F4A7C15) & limit
        z = ((state ^ (state >> 30)) * 0xBF58476D1CE4E5B9) & limit
        z = ((z ^ (z >> 27)) * 0x94D049BB133111EB) & limit
        yield z ^ (z >> 31)


def evenly_spread(seed):
    """A function that draws numbers between a low and a high one."""
    numbers = random_numbers(seed)
    return lambda low, high: low + (high - low) * ((next(numbers) >> 11) * 2.0**-53)


def records(count):
    """A file of records, in blocks: evenly spread over the area, two decimals."""
    yield RECORD_HEADER
    draw = random_numbers(4).__next__
    end = SIDE * 100 + 1
    step = 10_000
    for start in range(0, count, step):
        yield "".join(
            f"{WEST + ((draw() >> 32) * end >> 32) / 100:.2f}"
            f";{SOUTH + ((draw() >> 32) * end >> 32) / 100:.2f}"
            f";{10 + ((draw() >> 32) * 9000 >> 32) / 100:.2f}\n"
            for _ in range(min(step, count - start))
        ).encode()


def around(radii, centre, scale):
    """The ring around `centre` with its vertices at these radii, at equal angles."""
    angles = (FULL_TURN * i / len(radii) for i in range(len(radii)))
    return [
        (centre[0] + scale * radius * math.cos(angle), centre[1] + scale * radius * math.sin(angle))
        for radius, angle in zip(radii, angles)
    ]


def scale_to_area(radii, area):
    """The factor that makes a ring with these radii, at equal angles, cover `area`."""
    products = sum(a * b for a, b in zip(radii, radii[1:] + radii[:1]))
    return math.sqrt(2 * area / (products * math.sin(FULL_TURN / len(radii))))


def box(gap):
    """The square that is larger than the area by `gap` on all sides."""
    west, south, east, north = WEST - gap, SOUTH - gap, EAST + gap, NORTH + gap
    return [(west, south), (east, south), (east, north), (west, north)]


def ring(size):
    draw = evenly_spread(1)
    waves = [(wave, draw(0.0, FULL_TURN)) for wave in (3.0, 7.0, 19.0, 53.0)]
    step = FULL_TURN / size
    # As rough as an edge is long, so that the line turns at every vertex.
    roughness = min(step, 0.02)
    radii = [
        1.0
        + sum(0.2 / wave * math.sin(wave * step * i + phase) for wave, phase in waves)
        + roughness * draw(-0.5, 0.5)
        for i in range(size)
    ]
    return [around(radii, CENTRE, scale_to_area(radii, SIDE * SIDE / 2))]


def star(size, shortest):
    draw = evenly_spread(2)
    return [around([draw(shortest, 4900.0) for _ in range(size)], CENTRE, 1.0)]


def polygons(count):
    rows = math.ceil(math.sqrt(count))
    columns = -(-count // rows)
    width, height = SIDE / columns, SIDE / rows
    draw = evenly_spread(3)
    rings = []
    for i in range(count):
        radii = [draw(0.9, 1.1) for _ in range(20)]
        centre = (WEST + (i % columns + 0.5) * width, SOUTH + (i // columns + 0.5) * height)
        rings.append(around(radii, centre, scale_to_area(radii, width * height / 2)))
    return rings


def frame(size):
    """Three sides of a square: up along one path, back along another one beside it."""
    each = max(size // 6, 1)
    path = []
    for gap, direction in ((20, 1), (10, -1)):
        west_south, east_south, east_north, west_north = box(gap)
        corners = [east_north, east_south, west_south, west_north][::direction]
        for (x, y), (next_x, next_y) in zip(corners, corners[1:]):
            path += [
                (x + i / each * (next_x - x), y + i / each * (next_y - y)) for i in range(each)
            ]
        path.append(corners[-1])
    return [path]


def make_shape(name):
    """The rings of a shape."""
    kind, _, size = name.partition("-")
    makers = {
        "square": lambda: [box(SIDE * (math.sqrt(0.5) - 1) / 2)],
        "everything": lambda: [box(1)],
        "ring": lambda: ring(int(size)),
        "spikes": lambda: star(int(size), 3900.0),
        "needles": lambda: star(int(size), 100.0),
        "polygons": lambda: polygons(int(size)),
        "frame": lambda: frame(int(size)),
    }
    return makers[kind]()


def boundary_file(shape):
    """The boundary file of a shape, in blocks."""
    yield b'<project>\n <TavelDGM>\n  <group type="boundaries">\n'
    for number, vertices in enumerate(make_shape(shape), 1):
        points = (
            f'      <point x="{x:.3f}" y="{y:.3f}" segmenttype="0"/>\n' for x, y in vertices
        )
        yield f'   <polygon id="{number}">\n{"".join(points)}   </polygon>\n'.encode()
    yield b"  </group>\n </TavelDGM>\n</project>\n"


def table_of_points(shape):
    """The rings of a shape as plain rows of coordinates, for programs that read no XML."""
    for vertices in make_shape(shape):
        closed = [*vertices, vertices[0]]
        yield (">\n" + "".join(f"{x:.3f} {y:.3f}\n" for x, y in closed)).encode()
