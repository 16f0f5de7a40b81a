"""A small writer of drawings in group codes.

A Drawing holds tables, blocks, layouts and objects as Records; every Record has a handle and an owner. `save` writes the
sections in the order that strict readers expect, as text or in binary form, from R12 (AC1009) to 2018 (AC1032).
"""
import codecs
import math
import struct

RECORD_MARKERS = {
    "VPORT": "AcDbViewportTableRecord", "LTYPE": "AcDbLinetypeTableRecord", "LAYER": "AcDbLayerTableRecord",
    "STYLE": "AcDbTextStyleTableRecord", "VIEW": "AcDbViewTableRecord", "UCS": "AcDbUCSTableRecord",
    "APPID": "AcDbRegAppTableRecord", "DIMSTYLE": "AcDbDimStyleTableRecord", "BLOCK_RECORD": "AcDbBlockTableRecord"}
TABLE_HANDLES = {"VPORT": 8, "LTYPE": 5, "LAYER": 2, "STYLE": 3, "VIEW": 6, "UCS": 7, "APPID": 9, "DIMSTYLE": 10, "BLOCK_RECORD": 1}
CLASSES = (("ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault"), ("ACDBPLACEHOLDER", "AcDbPlaceHolder"),
           ("LAYOUT", "AcDbLayout"), ("DICTIONARYVAR", "AcDbDictionaryVar"), ("MATERIAL", "AcDbMaterial"))
LINETYPES = {  # description, dash lengths: positive pen down, negative pen up, 0 a dot
    "CENTER": ("Center ____ _ ____ _ ____", (31.75, -6.35, 6.35, -6.35)),
    "DASHED": ("Dashed __ __ __ __ __ __", (12.7, -6.35)),
    "HIDDEN": ("Hidden __ __ __ __ __ __", (6.35, -3.175)),
    "PHANTOM": ("Phantom ______ __ __ ______", (31.75, -6.35, 6.35, -6.35, 6.35, -6.35)),
    "DOT": ("Dot . . . . . . . . . . .", (0.0, -6.35))}
CODE_PAGES = {"ANSI_1252": "cp1252", "dos850": "cp850"}
BINARY_SENTINEL = b"KORVEX. Binary DXF\r\n\x1a\0"
LAYER_MARKS = {"frozen": 1, "newvp": 2, "locked": 4, "xref": 48}

