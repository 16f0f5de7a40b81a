"""Layer states as drawings keep them: how all layers were at a time, one record each, in two spellings."""
from dxf.layer_filters import XRECORD
from dxf.values import signed

OFF, FROZEN, LOCKED, PLOTS, NEW_FROZEN, HERE_FROZEN = 1, 2, 4, 8, 16, 32
FLAG_WORDS = {"off": OFF, "frozen": FROZEN, "locked": LOCKED, "plots": PLOTS, "newvp": NEW_FROZEN, "here": HERE_FROZEN}
LAYER_BITS = ((1, FROZEN), (4, LOCKED), (2, NEW_FROZEN))
ALL, HIDDEN = 0x7FF, 0x8000
BY_ALPHA, BY_TRUE_COLOR = 0x02000000, 0xC2000000


class Entry:
    """What a state says of a layer: at first what the layer is."""

    def __init__(self, layer):
        groups = dict(layer.groups)
        flags, color = groups[70], groups[62]
        self.layer, self.name, self.color, self.linetype, self.weight = layer, groups[2], abs(color), groups[6], groups[370]
        self.flags = sum(word for bit, word in LAYER_BITS if flags & bit) | (OFF if color < 0 else 0) | (PLOTS if groups.get(290, 1) else 0)
        self.true, self.book = groups.get(420), groups.get(430)
        self.alpha = next((value & 0xFF for code, value in layer.data if code == 1071), None)

    def change(self, marks="", **values):
        """Marks are words of FLAG_WORDS, with "-" before them to take a flag away."""
        for mark in marks.split():
            flag = FLAG_WORDS[mark.lstrip("-")]
            self.flags = self.flags & ~flag if mark.startswith("-") else self.flags | flag
        for name, value in values.items():
            setattr(self, name, value)
        return self

    def _swapped(self):
        """The true colour with red in the low byte."""
        return (self.true & 0xFF) << 16 | self.true & 0xFF00 | self.true >> 16

    def by_name(self):
        colors = [] if self.true is None else [(92, self._swapped())] + ([(300, self.book)] if self.book else [])
        return [(8, self.name), (90, self.flags), (62, self.color), (370, self.weight), (6, self.linetype), (2, f"Color_{self.color}"),
                *colors, (440, 0 if self.alpha is None else BY_ALPHA | self.alpha)]

    def by_handle(self, linetypes):
        color = -1 if self.true is None else signed(BY_TRUE_COLOR | self.true)
        return [(330, self.layer), (90, self.flags), (62, self.color), (370, self.weight), (331, linetypes[self.linetype]),
                (1, f"Color_{self.color}"), (92, color), *([(300, self.book)] if self.book else []),
                (440, 0 if self.alpha is None else BY_ALPHA | self.alpha)]


class LayerStates:
    """The states of a drawing."""

    def __init__(self, drawing):
        table, _ = drawing.tables["LAYER"]
        extension = table.extension()
        self.drawing = drawing
        self.states = extension.entries.get("ACAD_LAYERSTATES") or extension.put_dictionary("ACAD_LAYERSTATES")

    def layers(self):
        """An entry for each layer, by its name."""
        return {name: Entry(layer) for name, layer in self.drawing.layers.items()}

    def save(self, name, entries, description="", mask=ALL, space=0, current="0", by_handle=False):
        groups = [(91, mask), (301, description), (290, space), (302, current)]
        for entry in entries.values():
            groups += entry.by_handle(self.drawing.linetypes) if by_handle else entry.by_name()
        return self.states.put(name, "XRECORD", *XRECORD, *groups)
