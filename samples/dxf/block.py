"""Block definitions and spaces, and the entities that are drawn in them."""
import math

from dxf.records import Record
from dxf.values import point


class Block:
    """A block definition (or a layout's space) and the entities in it."""

    def __init__(self, drawing, name, flags=0, path="", paper=False, handles=(None, None, None)):
        self.drawing, self.name, self.paper, self.entities, self.layout = drawing, name, paper, [], None
        self.record = drawing.record("BLOCK_RECORD", name, handle=handles[0])
        self.begin = self._entity("BLOCK", "0", [(100, "AcDbBlockBegin"), (2, name), (70, flags), *point(10, 0, 0), (3, name), (1, path)],
                                  handle=handles[1])
        self.end = self._entity("ENDBLK", "0", [(100, "AcDbBlockEnd")], handle=handles[2])

    @classmethod
    def space(cls, drawing, paper):
        """A space of a drawing that lists none among its blocks."""
        space = cls.__new__(cls)
        space.drawing, space.name, space.paper, space.entities, space.record = drawing, "", paper, [], None
        return space

    def _entity(self, kind, layer, groups, owner=None, handle=None, ltype=None, color=None, true=None, weight=None, ltscale=None):
        space = [(67, 1)] if self.paper else []
        props = [(6, ltype), (62, color), (48, ltscale), (420, true), (370, weight)]
        return Record(self.drawing, kind, owner or self.record, (100, "AcDbEntity"), *space, (8, layer),
                      *(pair for pair in props if pair[1] is not None), *groups, handle=handle)

    def add(self, kind, layer, groups, **props):
        entity = self._entity(kind, layer, groups, **props)
        self.entities.append(entity)
        return entity

    def line(self, layer, x1, y1, x2, y2, **props):
        return self.add("LINE", layer, [(100, "AcDbLine"), *point(10, x1, y1), *point(11, x2, y2)], **props)

    def lines(self, layer, *ends, **props):
        for end in ends:
            self.line(layer, *end, **props)

    def circle(self, layer, x, y, radius, **props):
        return self.add("CIRCLE", layer, [(100, "AcDbCircle"), *point(10, x, y), (40, radius)], **props)

    def arc(self, layer, x, y, radius, start, end, **props):
        return self.add("ARC", layer, [(100, "AcDbCircle"), *point(10, x, y), (40, radius), (100, "AcDbArc"), (50, start), (51, end)], **props)

    def ellipse(self, layer, x, y, major, ratio, **props):
        return self.add("ELLIPSE", layer, [(100, "AcDbEllipse"), *point(10, x, y), *point(11, *major), *point(210, 0, 0, 1),
                                           (40, ratio), (41, 0), (42, 2 * math.pi)], **props)

    def point(self, layer, x, y, **props):
        return self.add("POINT", layer, [(100, "AcDbPoint"), *point(10, x, y)], **props)

    def solid(self, layer, *corners, **props):
        corners = (corners + corners[-1:])[:4]
        return self.add("SOLID", layer, [(100, "AcDbTrace")] + [pair for i, corner in enumerate(corners) for pair in point(10 + i, *corner)],
                        **props)

    def polyline(self, layer, vertices, closed=True, width=None, **props):
        """An LWPOLYLINE; a vertex is (x, y) or (x, y, bulge)."""
        groups = [(100, "AcDbPolyline"), (90, len(vertices)), (70, int(closed)), (43, width or 0)]
        for x, y, *bulge in vertices:
            groups += [(10, x), (20, y)] + ([(42, bulge[0])] if bulge else [])
        return self.add("LWPOLYLINE", layer, groups, **props)

    def rectangle(self, layer, x1, y1, x2, y2, **props):
        return self.polyline(layer, [(x1, y1), (x2, y1), (x2, y2), (x1, y2)], **props)

    def heavy_polyline(self, layer, vertices, closed=True, **props):
        head = self.add("POLYLINE", layer, [(100, "AcDb2dPolyline"), (66, 1), *point(10, 0, 0), (70, int(closed))], **props)
        for x, y, *bulge in vertices:
            self.add("VERTEX", layer, [(100, "AcDbVertex"), (100, "AcDb2dVertex"), *point(10, x, y)] + [(42, b) for b in bulge], owner=head)
        self.add("SEQEND", layer, [], owner=head)
        return head

    def spline(self, layer, controls, **props):
        inner = len(controls) - 4
        knots = [0.0] * 4 + [float(i + 1) for i in range(inner)] + [float(inner + 1)] * 4
        groups = [(100, "AcDbSpline"), *point(210, 0, 0, 1), (70, 8), (71, 3), (72, len(knots)), (73, len(controls)), (74, 0),
                  (42, 1e-9), (43, 1e-10), *((40, knot) for knot in knots)]
        return self.add("SPLINE", layer, groups + [pair for control in controls for pair in point(10, *control)], **props)

    def hatch(self, layer, corners, pattern="SOLID", families=(), **props):
        """A hatch in a polygon; a family of pattern lines is (angle, offset x, offset y, dashes)."""
        solid = int(not families)
        groups = [(100, "AcDbHatch"), *point(10, 0, 0), *point(210, 0, 0, 1), (2, pattern), (70, solid), (71, 0), (91, 1), (92, 7),
                  (72, 0), (73, 1), (93, len(corners))]
        for x, y in corners:
            groups += [(10, x), (20, y)]
        groups += [(97, 0), (75, 1), (76, 1)]
        if families:
            groups += [(52, 0), (41, 1), (77, 0), (78, len(families))]
            for angle, dx, dy, dashes in families:
                groups += [(53, angle), (43, 0), (44, 0), (45, dx), (46, dy), (79, len(dashes)), *((49, dash) for dash in dashes)]
        middle = [sum(values) / len(corners) for values in zip(*corners)]
        return self.add("HATCH", layer, groups + [(98, 1), (10, middle[0]), (20, middle[1])], **props)

    def _text_groups(self, x, y, height, text, angle=0, centred=False, style=None):
        groups = [(100, "AcDbText"), *point(10, x, y), (40, height), (1, text)] + ([(50, angle)] if angle else [])
        return groups + ([(7, style)] if style else []) + ([(72, 1), *point(11, x, y)] if centred else [])

    def text(self, layer, x, y, height, text, angle=0, centred=False, style=None, **props):
        tail = [(100, "AcDbText")] + ([(73, 2)] if centred else [])
        return self.add("TEXT", layer, self._text_groups(x, y, height, text, angle, centred, style) + tail, **props)

    def mtext(self, layer, x, y, height, width, text, attach=1, style=None, **props):
        return self.add("MTEXT", layer, [(100, "AcDbMText"), *point(10, x, y), (40, height), (41, width), (71, attach), (72, 1), (1, text),
                                         *([(7, style)] if style else []), (73, 1), (44, 1)], **props)

    def _attribute_end(self, tag, prompt=None):
        version = [(280, 0)] if self.drawing.version > "AC1015" else []
        return version + ([(3, prompt)] if prompt else []) + [(2, tag), (70, 0)] + version

    def attribute_definition(self, layer, x, y, height, tag, prompt, default):
        return self.add("ATTDEF", layer, self._text_groups(x, y, height, default)
                        + [(100, "AcDbAttributeDefinition")] + self._attribute_end(tag, prompt))

    def insert(self, layer, name, x, y, scale=(1, 1), angle=0, columns=1, rows=1, dx=0, dy=0, attributes=(), **props):
        """A block reference; an attribute is (tag, layer, x, y, height, text)."""
        array = columns * rows > 1
        groups = [(100, "AcDbMInsertBlock" if array else "AcDbBlockReference")] + ([(66, 1)] if attributes else []) + [(2, name), *point(10, x, y)]
        if tuple(scale) != (1, 1):
            groups += [(41, scale[0]), (42, scale[1]), (43, scale[0] if scale[0] == scale[1] else 1)]
        groups += ([(50, angle)] if angle else []) + ([(70, columns), (71, rows), (44, dx), (45, dy)] if array else [])
        head = self.add("INSERT", layer, groups, **props)
        for tag, on, tx, ty, height, text in attributes:
            self.add("ATTRIB", on, self._text_groups(tx, ty, height, text) + [(100, "AcDbAttribute")] + self._attribute_end(tag),
                     owner=head)
        if attributes:
            self.add("SEQEND", layer, [], owner=head)
        return head

    def dimension(self, layer, start, end, line, text=None):
        """A dimension along x, or along y when both points have one x; `line` is where its line runs. Its picture is a block *D."""
        upright = start[0] == end[0]
        along, across = (1, 0) if upright else (0, 1)
        length = abs(end[along] - start[along])
        scale = self.drawing.header["dimscale"]
        at = lambda point, value: (value, point[1]) if upright else (point[0], value)
        foot, tip = at(start, line), at(end, line)
        middle = [(foot[i] + tip[i]) / 2 - (3.2 * scale if i == across else 0) * (1 if upright else -1) for i in (0, 1)]
        picture = self.drawing.block(f"*D{1 + sum(name.startswith('*D') for name in self.drawing.blocks)}", flags=1)
        for point_, end_ in ((start, foot), (end, tip)):
            picture.line("0", *at(point_, point_[across] + math.copysign(0.625 * scale, line - point_[across])),
                         *at(end_, line + math.copysign(1.25 * scale, line - point_[across])), color=0, weight=-2)
            tick = 0.9 * scale
            picture.line("0", end_[0] - tick, end_[1] - tick, end_[0] + tick, end_[1] + tick, color=0, weight=-2)
            picture.point("Defpoints", *point_, color=0)
        picture.line("0", *foot, *tip, color=0, weight=-2)
        text = text or f"{length:.0f}"
        picture.text("0", *middle, 2.5 * scale, text, angle=90 if upright else 0, centred=True, color=0)
        return self.add("DIMENSION", layer, [
            (100, "AcDbDimension"), *([(280, 0)] if self.drawing.utf8 else []), (2, picture.name), *point(10, *tip), *point(11, *middle),
            (70, 32), (71, 5), (42, length), (3, "ISO-25"), (100, "AcDbAlignedDimension"), *point(13, *start), *point(14, *end),
            *([(50, 90)] if upright else []), (100, "AcDbRotatedDimension")])

    def viewport(self, layer, number, x, y, width, height, view=(0, 0), view_height=0.0, target=(0, 0), twist=0, frozen=(), locked=False):
        """A viewport on paper; number 1 is the sheet itself. The twist is in degrees."""
        view_height = view_height or height
        if self.drawing.r12:
            return self._r12_viewport(layer, number, x, y, width, height, view, view_height, target, twist, frozen)
        flags = (0x8020 if number == 1 else 0x8060) | (0xC0000 if self.drawing.utf8 else 0) | (0x4000 if locked else 0)
        groups = [(100, "AcDbViewport"), *point(10, x, y), (40, width), (41, height), (68, number), (69, number), (12, view[0]), (22, view[1]),
                  (13, 0), (23, 0), (14, 10), (24, 10), (15, 10), (25, 10), *point(16, 0, 0, 1), *point(17, *target), (42, 50), (43, 0), (44, 0),
                  (45, view_height), (50, 0), (51, twist), (72, 1000), *((331, layer) for layer in frozen), (90, flags), (1, ""), (281, 0),
                  (71, 1), (74, 0), *point(110, 0, 0), *point(111, 1, 0), *point(112, 0, 1), (79, 0), (146, 0)]
        if self.drawing.version > "AC1018":
            groups += [(170, 0), (61, 5), (292, 1), (282, 1), (141, 0), (142, 0), (63, 250), (421, 3355443)]
        return self.add("VIEWPORT", layer, groups)

    def _r12_viewport(self, layer, number, x, y, width, height, view, view_height, target, twist, frozen):
        entity = self.add("VIEWPORT", layer, [*point(10, x, y), (40, width), (41, height), (68, number), (69, number)])
        entity.data = [(1001, "ACAD"), (1000, "MVIEW"), (1002, "{"), (1070, 16), *point(1010, *target), *point(1010, 0, 0, 1), (1040, math.radians(twist)),
                       (1040, view_height), (1040, view[0]), (1040, view[1]), (1040, 50), (1040, 0), (1040, 0),
                       *((1070, n) for n in (0, 1000, 1, 1, 0, 0, 0, 0)), *((1040, n) for n in (0, 0, 0, 10, 10, 10, 10)), (1070, 0),
                       (1002, "{"), *((1003, name) for name in frozen), (1002, "}"), (1002, "}")]
        return entity