# Header variables: name, then group code and value pairs. "@" is the origin as a 3D point, "." an empty text.
HEADER_SHORT = """\
INSBASE @|EXTMIN {extmin}|EXTMAX {extmax}|LIMMIN 10 0 20 0|LIMMAX 10 420 20 297|ORTHOMODE 70 0|REGENMODE 70 1|FILLMODE 70 1
QTEXTMODE 70 0|MIRRTEXT 70 0|LTSCALE 40 {ltscale}|ATTMODE 70 1|TEXTSIZE 40 2.5|TEXTSTYLE 7 Standard|CLAYER 8 {clayer}
CELTYPE 6 ByLayer|CECOLOR 62 256|LUNITS 70 2|LUPREC 70 4|AUNITS 70 0|AUPREC 70 0|ANGBASE 50 0|ANGDIR 70 0|PDMODE 70 34|PDSIZE 40 0
TILEMODE 70 1|MAXACTVP 70 64|HANDSEED 5 {handseed}"""
HEADER_2000 = """\
|CELTSCALE 40 1|DIMSTYLE 2 ISO-25|VISRETAIN 70 1|PSLTSCALE 70 1|MEASUREMENT 70 1|CELWEIGHT 370 -1|LWDISPLAY 290 1|INSUNITS 70 4
XEDIT 290 1|CEPSNTYPE 380 0|PSTYLEMODE 290 1|EXTNAMES 290 1"""
HEADER_FULL = """\
|DISPSILH 70 0|DIMSCALE 40 {dimscale}|DIMASZ 40 2.5|DIMEXO 40 0.625|DIMDLI 40 3.75|DIMRND 40 0|DIMDLE 40 0|DIMEXE 40 1.25|DIMTP 40 0|DIMTM 40 0
DIMTXT 40 2.5|DIMCEN 40 2.5|DIMTSZ 40 0|DIMTOL 70 0|DIMLIM 70 0|DIMTIH 70 0|DIMTOH 70 0|DIMSE1 70 0|DIMSE2 70 0|DIMTAD 70 1|DIMZIN 70 8
DIMBLK 1 .|DIMASO 70 1|DIMSHO 70 1|DIMPOST 1 .|DIMAPOST 1 .|DIMALT 70 0|DIMALTD 70 3|DIMALTF 40 0.03937007874|DIMLFAC 40 1|DIMTOFL 70 1
DIMTVP 40 0|DIMTIX 70 0|DIMSOXD 70 0|DIMSAH 70 0|DIMBLK1 1 .|DIMBLK2 1 .|DIMCLRD 70 0|DIMCLRE 70 0|DIMCLRT 70 0|DIMTFAC 40 1
DIMGAP 40 0.625|DIMJUST 70 0|DIMSD1 70 0|DIMSD2 70 0|DIMTOLJ 70 0|DIMTZIN 70 8|DIMUPT 70 0|DIMDEC 70 2|DIMTDEC 70 2|DIMTXSTY 7 Standard
DIMAUNIT 70 0|DIMADEC 70 0|DIMDSEP 70 46|DIMATFIT 70 3|DIMFRAC 70 0|DIMLUNIT 70 2|DIMLWD 70 -2|DIMLWE 70 -2|DIMTMOVE 70 0
SKETCHINC 40 1|FILLETRAD 40 0|MENU 1 .|ELEVATION 40 0|PELEVATION 40 0|THICKNESS 40 0|LIMCHECK 70 0|CHAMFERA 40 0|CHAMFERB 40 0|SKPOLY 70 0
TDCREATE 40 2460676.375|TDUCREATE 40 2460676.375|TDUPDATE 40 2460676.5|TDUUPDATE 40 2460676.5|TDINDWG 40 0.125|TDUSRTIMER 40 0.125
USRTIMER 70 1|PLINEWID 40 0|SPLFRAME 70 0|SPLINETYPE 70 6|SPLINESEGS 70 8|UCSBASE 2 .|UCSNAME 2 .|UCSORG @|UCSXDIR 10 1 20 0 30 0
UCSYDIR 10 0 20 1 30 0|PUCSBASE 2 .|PUCSNAME 2 .|PUCSORG @|PUCSXDIR 10 1 20 0 30 0|PUCSYDIR 10 0 20 1 30 0|USERI1 70 0|USERR1 40 0
WORLDVIEW 70 1|SHADEDGE 70 3|SHADEDIF 70 70|PINSBASE @|PLIMCHECK 70 0|PEXTMIN @|PEXTMAX 10 841 20 594 30 0|PLIMMIN 10 0 20 0
PLIMMAX 10 841 20 594|UNITMODE 70 0|PLINEGEN 70 0|TREEDEPTH 70 3020|CMLSTYLE 2 Standard|CMLJUST 70 0|CMLSCALE 40 20|PROXYGRAPHICS 70 1
ENDCAPS 280 0|JOINSTYLE 280 0|HYPERLINKBASE 1 .|STYLESHEET 1 .|FINGERPRINTGUID 2 {fingerprint}|VERSIONGUID 2 {fingerprint}
PSVPSCALE 40 0|OLESTARTUP 290 0|SORTENTS 280 127|INDEXCTL 280 0|HIDETEXT 280 1|XCLIPFRAME 280 2|HALOGAP 280 0|OBSCOLOR 70 257
OBSLTYPE 280 0|INTERSECTIONDISPLAY 280 0|INTERSECTIONCOLOR 70 257|DIMASSOC 280 2|PROJECTNAME 1 ."""


