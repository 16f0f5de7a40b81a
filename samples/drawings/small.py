"""Small drawings, each for one purpose: nesting, versions, code pages, the binary form."""
import math

from drawings.picks import Pick
from dxf.drawing import Drawing
from dxf.scene import IDENTITY, moved, times

# Where the references of the nesting drawing stand: x, y, scale along x and y, angle.
TREE_AT = (100, 100, 1.5, 0.75, 30)
BRANCH_AT = (0, 50, 2, 1, 0)
LEAF_AT = (20, 0, 1, 1, 90)
ARRAY_AT, ARRAY_STEP, ARRAY_COUNT = (300, 0, 1, 1, 15), (25, 20), (4, 3)
PLAN_AT = (0, 300, 2, 2, 45)
PLAN = "PLAN"  # the external reference's block; its file is xplan.dxf


def placement(x, y, across, up, angle):
    sine, cosine = math.sin(math.radians(angle)), math.cos(math.radians(angle))
    return across * cosine, across * sine, -up * sine, up * cosine, x, y


def through(references, place):
    """A place inside of nested references, outermost first, in model space."""
    matrix = IDENTITY
    for reference in references:
        matrix = times(matrix, placement(*reference))
    return moved(matrix, place)


def put(block, layer, name, at, **more):
    x, y, across, up, angle = at
    return block.insert(layer, name, x, y, scale=(across, up), angle=angle, **more)


def nesting(extents):
    drawing = Drawing("AC1027")
    drawing.header.update(extmin=extents[0], extmax=extents[1], clayer="WORK")
    sheet = drawing.layout("Sheet", (420, 297))
    for i, name in enumerate(("WORK", "LEAF-LINE", "LEAF-ARC", "LEAF-TAG", "LEAF-REF", "BRANCH-PLINE", "BRANCH-REF", "TREE-ELLIPSE", "TREE-REF",
                              "ARRAY-REF", "PLAN-REF", "CURVES", "FILLS")):
        drawing.layer(name, i % 7 + 1, ("Continuous", "DASHED")[i % 3 == 1])
    drawing.block(PLAN, flags=4, path="xplan.dxf")
    for name, (color, marks) in XPLAN_LAYERS.items():
        drawing.layer(f"{PLAN}|{name}", color, marks=f"{marks} xref")
    leaf_branch_tree(drawing)
    model = drawing.model
    put(model, "TREE-REF", "TREE", TREE_AT)
    put(model, "ARRAY-REF", "LEAF", ARRAY_AT, columns=ARRAY_COUNT[0], rows=ARRAY_COUNT[1], dx=ARRAY_STEP[0], dy=ARRAY_STEP[1])
    put(model, "PLAN-REF", PLAN, PLAN_AT)
    model.insert("LEAF-REF", "LEAF", 0, 0, attributes=[("TAG", "LEAF-TAG", 2, -4, 2.5, "first")])
    curves_and_fills(model)
    sheet.viewport("0", 2, 150, 150, 200, 180, view=(200, 200), view_height=720, twist=30, frozen=[drawing.layers["CURVES"]])
    sheet.viewport("0", 3, 340, 150, 120, 180, view=(200, 200), view_height=720)
    sheet.text("WORK", 20, 20, 5, "Scale 1:4")
    drawing.view(200, 200, 600)
    return drawing


def leaf_branch_tree(drawing):
    leaf = drawing.block("LEAF", flags=2)
    leaf.line("LEAF-LINE", 0, 0, 10, 0)
    leaf.arc("LEAF-ARC", 5, 0, 5, 20, 160)
    leaf.circle("0", 5, -6, 2)
    leaf.attribute_definition("LEAF-TAG", 2, -4, 2.5, "TAG", "Tag", "none")
    branch = drawing.block("BRANCH")
    put(branch, "LEAF-REF", "LEAF", LEAF_AT)
    branch.polyline("BRANCH-PLINE", [(-10, -20), (0, -20, 1), (10, -20), (10, -30)], closed=False)
    tree = drawing.block("TREE")
    put(tree, "BRANCH-REF", "BRANCH", BRANCH_AT)
    tree.ellipse("TREE-ELLIPSE", -60, 10, (20, 5), 0.4)


