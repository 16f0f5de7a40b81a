"""A drawing: tables, blocks, layouts and objects, and the file they make.

`content` gives the file with its sections in the order that strict readers expect, as text or in binary form, from R12
(AC1009) to 2018 (AC1032).
"""
import struct

from dxf.block import Block
from dxf.header import header_pairs
from dxf.records import RECORD_MARKERS, Dictionary, Record
from dxf.values import BINARY_SENTINEL, CODE_PAGES, binary_value, group_text, point

TABLE_HANDLES = {"VPORT": 8, "LTYPE": 5, "LAYER": 2, "STYLE": 3, "VIEW": 6, "UCS": 7, "APPID": 9, "DIMSTYLE": 10, "BLOCK_RECORD": 1}
CLASSES = (("ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault"), ("ACDBPLACEHOLDER", "AcDbPlaceHolder"), ("LAYOUT", "AcDbLayout"),
           ("DICTIONARYVAR", "AcDbDictionaryVar"), ("MATERIAL", "AcDbMaterial"), ("SCALE", "AcDbScale"))
LINETYPES = {  # description, dash lengths: positive pen down, negative pen up, 0 a dot
    "CENTER": ("Center ____ _ ____ _ ____ _ ____", (31.75, -6.35, 6.35, -6.35)),
    "CENTER2": ("Center (.5x) ___ _ ___ _ ___ _ ___", (19.05, -3.175, 3.175, -3.175)),
    "DASHED": ("Dashed __ __ __ __ __ __", (12.7, -6.35)),
    "DASHDOT": ("Dash dot __ . __ . __ . __ .", (12.7, -6.35, 0.0, -6.35)),
    "DIVIDE": ("Divide ____ . . ____ . . ____", (12.7, -6.35, 0.0, -6.35, 0.0, -6.35)),
    "HIDDEN": ("Hidden __ __ __ __ __ __ __", (6.35, -3.175)),
    "PHANTOM": ("Phantom ______  __  __  ______", (31.75, -6.35, 6.35, -6.35, 6.35, -6.35)),
    "DOT": ("Dot . . . . . . . . . . .", (0.0, -6.35))}
LAYER_FLAGS = {"frozen": 1, "newvp": 2, "locked": 4, "xref": 48, "used": 64}
DEPENDENT = 48  # belongs to an external reference, which is resolved


