"""What a drawing is made of: table records, entities and objects, each with a handle and an owner."""

RECORD_MARKERS = {
    "VPORT": "AcDbViewportTableRecord", "LTYPE": "AcDbLinetypeTableRecord", "LAYER": "AcDbLayerTableRecord",
    "STYLE": "AcDbTextStyleTableRecord", "VIEW": "AcDbViewTableRecord", "UCS": "AcDbUCSTableRecord",
    "APPID": "AcDbRegAppTableRecord", "DIMSTYLE": "AcDbDimStyleTableRecord", "BLOCK_RECORD": "AcDbBlockTableRecord"}


class Record:
    """A table record, entity or object: its handle, its owner and its groups."""

    def __init__(self, drawing, kind, owner, *groups, handle=None, reactors=()):
        self.drawing, self.kind, self.owner, self.groups = drawing, kind, owner, list(groups)
        self.handle_text = f"{drawing.take_handle() if handle is None else handle:X}"
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
                yield 5, self.handle_text
            yield from (pair for pair in self.groups if pair[0] not in (100, 330))
        else:
            yield (105 if self.kind == "DIMSTYLE" else 5), self.handle_text
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
