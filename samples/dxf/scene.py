"""What a drawing shows: its curves as runs of points, through nested blocks and external references."""
import math

from dxf.reader import first, number, numbers, points

IDENTITY = (1, 0, 0, 1, 0, 0)
STEPS = 24  # pieces of a full turn, and of a spline


def times(outer, inner):
    """The affine map that does `inner` first; (a, b, c, d, e, f) maps x, y to a x + c y + e, b x + d y + f."""
    a, b, c, d, e, f = outer
    p, q, r, s, t, u = inner
    return a * p + c * q, b * p + d * q, a * r + c * s, b * r + d * s, a * t + c * u + e, b * t + d * u + f


def moved(matrix, place):
    a, b, c, d, e, f = matrix
    return a * place[0] + c * place[1] + e, b * place[0] + d * place[1] + f


def arc_points(x, y, radius, start, end, steps=STEPS):
    turn = (end - start) % 360 or 360
    count = max(2, math.ceil(steps * turn / 360 * 4))
    return [(x + radius * math.cos(angle), y + radius * math.sin(angle)) for angle in
            (math.radians(start + turn * i / count) for i in range(count + 1))]


def bulge_points(start, end, bulge):
    """From start to end, without the start."""
    if not bulge:
        return [end]
    turn, (dx, dy) = 4 * math.atan(bulge), (end[0] - start[0], end[1] - start[1])
    side = (1 / bulge - bulge) / 2
    centre = (start[0] + end[0] - dy * side) / 2, (start[1] + end[1] + dx * side) / 2
    count = max(2, math.ceil(STEPS * abs(turn)))
    turned = []
    for i in range(1, count + 1):
        sine, cosine = math.sin(turn * i / count), math.cos(turn * i / count)
        x, y = start[0] - centre[0], start[1] - centre[1]
        turned.append((centre[0] + x * cosine - y * sine, centre[1] + x * sine + y * cosine))
    return turned


def polyline_points(vertices, bulges, closed):
    run = vertices[:1]
    for i in range(1, len(vertices) + closed):
        run += bulge_points(vertices[i - 1], vertices[i % len(vertices)], bulges[i - 1])
    return run


def lightweight_points(record):
    vertices, bulges = [], []
    for code, value in record[record.index((100, "AcDbPolyline")):]:
        if code == 10:
            vertices.append([float(value), 0.0])
            bulges.append(0.0)
        elif code == 20:
            vertices[-1][1] = float(value)
        elif code == 42:
            bulges[-1] = float(value)
    return polyline_points([tuple(vertex) for vertex in vertices], bulges, int(first(record, 70)) & 1)


def spline_points(record):
    knots, controls, degree = numbers(record, 40), points(record, 10), int(first(record, 71))
    low, high = knots[degree], knots[-degree - 1]
    return [de_boor(knots, controls, degree, low + (high - low) * i / (STEPS * 8)) for i in range(STEPS * 8 + 1)]


def de_boor(knots, controls, degree, at):
    span = max(i for i in range(degree, len(controls)) if knots[i] <= at)
    work = [controls[span - degree + i] for i in range(degree + 1)]
    for level in range(1, degree + 1):
        for i in range(degree, level - 1, -1):
            low = knots[span - degree + i]
            part = (at - low) / (knots[span + i - level + 1] - low)
            work[i] = tuple((1 - part) * a + part * b for a, b in zip(work[i - 1], work[i]))
    return work[degree]


def ellipse_points(record):
    (x, y), (mx, my), ratio = points(record, 10)[0], points(record, 11)[0], number(record, 40)
    start, end = number(record, 41), number(record, 42)
    angles = [start + (end - start) * i / (STEPS * 4) for i in range(STEPS * 4 + 1)]
    return [(x + mx * math.cos(a) - my * ratio * math.sin(a), y + my * math.cos(a) + mx * ratio * math.sin(a)) for a in angles]


def text_box(record):
    """A text's box, by a guess of its width."""
    (x, y), height, text = points(record, 10)[0], number(record, 40), first(record, 1)
    width = number(record, 41) if record[0][1] == "MTEXT" else 0.8 * height * len(text)
    low, high, left = y, y + height, x
    if record[0][1] == "MTEXT":
        low, high, left = y - 1.6 * height * (1 + text.count("\\P")), y, x - (width / 2 if int(first(record, 71)) in (2, 5, 8) else 0)
    elif first(record, 72):
        low, high, left = y - height / 2, y + height / 2, x - width / 2
    angle = math.radians(number(record, 50))
    turn = times((math.cos(angle), math.sin(angle), -math.sin(angle), math.cos(angle), x, y), (1, 0, 0, 1, -x, -y))
    return [moved(turn, corner) for corner in ((left, low), (left + width, low), (left + width, high), (left, high), (left, low))]