def curves_and_fills(model):
    model.spline("CURVES", [(0, -60), (30, -90), (60, -30), (90, -80), (120, -60)])
    model.heavy_polyline("CURVES", [(150, -80), (200, -80, 0.5), (200, -40), (150, -40)])
    model.circle("CURVES", 250, -60, 20, true=0x3366CC)
    model.solid("FILLS", (0, -140), (40, -140), (20, -110))
    model.hatch("FILLS", [(60, -140), (120, -140), (120, -110), (60, -110)])
    model.hatch("FILLS", [(150, -140), (210, -140), (210, -110), (150, -110)], "ANSI31", [(45, -2.245, 2.245, ())])
    model.text("WORK", 240, -130, 8, "Text", angle=10)
    model.mtext("WORK", 300, -110, 6, 80, "First line\\PSecond line")
    model.point("WORK", 5, 40)
    model.line("0", -50, 0, -50, 80)


def nesting_picks():
    """Layers by object, innermost and outermost reference."""
    tree, branch, leaf = (TREE_AT, BRANCH_AT), (TREE_AT, BRANCH_AT), (TREE_AT, BRANCH_AT, LEAF_AT)
    cell = through([ARRAY_AT], (2 * ARRAY_STEP[0] + 8, ARRAY_STEP[1]))
    return {
        "line at the third level": Pick(*through(leaf, (9, 0)), "LEAF-LINE", "LEAF-REF", "TREE-REF"),
        "arc at the third level": Pick(*through(leaf, (5, 5)), "LEAF-ARC", "LEAF-REF", "TREE-REF"),
        "circle on layer 0 at the third level": Pick(*through(leaf, (5, -8)), "0", "LEAF-REF", "TREE-REF"),
        "bulge at the second level": Pick(*through(branch, (5, -25)), "BRANCH-PLINE", "BRANCH-REF", "TREE-REF"),
        "ellipse at the first level": Pick(*through(tree[:1], (-80, 5)), "TREE-ELLIPSE", "TREE-REF"),
        "array, third column and second row": Pick(*cell, "LEAF-LINE", "ARRAY-REF"),
        "attribute": Pick(5, -2.75, "LEAF-TAG"),
        "wall of the external reference": Pick(*through([PLAN_AT], (30, 0)), f"{PLAN}|WALLS", f"{PLAN}|WALLS", "PLAN-REF"),
        "door in a block of the external reference": Pick(*through([PLAN_AT, (20, 40, 1, 1, 90)], (5, 0)), f"{PLAN}|Türen", f"{PLAN}|DOORS", "PLAN-REF"),
        "layer 0 of the external reference": Pick(*through([PLAN_AT], (50, 20)), "0", "0", "PLAN-REF"),
        "spline": Pick(60, -57.5, "CURVES"),
        "layer 0": Pick(-50, 40, "0"),
    }


XPLAN_LAYERS = {"WALLS": (7, ""), "DOORS": (30, ""), "Türen": (31, ""), "GRID": (1, "frozen")}


def xplan(extents):
    """The drawing that the nesting drawing refers to."""
    drawing = Drawing("AC1015")
    drawing.header.update(extmin=extents[0], extmax=extents[1])
    for name, (color, marks) in XPLAN_LAYERS.items():
        drawing.layer(name, color, marks=marks)
    door = drawing.block("DOOR")
    door.line("Türen", 0, 0, 10, 0)
    door.arc("DOORS", 0, 0, 10, 0, 90)
    drawing.model.rectangle("WALLS", 0, 0, 100, 80)
    drawing.model.insert("DOORS", "DOOR", 20, 40, angle=90)
    drawing.model.line("0", 50, 10, 50, 30)
    drawing.model.line("GRID", -10, 40, 110, 40)
    drawing.layout("Layout1", (420, 297))
    drawing.view(50, 40, 120)
    return drawing