def point(code, x, y, z=0.0):
    return [(code, x), (code + 10, y), (code + 20, z)]


def signed(word):
    """A 32-bit word as the signed number that group codes hold."""
    return word - (1 << 32) if word & 0x80000000 else word


def is_real(code):
    return 10 <= code <= 59 or 110 <= code <= 149 or 210 <= code <= 239 or 460 <= code <= 469 or 1010 <= code <= 1059


def group_text(code, value):
    if isinstance(value, Record):
        return value.text
    if is_real(code):
        value = round(float(value), 10) + 0.0
        text = repr(value)
        return f"{value:.15E}" if "e" in text else text
    if 60 <= code <= 79 or 170 <= code <= 179 or 270 <= code <= 299 or 370 <= code <= 389 or 1060 <= code <= 1070:
        return f"{int(value):6d}"
    if 90 <= code <= 99 or 420 <= code <= 429 or 440 <= code <= 459 or code == 1071:
        return f"{int(value):9d}"
    return str(value)


def binary_value(code, value, encoding):
    """A value as binary drawings hold it: its size follows from the group code."""
    if is_real(code):
        return struct.pack("<d", float(value))
    if 60 <= code <= 79 or 170 <= code <= 179 or 270 <= code <= 289 or 370 <= code <= 389 or 400 <= code <= 409 or 1060 <= code <= 1070:
        return struct.pack("<h", int(value))
    if 90 <= code <= 99 or 420 <= code <= 429 or 440 <= code <= 459 or code == 1071:
        return struct.pack("<i", int(value))
    if 160 <= code <= 169:
        return struct.pack("<q", int(value))
    if 290 <= code <= 299:
        return struct.pack("<B", int(value))
    return group_text(code, value).encode(encoding, "drawing") + b"\0"


def escape_characters(error):
    text = error.object[error.start:error.end]
    return "".join(f"\\U+{ord(character):04X}" for character in text), error.end


codecs.register_error("drawing", escape_characters)


class Record:
    """A table record, entity or object: its handle, its owner and its groups."""

    def __init__(self, drawing, kind, owner, *groups, handle=None, reactors=()):
        self.drawing, self.kind, self.owner, self.groups = drawing, kind, owner, list(groups)
        self.text = f"{drawing.take_handle() if handle is None else handle:X}"
        self.reactors, self.extension_dictionary, self.data = list(reactors), None, []

    def extension(self):
        if self.extension_dictionary is None:
            self.extension_dictionary = Dictionary(self.drawing, self, hard=True)
        return self.extension_dictionary

    def pairs(self):
        r12 = self.drawing.r12
        yield 0, self.kind
        if r12:
            if self.drawing.handles and self.kind not in RECORD_MARKERS and self.kind != "TABLE":
                yield 5, self.text
            yield from (pair for pair in self.groups if pair[0] not in (100, 330))
        else:
            yield (105 if self.kind == "DIMSTYLE" else 5), self.text
            for name, code, members in (("{ACAD_XDICTIONARY", 360, [self.extension_dictionary]),
                                        ("{ACAD_REACTORS", 330, self.reactors)):
                if members and members[0]:
                    yield from [(102, name), *((code, member) for member in members), (102, "}")]
            yield 330, self.owner or "0"
            yield from self.groups
        yield from self.data


class Dictionary(Record):
    def __init__(self, drawing, owner, hard=False, kind="DICTIONARY", handle=None):
        named = isinstance(owner, Dictionary)
        super().__init__(drawing, kind, owner, handle=handle, reactors=[owner] if named else ())
        self.entries, self.hard, self.default = {}, hard, None
        drawing.objects.append(self)

    def put(self, name, kind, *groups, handle=None):
        entry = Record(self.drawing, kind, self, *groups, handle=handle, reactors=[self])
        self.drawing.objects.append(entry)
        self.entries[name] = entry
        return entry

    def put_dictionary(self, name, **options):
        self.entries[name] = Dictionary(self.drawing, self, **options)
        return self.entries[name]

    def pairs(self):
        self.groups = [(100, "AcDbDictionary")] + ([(280, 1)] if self.hard else []) + [(281, 1)]
        for name in sorted(self.entries):
            self.groups += [(3, name), (360 if self.hard else 350, self.entries[name])]
        if self.default:
            self.groups += [(100, "AcDbDictionaryWithDefault"), (340, self.default)]
        return super().pairs()


