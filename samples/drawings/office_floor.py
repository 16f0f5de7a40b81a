"""The office floor drawing, and the points at which its script picks."""
import math

from drawings import site_plan
from drawings.office_blocks import DOOR_IN_UNIT, DOOR_WIDTH, UNIT_DEPTH, UNIT_WIDTH, add_blocks
from drawings.office_layers import add_filters, add_layers
from drawings.office_plan import CLOUD_AT, CLOUD_BULGE, CLOUD_STEP, DEPTH, NOTES_AT, OUTSIDE, SOFA, SOFA_BULGE, WIDTH, add_plan
from drawings.office_services import SUPPLY_Y, add_services
from drawings.office_sheets import add_sheets, draw_escape_sheet, draw_plan_sheet
from drawings.office_states import add_states
from drawings.picks import Pick
from dxf.drawing import Drawing
from dxf.layer_filters import LayerFilters
from dxf.layer_states import LayerStates

SITE, SITE_FILE = "site-plan", "site-plan.dxf"
SITE_SCALE, SITE_ANGLE, SITE_AT = 1000, 3, (-1500, -800)
SITE_USED = {"C-PROP-LINE", "C-ROAD-CURB", "C-ROAD-CNTR", "L-PLNT-TREE", "C-BLDG-NEIG"}


def build(extents):
    drawing = Drawing("AC1027", full_header=True)
    drawing.header.update(extmin=extents[0], extmax=extents[1], ltscale=50, dimscale=100, clayer="A-ANNO-NOTE")
    plan_sheet, escape_sheet = add_sheets(drawing)
    drawing.text_style("Notes", "txt.shx")
    add_layers(drawing)
    add_site(drawing)
    add_blocks(drawing)
    add_plan(drawing)
    add_services(drawing)
    drawing.model.insert("X-SITE", SITE, *SITE_AT, scale=(SITE_SCALE, SITE_SCALE), angle=SITE_ANGLE)
    chairs = [entity for entity in drawing.model.entities if (2, "CHAIR") in entity.groups]
    drawing.group("MEETING-CHAIRS", "Chairs of the meeting room", chairs[:10])
    draw_plan_sheet(plan_sheet)
    draw_escape_sheet(drawing, escape_sheet)
    add_filters(LayerFilters(drawing))
    drawing.view(WIDTH / 2 + 1500, DEPTH / 2 - 500, 32000)
    add_states(LayerStates(drawing))
    return drawing


def add_site(drawing):
    """The external reference with the records that depend on it, as they were when the drawing was saved."""
    drawing.block(SITE, flags=4 | 32, path=SITE_FILE)
    for name, color, linetype, weight, more in site_plan.LAYERS:
        marks = more.get("marks", "") + " xref" + (" used" if name in SITE_USED else "")
        prefixed = linetype if linetype == "Continuous" else f"{SITE}|{linetype}"
        drawing.layer(f"{SITE}|{name}", color, prefixed, weight, **{**more, "marks": marks})


def in_site(x, y):
    """A place of the site plan in the office floor's coordinates."""
    sine, cosine = math.sin(math.radians(SITE_ANGLE)), math.cos(math.radians(SITE_ANGLE))
    return SITE_AT[0] + SITE_SCALE * (x * cosine - y * sine), SITE_AT[1] + SITE_SCALE * (x * sine + y * cosine)


def on_tree(i):
    """A place on the outline of a tree of the site plan."""
    x, y = site_plan.TREES[i]
    radius = site_plan.TREE_RADIUS * site_plan.tree_size(i)
    return in_site(x + radius * math.cos(1), y + radius * math.sin(1))


def in_unit(i, x, y):
    """A place of an office unit; every second unit is mirrored."""
    return (UNIT_WIDTH * (i + 1) - x if i % 2 else UNIT_WIDTH * i + x), y


def swing_of_unit(i):
    """A place on the arc of an office door's swing."""
    angle = math.radians(40)
    return in_unit(i, DOOR_IN_UNIT + DOOR_WIDTH * math.cos(angle), UNIT_DEPTH - 75 - DOOR_WIDTH * math.sin(angle))


def picks():
    """Where the script picks, by name."""
    curb = site_plan.CURB_BEND
    return {
        "outer wall": Pick(-OUTSIDE, 8400, "A-WALL-EXTR"),
        "partition": Pick(UNIT_WIDTH * 3 + 50, 6000, "A-WALL-INTR"),
        "supply duct": Pick(15500, SUPPLY_Y + 250, "M-DUCT-SUPL"),
        "escape route": Pick(9500, 8150, "F-ESCP-ROUT"),
        "door swing": Pick(*swing_of_unit(4), "A-DOOR-SWNG", "A-DOOR-LEAF", "A-ROOM-UNIT"),
        "curb": Pick(*in_site(curb[0] - 30, curb[1]), f"{SITE}|C-ROAD-CURB", f"{SITE}|C-ROAD-CURB", "X-SITE"),
        "tree": Pick(*on_tree(10), f"{SITE}|L-PLNT-TREE", f"{SITE}|L-PLNT-TREE", "X-SITE"),
        "revision cloud": Pick(CLOUD_AT[0] + 3.5 * CLOUD_STEP, CLOUD_AT[1] - CLOUD_BULGE * CLOUD_STEP / 2, "A-ANNO-REVC"),
        "furniture": Pick(SOFA[1] - SOFA_BULGE * (SOFA[3] - SOFA[2]) / 2, (SOFA[2] + SOFA[3]) / 2, "Möblierung"),
        "note": Pick(NOTES_AT[0] + 600, NOTES_AT[1] - 120, "A-ANNO-NOTE"),
    }