def r12(extents):
    """As old programs write it: no handles, a DOS code page, CR LF, a block and an old-style polyline."""
    drawing = Drawing("AC1009", newline="\r\n", handles=False, code_page="dos850")
    drawing.header.update(extmin=extents[0], extmax=extents[1], clayer="WÄNDE")
    for name, color, ltype in (("WÄNDE", 7, "Continuous"), ("TÜREN", 30, "Continuous"), ("ACHSEN", 1, "CENTER"), ("STRASSE-MÜHLBÖCK", 3, "DASHED")):
        drawing.layer(name, color, ltype)
    drawing.layer("FUNDAMENT", 8, "HIDDEN", marks="frozen")
    door = drawing.block("TÜR")
    door.line("0", 0, 0, 0, 10)
    door.arc("TÜREN", 0, 0, 10, 0, 90)
    model = drawing.model
    model.heavy_polyline("WÄNDE", [(0, 0), (100, 0), (100, 60, 0.5), (0, 60)])
    model.line("ACHSEN", -20, 30, 120, 30)
    model.insert("TÜREN", "TÜR", 40, 0, angle=90)
    model.insert("TÜREN", "TÜR", 60, 60, scale=(1, -1))
    model.text("STRASSE-MÜHLBÖCK", 0, -20, 5, "Straße nach Mühlböck")
    model.circle("FUNDAMENT", 50, 30, 15)
    drawing.paper.viewport("0", 1, 210, 148.5, 420, 297, view=(210, 148.5))
    drawing.paper.viewport("0", 2, 150, 150, 200, 150, view=(50, 30), view_height=150, frozen=["ACHSEN"])
    drawing.view(50, 30, 120)
    return drawing


def r2000(extents):
    """Umlauts in the code page, other scripts as escapes."""
    drawing = Drawing("AC1015", newline="\r\n", full_header=True)
    drawing.header.update(extmin=extents[0], extmax=extents[1], clayer="Außenwände")
    for i, name in enumerate(("Außenwände", "Türen & Öffnungen", "Άξονες", "Стены", "壁", "Café – naïve")):
        drawing.layer(name, i + 1, description="Größe in mm" if i < 2 else "Ωδείο")
        drawing.model.line(name, 0, 10 * i, 50, 10 * i)
        drawing.model.text(name, 60, 10 * i, 4, name)
    drawing.layout("Übersicht", (420, 297))
    drawing.view(40, 30, 90)
    return drawing


def r2018(extents):
    drawing = Drawing("AC1032")
    drawing.header.update(extmin=extents[0], extmax=extents[1])
    drawing.layer("Wände", 3, transparency=25)
    drawing.model.line("Wände", 0, 0, 100, 0)
    drawing.model.circle("0", 50, 30, 20)
    drawing.layout("Layout1", (420, 297))
    drawing.view(50, 20, 80)
    return drawing


def many_layers(count):
    """A drawing for measuring: a line and a circle on each of many layers, in a square field."""
    drawing = Drawing("AC1027")
    side = math.ceil(math.sqrt(count))
    drawing.header.update(extmin=(0, 0), extmax=(100 * (side - 1) + 80, 100 * ((count - 1) // side) + 60))
    for i in range(count):
        name = f"{'ASEMPF'[i % 6]}-{i // 6:05d}"
        marks = " ".join(word for word, step in (("frozen", 17), ("off", 23), ("locked", 29), ("noplot", 31)) if i % step == step - 1)
        drawing.layer(name, i % 255 + 1, ("Continuous", "DASHED", "CENTER", "HIDDEN")[i % 4], (-3, 13, 25, 50)[i % 4], marks)
        x, y = 100 * (i % side), 100 * (i // side)
        drawing.model.line(name, x, y, x + 80, y + 60)
        drawing.model.circle(name, x + 60, y + 20, 15)
    drawing.layout("Layout1", (420, 297))
    drawing.view(50 * side, 50 * side, 100 * side)
    return drawing