def curve(record):
    """The run of points of one entity; none for what shows nothing of its own."""
    kind = record[0][1]
    if kind == "LINE":
        return points(record, 10) + points(record, 11)
    if kind in ("CIRCLE", "ARC"):
        return arc_points(*points(record, 10)[0], number(record, 40), number(record, 50), number(record, 51, 360))
    if kind == "SOLID":
        corners = [points(record, 10 + i)[0] for i in (0, 1, 3, 2)]
        return corners + corners[:1]
    if kind == "HATCH":
        corners = points(record[:[code for code, _ in record].index(75)], 10)[1:]
        return corners + corners[:1]
    simple = {"LWPOLYLINE": lightweight_points, "SPLINE": spline_points, "ELLIPSE": ellipse_points, "TEXT": text_box, "ATTRIB": text_box,
              "MTEXT": text_box, "POINT": lambda entity: points(entity, 10) * 2}
    return simple[kind](record) if kind in simple else []


class Shown:
    """One entity as it is seen: its points in the space, its layer, the references around it, innermost first."""

    def __init__(self, record, run, containers, file):
        self.record, self.run, self.containers, self.file = record, run, containers, file
        self.layer = first(record, 8)

    def distance(self, x, y):
        """From a place to the nearest point; a text is one filled box."""
        if self.record[0][1] in ("TEXT", "MTEXT", "ATTRIB") and is_inside((x, y), self.run):
            return 0.0
        return min(segment_distance((x, y), a, b) for a, b in zip(self.run, self.run[1:]))


def is_inside(place, corners):
    """In a convex outline whose first and last points are the same."""
    turns = [(b[0] - a[0]) * (place[1] - a[1]) - (b[1] - a[1]) * (place[0] - a[0]) for a, b in zip(corners, corners[1:])]
    return min(turns) >= 0 or max(turns) <= 0


def segment_distance(place, start, end):
    dx, dy = end[0] - start[0], end[1] - start[1]
    length = dx * dx + dy * dy
    part = max(0, min(1, ((place[0] - start[0]) * dx + (place[1] - start[1]) * dy) / length)) if length else 0
    return math.hypot(start[0] + part * dx - place[0], start[1] + part * dy - place[1])


class Scene:
    """Goes through the entities of a space; `references` gives the files of external references by block name."""

    def __init__(self, file, references=None):
        self.file, self.references = file, references or {}

    def shown(self, space="*Model_Space"):
        yield from self._walk(self.file.space(space), IDENTITY, (), self.file)

    def _walk(self, records, matrix, containers, file):
        vertices, head = [], None
        for record in records:
            kind = record[0][1]
            if kind in ("INSERT", "DIMENSION"):
                yield from self._reference(record, matrix, containers, file)
            elif kind == "POLYLINE":
                vertices, head = [], record
            elif kind == "VERTEX":
                vertices.append((*points(record, 10)[0], number(record, 42)))
            elif kind == "SEQEND" and vertices:
                run = polyline_points([vertex[:2] for vertex in vertices], [vertex[2] for vertex in vertices], int(first(head, 70, 0)) & 1)
                yield Shown(head, [moved(matrix, place) for place in run], containers, file)
                vertices = []
            else:
                run = curve(record)
                if run:
                    yield Shown(record, [moved(matrix, place) for place in run], containers, file)

    def _reference(self, record, matrix, containers, file):
        name = first(record, 2)
        if file is self.file and name in self.references:
            inside, entities = self.references[name], self.references[name].space("*Model_Space")
        else:
            inside, entities = file, file.blocks[name]["entities"]
        for place in self._placements(record):
            yield from self._walk(entities, times(matrix, place), ((name, first(record, 8)), *containers), inside)

    @staticmethod
    def _placements(record):
        if record[0][1] == "DIMENSION":
            yield IDENTITY
            return
        (x, y), angle = points(record, 10)[0], math.radians(number(record, 50))
        turn = (math.cos(angle), math.sin(angle), -math.sin(angle), math.cos(angle), x, y)
        scale = (number(record, 41, 1), 0, 0, number(record, 42, 1), 0, 0)
        for row in range(int(number(record, 71, 1))):
            for column in range(int(number(record, 70, 1))):
                shift = (1, 0, 0, 1, column * number(record, 44), row * number(record, 45))
                yield times(times(turn, shift), scale)

    def extents(self, space="*Model_Space"):
        places = [place for shown in self.shown(space) for place in shown.run]
        return tuple(map(min, zip(*places))), tuple(map(max, zip(*places)))