class Block:
    """A block definition (or a layout's space) and the entities in it."""

    def __init__(self, drawing, name, flags=0, path="", paper=False, handles=(None, None, None)):
        self.drawing, self.name, self.paper, self.entities, self.layout = drawing, name, paper, [], None
        self.record = drawing.record("BLOCK_RECORD", name, handle=handles[0])
        self.begin = self._entity("BLOCK", "0", [(100, "AcDbBlockBegin"), (2, name), (70, flags), *point(10, 0, 0), (3, name), (1, path)],
                                  handle=handles[1])
        self.end = self._entity("ENDBLK", "0", [(100, "AcDbBlockEnd")], handle=handles[2])

    def _entity(self, kind, layer, groups, owner=None, handle=None, ltype=None, color=None, true=None, weight=None, ltscale=None):
        space = [(67, 1)] if self.paper else []
        props = [(6, ltype), (62, color), (420, true), (370, weight), (48, ltscale)]
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

    def _text_groups(self, x, y, height, text, angle, centred):
        groups = [(100, "AcDbText"), *point(10, x, y), (40, height), (1, text)] + ([(50, angle)] if angle else [])
        return groups + ([(72, 1), *point(11, x, y)] if centred else [])

    def text(self, layer, x, y, height, text, angle=0, centred=False, **props):
        tail = [(100, "AcDbText")] + ([(73, 2)] if centred else [])
        return self.add("TEXT", layer, self._text_groups(x, y, height, text, angle, centred) + tail, **props)

    def mtext(self, layer, x, y, height, width, text, attach=1, angle=0, **props):
        return self.add("MTEXT", layer, [(100, "AcDbMText"), *point(10, x, y), (40, height), (41, width), (71, attach), (72, 1), (1, text),
                                         (50, angle), (73, 1), (44, 1)], **props)

    def _attribute_end(self, tag, prompt=None):
        version = [(280, 0)] if self.drawing.version > "AC1015" else []
        return version + ([(3, prompt)] if prompt else []) + [(2, tag), (70, 0)] + version

    def attribute_definition(self, layer, x, y, height, tag, prompt, default):
        return self.add("ATTDEF", layer, self._text_groups(x, y, height, default, 0, False)
                        + [(100, "AcDbAttributeDefinition")] + self._attribute_end(tag, prompt))

    def insert(self, layer, name, x, y, scale=(1, 1), angle=0, columns=1, rows=1, dx=0, dy=0, attributes=(), **props):
        """A block reference; an attribute is (tag, layer, x, y, height, text)."""
        array = columns * rows > 1
        groups = [(100, "AcDbMInsertBlock" if array else "AcDbBlockReference")] + ([(66, 1)] if attributes else []) + [(2, name), *point(10, x, y)]
        if tuple(scale) != (1, 1):
            groups += [(41, scale[0]), (42, scale[1]), (43, 1)]
        groups += ([(50, angle)] if angle else []) + ([(70, columns), (71, rows), (44, dx), (45, dy)] if array else [])
        head = self.add("INSERT", layer, groups, **props)
        for tag, on, tx, ty, height, text in attributes:
            self.add("ATTRIB", on, self._text_groups(tx, ty, height, text, 0, False) + [(100, "AcDbAttribute")] + self._attribute_end(tag),
                     owner=head)
        if attributes:
            self.add("SEQEND", layer, [], owner=head)
        return head

    def viewport(self, layer, number, x, y, width, height, view=(0, 0), view_height=0.0, target=(0, 0), twist=0, frozen=(), locked=False):
        """A viewport on paper; number 1 is the sheet itself."""
        view_height = view_height or height
        if self.drawing.r12:
            return self._r12_viewport(layer, number, x, y, width, height, view, view_height, target, twist, frozen)
        flags = (0x8020 if number == 1 else 0x8060) | (0x4000 if locked else 0)
        groups = [(100, "AcDbViewport"), *point(10, x, y), (40, width), (41, height), (68, number), (69, number), (12, view[0]), (22, view[1]),
                  (13, 0), (23, 0), (14, 10), (24, 10), (15, 10), (25, 10), *point(16, 0, 0, 1), *point(17, *target), (42, 50), (43, 0), (44, 0),
                  (45, view_height), (50, 0), (51, twist), (72, 1000), *((331, layer) for layer in frozen), (90, flags), (1, ""), (281, 0),
                  (71, 1), (74, 0), *point(110, 0, 0), *point(111, 1, 0), *point(112, 0, 1), (79, 0), (146, 0)]
        if self.drawing.version > "AC1018":
            groups += [(170, 0), (61, 5), (292, 1), (282, 1), (141, 0), (142, 0), (63, 250), (421, 3355443)]
        return self.add("VIEWPORT", layer, groups)

    def _r12_viewport(self, layer, number, x, y, width, height, view, view_height, target, twist, frozen):
        entity = self.add("VIEWPORT", layer, [*point(10, x, y), (40, width), (41, height), (68, number), (69, number)])
        entity.data = [(1001, "ACAD"), (1000, "MVIEW"), (1002, "{"), (1070, 16), *point(1010, *target), *point(1010, 0, 0, 1), (1040, twist),
                       (1040, view_height), (1040, view[0]), (1040, view[1]), (1040, 50), (1040, 0), (1040, 0),
                       *((1070, n) for n in (0, 1000, 1, 1, 0, 0, 0, 0)), *((1040, n) for n in (0, 0, 0, 10, 10, 10, 10)), (1070, 0),
                       (1002, "{"), *((1003, name) for name in frozen), (1002, "}"), (1002, "}")]
        return entity


