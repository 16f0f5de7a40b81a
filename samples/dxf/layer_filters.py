"""Layer filters as drawings keep them: records in two dictionaries of the layer table."""

XRECORD = (100, "AcDbXrecord"), (280, 1)


class LayerFilters:
    """The filter dictionaries of a drawing; made for one that holds any."""

    def __init__(self, drawing):
        table, _ = drawing.tables["LAYER"]
        extension = table.extension()
        self.drawing, self.count = drawing, 0
        self.classic = extension.put_dictionary("ACAD_LAYERFILTERS")
        extension.put_dictionary("ACAD_LAYERSTATES")
        self.tree = extension.put_dictionary("ACLYDICTIONARY")
        self.tree.data = [(1001, "ACAD"), (1000, "<All")]

    def _put(self, parent, kind, name, groups, current=False):
        owner = self.tree
        if parent:
            extension = parent.extension()
            owner = extension.entries.get("ACLYDICTIONARY") or extension.put_dictionary("ACLYDICTIONARY")
        self.count += 1
        return owner.put(f"*A{self.count}", "XRECORD", *XRECORD, *([(290, 1)] if current else []), (1, kind), (90, 1), (300, name), *groups)

    def properties(self, name, expression, parent=None, current=False):
        """The layers that fit an expression."""
        return self._put(parent, "AcLyLayerFilter", name, [(301, expression)], current)

    def members(self, name, layers, parent=None):
        """The layers that are named one by one."""
        return self._put(parent, "AcLyLayerGroup", name, [(330, self.drawing.layers[layer]) for layer in layers])

    def pattern(self, name, layers="*", colors="*", linetypes="*", flags=0, weights="*", plot_styles="*"):
        """The older form: one pattern a property."""
        self.classic.put(name, "XRECORD", *XRECORD, (1, name), (1, layers), (1, colors), (1, linetypes), (70, flags), (1, weights), (1, plot_styles))