class Drawing:
    def __init__(self, version="AC1027", full_header=False, newline="\n", handles=True, code_page="ANSI_1252"):
        self.version, self.full_header, self.newline = version, full_header, newline
        self.handles, self.code_page = handles, code_page
        self.r12, self.utf8 = version < "AC1012", version >= "AC1021"
        self.next_handle, self.objects, self.blocks, self.layers, self.styles = 0x50, [], {}, {}, {}
        self.tables = {kind: (Record(self, "TABLE", None, handle=handle), []) for kind, handle in TABLE_HANDLES.items()}
        self.header = dict(clayer="0", ltscale=1, extmin=(0, 0), extmax=(100, 100), dimscale=1, insunits=4, handling=int(handles),
                           paperwidth=420, paperheight=297, fingerprint="{5A0D0C3E-6B1F-4C57-9D2E-0F6E1B7A4C21}")
        self._standard_records()
        if self.r12:
            self.model, self.paper = Block.space(self, False), Block.space(self, True)
        else:
            self.model = self.block("*Model_Space", handles=(0x1F, 0x20, 0x21))
            self._layout_object("Model", self.model, 0, 1712, (420, 297), handle=0x22)

    def take_handle(self):
        self.next_handle += 1
        return self.next_handle - 1

    # ---- what every drawing holds ----

    def _standard_records(self):
        self.linetypes, self.plot_style, self.material = {}, None, None
        for name, description, handle in (("ByBlock", "", 0x14), ("ByLayer", "", 0x15), ("Continuous", "Solid line", 0x16)):
            if name == "Continuous" or not self.r12:
                self.linetypes[name] = self.record("LTYPE", name, (3, description), (72, 65), (73, 0), (40, 0), handle=handle)
        self.record("APPID", "ACAD", handle=0x12)
        standard = self.text_style("Standard", "txt.shx", handle=0x11)
        if not self.r12:
            self.record("DIMSTYLE", "ISO-25", (40, 100), (41, 2.5), (42, 0.625), (43, 3.75), (44, 1.25), (73, 0), (74, 0), (77, 1), (78, 8),
                        (140, 2.5), (141, 2.5), (143, 0.03937007874), (147, 0.625), (171, 3), (172, 1), (271, 0), (272, 2), (274, 3), (278, 46),
                        (283, 0), (284, 8), (340, standard), handle=0x27)
            self._standard_objects()
        self.layer("0", handle=0x10)

    def _standard_objects(self):
        root = self.root = Dictionary(self, None, handle=0xC)
        self.groups = root.put_dictionary("ACAD_GROUP", handle=0xD)
        self.layouts = root.put_dictionary("ACAD_LAYOUT", handle=0x1A)
        styles = root.put_dictionary("ACAD_PLOTSTYLENAME", kind="ACDBDICTIONARYWDFLT", handle=0xE)
        self.plot_style = styles.default = styles.put("Normal", "ACDBPLACEHOLDER", handle=0xF)
        multiline = root.put_dictionary("ACAD_MLINESTYLE", handle=0x17)
        multiline.put("Standard", "MLINESTYLE", (100, "AcDbMlineStyle"), (2, "STANDARD"), (70, 0), (3, ""), (62, 256), (51, 90), (52, 90),
                      (71, 2), (49, 0.5), (62, 256), (6, "BYLAYER"), (49, -0.5), (62, 256), (6, "BYLAYER"), handle=0x18)
        root.put_dictionary("ACAD_PLOTSETTINGS", handle=0x19)
        if self.utf8:
            self._later_objects(root)
        variables = root.put_dictionary("AcDbVariableDictionary")
        for name, value in (("DIMASSOC", "2"), ("HIDETEXT", "1"), ("LAYEREVAL", "0"), ("LAYERNOTIFY", "0")):
            variables.put(name, "DICTIONARYVAR", (100, "DictionaryVariables"), (280, 0), (1, value))

    def _later_objects(self, root):
        materials = root.put_dictionary("ACAD_MATERIAL")
        for name in ("ByBlock", "ByLayer", "Global"):
            self.material = materials.put(name, "MATERIAL", (100, "AcDbMaterial"), (1, name))
        scales = root.put_dictionary("ACAD_SCALELIST")
        for number, scale in enumerate((1, 50, 100, 200, 500)):
            scales.put(f"A{number}", "SCALE", (100, "AcDbScale"), (70, 0), (300, f"1:{scale}"), (140, 1), (141, scale), (290, int(scale == 1)))

    # ---- tables ----

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

    def text_style(self, name, font, height=0, handle=None):
        self.styles[name] = self.record("STYLE", name, (40, height), (41, 1), (50, 0), (71, 0), (42, 2.5), (3, font), (4, ""), handle=handle)
        return self.styles[name]

    def linetype(self, name, flags=0):
        """One of LINETYPES, also as "XREF|NAME"."""
        description, dashes = LINETYPES[name.rpartition("|")[2]]
        groups = [(3, description), (72, 65), (73, len(dashes)), (40, sum(map(abs, dashes)))]
        for dash in dashes:
            groups += [(49, dash)] + ([] if self.r12 else [(74, 0)])
        self.linetypes[name] = self.record("LTYPE", name, *groups, flags=flags)
        return self.linetypes[name]

    def layer(self, name, color=7, ltype="Continuous", weight=-3, marks="", description="", true=None, book=None, transparency=0, handle=None):
        """A layer; marks are words of LAYER_FLAGS and "off", "noplot"."""
        words = marks.split()
        flags = sum(LAYER_FLAGS.get(word, 0) for word in words)
        if ltype not in self.linetypes:
            self.linetype(ltype, flags & DEPENDENT)
        groups = [(62, -color if "off" in words else color), (6, ltype)]
        if not self.r12:
            groups[1:1] = ([(420, true)] if true is not None else []) + ([(430, book)] if book else [])
            groups += ([(290, 0)] if "noplot" in words else []) + [(370, weight), (390, self.plot_style)]
            groups += [(347, self.material), (348, "0")] if self.material else []
        layer = self.layers[name] = self.record("LAYER", name, *groups, flags=flags, handle=handle)
        if description:
            self.application("AcAecLayerStandard")
            layer.data += [(1001, "AcAecLayerStandard"), (1000, ""), (1000, description)]
        if transparency:
            self.application("AcCmTransparency")
            layer.data += [(1001, "AcCmTransparency"), (1071, 0x02000000 + 255 * (100 - transparency) // 100)]
        return layer

    def override(self, layer, kind, viewport, *groups):
        """One property of a layer that is different in one viewport; kind is ALPHA, COLOR, LINETYPE or LINEWT."""
        extension, name = self.layers[layer].extension(), f"ADSK_XREC_LAYER_{kind}_OVR"
        entry = extension.entries.get(name) or extension.put(name, "XRECORD", (100, "AcDbXrecord"), (280, 1))
        entry.groups += [(102, f"{{ADSK_LYR_{kind}_OVERRIDE"), (335, viewport), *groups, (102, "}")]

    # ---- blocks and layouts ----

    def block(self, name, **options):
        block = self.blocks[name] = Block(self, name, **options)
        return block

    def group(self, name, description, members):
        """A named group of entities."""
        entry = self.groups.put(name, "GROUP", (100, "AcDbGroup"), (300, description), (70, 0), (71, 1), *((340, member) for member in members))
        for member in members:
            member.reactors.append(entry)

    def layout(self, name, size):
        """A sheet: its space with the sheet's own viewport."""
        tab = len(self.layouts.entries)
        space = self.block("*Paper_Space" + ("" if tab == 1 else str(tab - 2)), paper=True)
        space.viewport("0", 1, size[0] / 2, size[1] / 2, size[0] * 1.1, size[1] * 1.1, view=(size[0] / 2, size[1] / 2))
        self._layout_object(name, space, tab, 688, size)
        if tab == 1:
            self.header.update(paperwidth=size[0], paperheight=size[1])
        return space

    def _layout_object(self, name, space, tab, plot_flags, size, handle=None):
        margins = [(code, 0) for code in (46, 47, 48, 49, 140, 141)]
        plot = [(100, "AcDbPlotSettings"), (1, ""), (2, "none_device"), (4, f"ISO_({size[0]:.2f}_x_{size[1]:.2f}_MM)"), (6, ""), (40, 7.5),
                (41, 20), (42, 7.5), (43, 20), (44, size[0]), (45, size[1]), *margins, (142, 1), (143, 1), (70, plot_flags), (72, 1), (73, 0),
                (74, 5), (7, ""), (75, 16), (147, 1), *(((76, 0), (77, 2), (78, 300)) if self.utf8 else ()), (148, 0), (149, 0)]
        layout = [(100, "AcDbLayout"), (1, name), (70, 1), (71, tab), (10, 0), (20, 0), (11, size[0]), (21, size[1]), *point(12, 0, 0),
                  *point(14, 0, 0), *point(15, *size), (146, 0), *point(13, 0, 0), *point(16, 1, 0), *point(17, 0, 1), (76, 0),
                  (330, space.record)] + [(331, entity) for entity in space.entities[:1]]
        space.layout = self.layouts.put(name, "LAYOUT", *plot, *layout, handle=handle)

    def view(self, x, y, height, aspect=1.8):
        """The model view that opens with the drawing; the Model layout names it too."""
        last = () if self.r12 else ((281, 0), (65, 1), *point(110, 0, 0), *point(111, 1, 0), *point(112, 0, 1), (79, 0), (146, 0))
        active = self.record("VPORT", "*ACTIVE" if self.r12 else "*Active", (10, 0), (20, 0), (11, 1), (21, 1), (12, x), (22, y), (13, 0),
                             (23, 0), (14, 10), (24, 10), (15, 10), (25, 10), *point(16, 0, 0, 1), *point(17, 0, 0), (40, height), (41, aspect),
                             (42, 50), (43, 0), (44, 0), (50, 0), (51, 0), (71, 0), (72, 1000), (73, 1), (74, 3), (75, 0), (76, 0), (77, 0),
                             (78, 0), *last)
        if not self.r12:
            self.model.layout.groups.append((331, active))

    # ---- the file ----

    def _listed_spaces(self):
        """The spaces whose entities stand in ENTITIES: model space and the first layout's."""
        return [self.model, self.paper] if self.r12 else [block for name, block in self.blocks.items() if name in ("*Model_Space", "*Paper_Space")]

    def _section_pairs(self):
        spaces = self._listed_spaces()
        self.header["handseed"] = f"{self.next_handle:X}"
        yield "HEADER", header_pairs(self)
        if not self.r12:
            yield "CLASSES", self._class_pairs()
        yield "TABLES", self._table_pairs()
        yield "BLOCKS", (pair for block in self.blocks.values() for entity in
                         [block.begin, *([] if block in spaces else block.entities), block.end] for pair in entity.pairs())
        yield "ENTITIES", (pair for space in spaces for entity in space.entities for pair in entity.pairs())
        if not self.r12:
            yield "OBJECTS", (pair for entry in self.objects for pair in entry.pairs())

    def _class_pairs(self):
        for kind, name in CLASSES:
            count = sum(entry.kind == kind for entry in self.objects)
            if count:
                yield from [(0, "CLASS"), (1, kind), (2, name), (3, "ObjectDBX Classes"), (90, 0), *([(91, count)] if self.utf8 else []),
                            (280, 0), (281, 0)]

    def _table_pairs(self):
        if not self.r12:
            for block in self.blocks.values():
                block.record.groups += [(340, block.layout or "0")] + ([(70, 0), (280, 1), (281, 0)] if self.utf8 else [])
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

    def _pairs(self):
        for name, pairs in self._section_pairs():
            yield from [(0, "SECTION"), (2, name), *pairs, (0, "ENDSEC")]
        yield 0, "EOF"

    def content(self, binary=False):
        """The file's bytes; the drawing is not to be used again."""
        encoding = "utf-8" if self.utf8 else CODE_PAGES[self.code_page]
        if not binary:
            lines = (f"{code:3d}{self.newline}{group_text(code, value)}{self.newline}" for code, value in self._pairs())
            return "".join(lines).encode(encoding, "drawing")
        if self.r12:
            raise ValueError("the binary form is written from 2000 on")
        return BINARY_SENTINEL + b"".join(struct.pack("<H", code) + binary_value(code, value, encoding) for code, value in self._pairs())
