"""The site plan, in metres: roads, parcels, trees, contours. The office floor refers to it."""
import math

from dxf.drawing import Drawing

CURB_BEND = (52.0, -18.0)  # where the curb of the north side begins to turn
TREES = ([(-12 + 9.5 * i, round(-13.5 + 0.8 * math.sin(i), 2)) for i in range(8)]
         + [(round(73 + 5 * math.cos(2 * i), 2), 13.5 + 4 * i) for i in range(4)])
TREE_RADIUS = 2.2
LAYERS = (
    ("C-PROP-LINE", 6, "PHANTOM", 50, dict(description="Parcel outlines")),
    ("C-PROP-NUMB", 6, "Continuous", 18, {}),
    ("C-ROAD-CURB", 7, "Continuous", 35, {}),
    ("C-ROAD-CNTR", 2, "CENTER", 18, {}),
    ("C-ROAD-MARK", 7, "DASHED", 13, {}),
    ("C-TOPO-CONT", 34, "Continuous", 9, {}),
    ("C-BLDG-NEIG", 8, "Continuous", 25, {}),
    ("L-PLNT-TREE", 94, "Continuous", 18, {}),
    ("L-Gehölz-geschützt", 92, "DOT", 18, dict(description="Baumschutz")),
    ("C-UTIL-SEWR", 30, "DASHDOT", 25, {}),
    ("C-UTIL-WATR", 5, "HIDDEN", 25, dict(marks="frozen")),
)


def build(extents):
    drawing = Drawing("AC1015", full_header=True, newline="\r\n")
    drawing.header.update(extmin=extents[0], extmax=extents[1], ltscale=0.1, insunits=6)
    for name, color, linetype, weight, more in LAYERS:
        drawing.layer(name, color, linetype, weight, **more)
    tree(drawing)
    for draw in (parcels, roads, neighbours, trees, contours, utilities):
        draw(drawing.model)
    drawing.layout("Layout1", (420, 297))
    drawing.view(25, 0, 90)
    return drawing


def tree(drawing):
    block = drawing.block("TREE")
    block.circle("L-PLNT-TREE", 0, 0, TREE_RADIUS)
    for i in range(6):
        block.line("0", 0, 0, TREE_RADIUS * math.cos(math.pi * i / 3), TREE_RADIUS * math.sin(math.pi * i / 3))
    block.circle("L-Gehölz-geschützt", 0, 0, 3)


def parcels(model):
    model.polyline("C-PROP-LINE", [(-16, -15.5), (57, -15.5), (57, 26), (20, 30), (-16, 26)])
    model.polyline("C-PROP-LINE", [(65, -15.5), (84, -15.5), (84, 30), (65, 28)])
    for x, y, text in ((-13, 23, "1417/3"), (79, -13, "1417/4")):
        model.text("C-PROP-NUMB", x, y, 1.2, text)


def roads(model):
    x, y = CURB_BEND
    model.polyline("C-ROAD-CURB", [(-40, y), (x, y, 0.4142135624), (x + 6, y + 6), (x + 6, 40)], closed=False)
    model.polyline("C-ROAD-CURB", [(90, y), (x + 18, y, -0.4142135624), (x + 12, y + 6), (x + 12, 40)], closed=False)
    model.line("C-ROAD-CURB", -40, y - 7, 90, y - 7)
    model.line("C-ROAD-CNTR", -40, y - 3.5, 90, y - 3.5)
    model.line("C-ROAD-CNTR", x + 9, y + 3, x + 9, 40)
    for i in range(6):
        model.rectangle("C-ROAD-MARK", 10 + i, y - 6.6, 10.5 + i, y - 0.4)


def neighbours(model):
    model.polyline("C-BLDG-NEIG", [(66, -10), (80, -10), (80, 2), (74, 2), (74, 10), (66, 10)])
    model.hatch("C-BLDG-NEIG", [(66, -10), (80, -10), (80, 2), (74, 2), (74, 10), (66, 10)], "ANSI31", [(45, -0.9, 0.9, ())])


def tree_size(i):
    return 0.7 + 0.1 * (i % 4)


def trees(model):
    for i, (x, y) in enumerate(TREES):
        model.insert("L-PLNT-TREE", "TREE", x, y, scale=(tree_size(i), tree_size(i)), angle=37 * i % 360)


def contours(model):
    for i in range(5):
        model.spline("C-TOPO-CONT", [(-38 + 21 * j, 31 + 2.2 * i + 1.4 * math.sin(j + 0.4 * i)) for j in range(7)])


def utilities(model):
    model.line("C-UTIL-SEWR", -40, -20.4, 90, -20.4)
    model.line("C-UTIL-WATR", -40, -23.1, 90, -23.1)
    for x in (-20, 10, 40, 70):
        model.circle("C-UTIL-SEWR", x, -20.4, 0.5)