class Drawing:
    def __init__(self, version="AC1027", full_header=False, newline="\n", handles=True, code_page="ANSI_1252"):
        self.version, self.full_header, self.newline = version, full_header, newline
        self.handles, self.code_page = handles, code_page
        self.r12, self.utf8 = version < "AC1012", version >= "AC1021"
        self.next_handle, self.objects, self.blocks, self.layers = 0x50, [], {}, {}
        self.tables = {kind: (Record(self, "TABLE", None, handle=handle), []) for kind, handle in TABLE_HANDLES.items()}
        self.header = dict(clayer="0", ltscale=1, extmin=(0, 0), extmax=(100, 100), dimscale=1,
                           fingerprint="{5A0D0C3E-6B1F-4C57-9D2E-0F6E1B7A4C21}")
        self.linetypes = {"ByBlock": self.record("LTYPE", "ByBlock", (3, ""), (72, 65), (73, 0), (40, 0), handle=0x14),
                          "ByLayer": self.record("LTYPE", "ByLayer", (3, ""), (72, 65), (73, 0), (40, 0), handle=0x15),
                          "Continuous": self.record("LTYPE", "Continuous", (3, "Solid line"), (72, 65), (73, 0), (40, 0), handle=0x16)}
        if self.r12:
            del self.tables["LTYPE"][1][:2]
        self.record("APPID", "ACAD", handle=0x12)
        self.style = self.text_style("Standard", "txt.shx", handle=0x11)
        self.dimension_style = None if self.r12 else self.record(
            "DIMSTYLE", "ISO-25", (40, 100), (41, 2.5), (42, 0.625), (43, 3.75), (44, 1.25), (73, 0), (74, 0), (77, 1), (78, 8), (140, 2.5),
            (141, 2.5), (147, 0.625), (172, 1), (271, 0), (278, 44), (340, self.style), handle=0x27)
        if not self.r12:
            self._standard_objects()
        self.layer("0", handle=0x10)
        self.model = self.paper = None
        if self.r12:
            self.model, self.paper = (Block.__new__(Block) for _ in "mp")
            for space, paper in ((self.model, False), (self.paper, True)):
                space.drawing, space.paper, space.entities, space.record = self, paper, [], None
        else:
            self.model = self.block("*Model_Space", handles=(0x1F, 0x20, 0x21))
            self._layout_object("Model", self.model, 0, 1712, (420, 297), handle=0x22)

    def take_handle(self):
        self.next_handle += 1
        return self.next_handle - 1

    def _standard_objects(self):
        root = self.root = Dictionary(self, None, handle=0xC)
        root.put_dictionary("ACAD_GROUP", handle=0xD)
        self.layouts = root.put_dictionary("ACAD_LAYOUT", handle=0x1A)
        styles = root.put_dictionary("ACAD_PLOTSTYLENAME", kind="ACDBDICTIONARYWDFLT", handle=0xE)
        self.plot_style = styles.default = styles.put("Normal", "ACDBPLACEHOLDER", handle=0xF)
        multiline = root.put_dictionary("ACAD_MLINESTYLE", handle=0x17)
        multiline.put("Standard", "MLINESTYLE", (100, "AcDbMlineStyle"), (2, "STANDARD"), (70, 0), (3, ""), (62, 256), (51, 90), (52, 90),
                      (71, 2), (49, 0.5), (62, 256), (6, "BYLAYER"), (49, -0.5), (62, 256), (6, "BYLAYER"), handle=0x18)
        root.put_dictionary("ACAD_PLOTSETTINGS", handle=0x19)
        self.material = None
        if self.version > "AC1018":
            materials = root.put_dictionary("ACAD_MATERIAL")
            for name in ("ByBlock", "ByLayer", "Global"):
                self.material = materials.put(name, "MATERIAL", (100, "AcDbMaterial"), (1, name))
        variables = root.put_dictionary("AcDbVariableDictionary")
        for name in ("LAYEREVAL", "LAYERNOTIFY"):
            variables.put(name, "DICTIONARYVAR", (100, "DictionaryVariables"), (280, 0), (1, "0"))

    def record(self, kind, name, *groups, flags=0, handle=None):
        table, records = self.tables[kind]
        markers = (100, "AcDbSymbolTableRecord"), (100, RECORD_MARKERS[kind])
        flag_group = () if kind == "BLOCK_RECORD" else ((70, flags),)
        entry = Record(self, kind, table, *markers, (2, name), *flag_group, *groups, handle=handle)
        records.append(entry)
        return entry

    def application(self, name):
        if not any((2, name) in entry.groups for entry in self.tables["APPID"][1]):
            self.record("APPID", name)

    def text_style(self, name, font, handle=None):
        return self.record("STYLE", name, (40, 0), (41, 1), (50, 0), (71, 0), (42, 2.5), (3, font), (4, ""), handle=handle)

    def linetype(self, name, flags=0):
        description, dashes = LINETYPES[name.rpartition("|")[2]]
        groups = [(3, description), (72, 65), (73, len(dashes)), (40, sum(map(abs, dashes)))]
        for dash in dashes:
            groups += [(49, dash)] + ([] if self.r12 else [(74, 0)])
        self.linetypes[name] = self.record("LTYPE", name, *groups, flags=flags)

    def layer(self, name, color=7, ltype="Continuous", weight=-3, marks="", description="", true=None, book=None, transparency=0, handle=None):
        """A layer; marks are words of LAYER_MARKS and "off", "noplot"."""
        words = marks.split()
        flags = sum(LAYER_MARKS.get(word, 0) for word in words)
        if ltype not in self.linetypes:
            self.linetype(ltype, 48 if "xref" in words else 0)
        groups = [(62, -color if "off" in words else color), (6, ltype)]
        if not self.r12:
            groups[1:1] = ([(420, true)] if true is not None else []) + ([(430, book)] if book else [])
            groups += ([(290, 0)] if "noplot" in words else []) + [(370, weight), (390, self.plot_style)]
            groups += [(347, self.material), (348, "0")] if self.material else []
        layer = self.layers[name] = self.record("LAYER", name, *groups, flags=flags, handle=handle)
        if transparency:
            self.application("AcCmTransparency")
            layer.data += [(1001, "AcCmTransparency"), (1071, 0x02000000 + 255 * (100 - transparency) // 100)]
        if description:
            self.application("AcAecLayerStandard")
            layer.data += [(1001, "AcAecLayerStandard"), (1000, ""), (1000, description)]
        return layer

    def override(self, layer, kind, viewport, *groups):
        """One property of a layer that is different in one viewport; kind is ALPHA, COLOR, LINETYPE or LINEWT."""
        extension, name = self.layers[layer].extension(), f"ADSK_XREC_LAYER_{kind}_OVR"
        entry = extension.entries.get(name) or extension.put(name, "XRECORD", (100, "AcDbXrecord"), (280, 1))
        entry.groups += [(102, f"{{ADSK_LYR_{kind}_OVERRIDE"), (335, viewport), *groups, (102, "}")]

    def block(self, name, **options):
        block = self.blocks[name] = Block(self, name, **options)
        return block

    def layout(self, name, size):
        """A sheet: its space with the sheet's own viewport."""
        tab = len(self.layouts.entries)
        space = self.block("*Paper_Space" + ("" if tab == 1 else str(tab - 2)), paper=True)
        space.viewport("0", 1, size[0] / 2, size[1] / 2, size[0] * 1.1, size[1] * 1.1, view=(size[0] / 2, size[1] / 2))
        self._layout_object(name, space, tab, 688, size)
        return space

    def _layout_object(self, name, space, tab, plot_flags, size, handle=None):
        plot = [(100, "AcDbPlotSettings"), (1, ""), (2, "none_device"), (4, f"ISO_({size[0]:.2f}_x_{size[1]:.2f}_MM)"), (6, ""), (40, 7.5),
                (41, 20), (42, 7.5), (43, 20), (44, size[0]), (45, size[1]), *((code, 0) for code in (46, 47, 48, 49, 140, 141)), (142, 1), (143, 1),
                (70, plot_flags), (72, 1), (73, 0), (74, 5), (7, ""), (75, 16), (147, 1), *(((76, 0), (77, 2), (78, 300)) if self.utf8 else ()),
                (148, 0), (149, 0)]
        layout = [(100, "AcDbLayout"), (1, name), (70, 1), (71, tab), (10, 0), (20, 0), (11, size[0]), (21, size[1]), *point(12, 0, 0),
                  *point(14, 0, 0), *point(15, *size), (146, 0), *point(13, 0, 0), *point(16, 1, 0), *point(17, 0, 1), (76, 0),
                  (330, space.record)] + [(331, entity) for entity in space.entities[:1]]
        space.layout = self.layouts.put(name, "LAYOUT", *plot, *layout, handle=handle)

    def view(self, x, y, height, aspect=1.8):
        """The model view that opens with the drawing; 2000 and later keep it in the Model layout too."""
        last = () if self.r12 else ((281, 0), (65, 1), *point(110, 0, 0), *point(111, 1, 0), *point(112, 0, 1), (79, 0), (146, 0))
        active = self.record("VPORT", "*ACTIVE" if self.r12 else "*Active", (10, 0), (20, 0), (11, 1), (21, 1), (12, x), (22, y), (13, 0),
                             (23, 0), (14, 10), (24, 10), (15, 10), (25, 10), *point(16, 0, 0, 1), *point(17, 0, 0), (40, height), (41, aspect),
                             (42, 50), (43, 0), (44, 0), (50, 0), (51, 0), (71, 0), (72, 1000), (73, 1), (74, 3), (75, 0), (76, 0), (77, 0),
                             (78, 0), *last)
        if not self.r12:
            self.model.layout.groups.append((331, active))

    def _header_pairs(self):
        self.header["handseed"] = f"{self.next_handle:X}"
        yield from [(9, "$ACADVER"), (1, self.version), (9, "$DWGCODEPAGE"), (3, self.code_page)]
        text = HEADER_SHORT + ("" if self.r12 else HEADER_2000) + (HEADER_FULL if self.full_header else "")
        for variable in text.replace("\n", "|").split("|"):
            name, _, value = variable.partition(" ")
            if name == "HANDSEED" and self.r12:
                yield from [(9, "$HANDLING"), (70, int(self.handles))]
                if not self.handles:
                    continue
            yield 9, "$" + name
            yield from self._variable_values(value)

    def _variable_values(self, text):
        if text.startswith("{"):
            return point(10, *self.header[text[1:-1]])
        words = text.replace("@", "10 0 20 0 30 0").split()
        values = (self.header[word[1:-1]] if word.startswith("{") else "" if word == "." else word for word in words[1::2])
        return [(int(code), value) for code, value in zip(words[::2], values)]

    def _section_pairs(self):
        spaces = [self.model] + ([self.paper] if self.r12 else [block for name, block in self.blocks.items() if name == "*Paper_Space"])
        yield "HEADER", self._header_pairs()
        if not self.r12:
            counts = [sum(entry.kind == kind for entry in self.objects) for kind, _ in CLASSES]
            yield "CLASSES", (pair for (kind, name), count in zip(CLASSES, counts) for pair in
                              [(0, "CLASS"), (1, kind), (2, name), (3, "ObjectDBX Classes"), (90, 0),
                               *([(91, count)] if self.utf8 else []), (280, 0), (281, 0)])
        yield "TABLES", self._table_pairs()
        yield "BLOCKS", (pair for block in self.blocks.values() for entity in
                         [block.begin, *([] if block in spaces else block.entities), block.end] for pair in entity.pairs())
        yield "ENTITIES", (pair for space in spaces for entity in space.entities for pair in entity.pairs())
        if not self.r12:
            yield "OBJECTS", (pair for entry in self.objects for pair in entry.pairs())

    def _table_pairs(self):
        for block in self.blocks.values():
            block.record.groups += [(340, block.layout or "0")] + ([(70, 0), (280, 1), (281, 0)] if self.utf8 else []) if not self.r12 else []
        for kind, (table, records) in self.tables.items():
            if self.r12 and kind == "BLOCK_RECORD":
                continue
            table.groups = [(100, "AcDbSymbolTable"), (70, len(records))]
            if kind == "DIMSTYLE" and not self.r12:
                table.groups += [(100, "AcDbDimStyleTable"), (71, len(records)), *((340, entry) for entry in records)]
            pairs = list(table.pairs())
            yield from pairs[:1] + [(2, kind)] + pairs[1:]
            for entry in records:
                yield from entry.pairs()
            yield 0, "ENDTAB"

    def pairs(self):
        """All groups of the file, once: the records are not to be used again."""
        for name, pairs in self._section_pairs():
            yield from [(0, "SECTION"), (2, name), *pairs, (0, "ENDSEC")]
        yield 0, "EOF"

    def content(self, binary=False):
        """The file's bytes; the drawing is not to be used again."""
        encoding = "utf-8" if self.utf8 else CODE_PAGES[self.code_page]
        if not binary:
            lines = (f"{code:3d}{self.newline}{group_text(code, value)}{self.newline}" for code, value in self.pairs())
            return "".join(lines).encode(encoding, "drawing")
        if self.r12:
            raise ValueError("the binary form is written from 2000 on")
        return BINARY_SENTINEL + b"".join(struct.pack("<H", code) + binary_value(code, value, encoding) for code, value in self.pairs())
