"""The block definitions of the office floor: doors in office units, furniture sets, fixtures, symbols."""
import math

UNIT_WIDTH, UNIT_DEPTH = 3600, 7200
DOOR_WIDTH = 1010
DOOR_IN_UNIT = 2300  # from the unit's left to the hinge
LEAF_THICK = 40


def add_blocks(drawing):
    for make in (door_leaf, door, double_door, window, chair, desk, desk_set, plant, cabinet, light, switch, receptacle, diffuser, toilet, basin,
                 detector, extinguisher, exit_sign, office_unit, axis_bubble, north_arrow):
        make(drawing)


def door_leaf(drawing):
    """Hinge at the origin, open along y, swings from x to y. The leaf is on layer 0 and takes its reference's layer."""
    block = drawing.block("DOOR-LEAF")
    block.rectangle("0", 0, 0, LEAF_THICK, DOOR_WIDTH)
    block.arc("A-DOOR-SWNG", 0, 0, DOOR_WIDTH, 0, 90)
    block.circle("0", LEAF_THICK / 2, DOOR_WIDTH - 90, 15)


def door(drawing):
    block = drawing.block(f"DOOR-{DOOR_WIDTH}")
    for x in (-60, DOOR_WIDTH):
        block.rectangle("A-DOOR-FRAM", x, -75, x + 60, 75)
    block.line("A-DOOR-THLD", 0, -75, DOOR_WIDTH, -75)
    block.line("A-DOOR-THLD", 0, 75, DOOR_WIDTH, 75)
    block.insert("A-DOOR-LEAF", "DOOR-LEAF", 0, 75)


def double_door(drawing):
    """Two leaves; the right one is the mirrored left one."""
    block = drawing.block("DOOR-DOUBLE")
    for x in (-60, 2 * DOOR_WIDTH):
        block.rectangle("A-DOOR-FRAM", x, -100, x + 60, 100)
    block.insert("A-DOOR-LEAF", "DOOR-LEAF", 0, 100)
    block.insert("A-DOOR-LEAF", "DOOR-LEAF", 2 * DOOR_WIDTH, 100, scale=(-1, 1))


def window(drawing):
    block = drawing.block("WINDOW-2400")
    block.rectangle("A-GLAZ", 0, 150, 2400, 215)
    block.line("A-GLAZ", 0, 182.5, 2400, 182.5)
    for x in (0, 1170, 2340):
        block.rectangle("A-GLAZ-MULL", x, 140, x + 60, 225)
    block.line("A-GLAZ-SILL", 0, -40, 2400, -40)
    block.line("A-GLAZ-SILL", 0, 365, 2400, 365)


def chair(drawing):
    """Looks along y."""
    block = drawing.block("CHAIR")
    block.polyline("A-FURN-SEAT", [(-230, -230), (230, -230, 0.4), (230, 230), (-230, 230, 0.4)])
    block.polyline("A-FURN-SEAT", [(-210, -260, 0.25), (210, -260)], closed=False, width=25)
    block.ellipse("A-FURN-SEAT", 0, 20, (150, 0), 0.8)


def desk(drawing):
    block = drawing.block("DESK")
    block.rectangle("A-FURN-DESK", 0, 0, 1600, 800)
    block.rectangle("0", 520, 520, 1080, 560)
    block.rectangle("0", 560, 180, 1000, 330)
    block.circle("0", 1500, 720, 40)


def desk_set(drawing):
    """Two desks face to face with their chairs."""
    block = drawing.block("DESK-SET")
    block.insert("A-FURN-DESK", "DESK", 0, 0)
    block.insert("A-FURN-DESK", "DESK", 1600, 1640, angle=180)
    block.insert("A-FURN-SEAT", "CHAIR", 800, -330)
    block.insert("A-FURN-SEAT", "CHAIR", 820, 1970, angle=184)
    block.line("A-FURN", 0, 820, 1600, 820)


def plant(drawing):
    block = drawing.block("PLANT")
    block.circle("A-FURN-PLNT", 0, 0, 180)
    for i in range(8):
        angle = math.pi * i / 4
        block.arc("A-FURN-PLNT", 130 * math.cos(angle), 130 * math.sin(angle), 170, 45 * i - 60, 45 * i + 60)


def cabinet(drawing):
    block = drawing.block("CABINET")
    block.rectangle("A-FURN-STOR", 0, 0, 1200, 420)
    block.line("A-FURN-STOR", 600, 0, 600, 420)
    block.line("A-FURN-STOR", 0, 0, 1200, 420, ltype="HIDDEN", ltscale=0.5)


def light(drawing):
    block = drawing.block("LIGHT-1500")
    block.rectangle("E-LITE-FIXT", -750, -100, 750, 100)
    block.line("E-LITE-FIXT", -750, 0, 750, 0)


def switch(drawing):
    block = drawing.block("SWITCH")
    block.circle("E-LITE-SWCH", 0, 0, 60)
    block.line("E-LITE-SWCH", 42, 42, 180, 180)
    block.line("E-LITE-SWCH", 180, 180, 220, 140)


def receptacle(drawing):
    block = drawing.block("RECEPTACLE")
    block.arc("E-POWR-RCPT", 0, 0, 90, 0, 180)
    block.line("E-POWR-RCPT", -90, 0, 90, 0)
    block.line("E-POWR-RCPT", 0, 90, 0, 170)


def diffuser(drawing):
    block = drawing.block("DIFFUSER")
    for side in (300, 220, 140):
        block.rectangle("M-DIFF-SUPL", -side, -side, side, side)
    block.line("M-DIFF-SUPL", -300, -300, 300, 300)
    block.line("M-DIFF-SUPL", -300, 300, 300, -300)


def toilet(drawing):
    """Stands with its back at the origin, looks along y."""
    block = drawing.block("WC")
    block.rectangle("P-SANR-FIXT", -190, 0, 190, 180)
    block.ellipse("P-SANR-FIXT", 0, 400, (0, 250), 0.72)
    block.ellipse("P-SANR-FIXT", 0, 420, (0, 170), 0.7)


def basin(drawing):
    block = drawing.block("BASIN")
    block.polyline("P-SANR-FIXT", [(-280, 0), (280, 0), (280, 250), (120, 430, 0.35), (-120, 430), (-280, 250)])
    block.ellipse("P-SANR-FIXT", 0, 230, (200, 0), 0.65)
    block.circle("P-SANR-FIXT", 0, 60, 30)


def detector(drawing):
    block = drawing.block("SMOKE-DETECTOR")
    block.circle("F-ALRM-DETC", 0, 0, 120)
    block.text("F-ALRM-DETC", 0, 0, 120, "S", centred=True)


def extinguisher(drawing):
    block = drawing.block("EXTINGUISHER")
    block.solid("F-EXTG", (-130, -130), (130, -130), (0, 130))
    block.circle("F-EXTG", 0, 0, 240)


def exit_sign(drawing):
    block = drawing.block("EXIT-SIGN")
    block.rectangle("F-ESCP-SIGN", -400, -150, 400, 150)
    block.solid("F-ESCP-SIGN", (60, -80), (60, 80), (300, 0))
    block.attribute_definition("F-ESCP-SIGN", -340, -60, 120, "SIGN", "Number of the sign", "R00")


def office_unit(drawing):
    """One office between two half axes: façade along x at y = 0, corridor at y = UNIT_DEPTH."""
    block = drawing.block("OFFICE-UNIT", flags=2)
    block.insert("A-GLAZ", "WINDOW-2400", 600, -200)
    block.insert("A-DOOR", f"DOOR-{DOOR_WIDTH}", DOOR_IN_UNIT, UNIT_DEPTH, scale=(1, -1))
    block.insert("A-FURN", "DESK-SET", 1000, 1500)
    block.insert("A-FURN-STOR", "CABINET", 120, 6620, scale=(1.5, 1))
    block.insert("A-FURN-PLNT", "PLANT", 420, 620)
    for y in (2000, 4800):
        block.insert("E-LITE-FIXT", "LIGHT-1500", 1800, y)
    block.insert("E-LITE-SWCH", "SWITCH", 2080, 7060, angle=180)
    for x, y, angle in ((70, 2600, 270), (3530, 2200, 90)):
        block.insert("E-POWR-RCPT", "RECEPTACLE", x, y, angle=angle)
    block.insert("M-DIFF-SUPL", "DIFFUSER", 1800, 3600)
    block.rectangle("A-ROOM-AREA", 80, 195, 3520, 7095)
    block.attribute_definition("A-ROOM-NUMB", 450, 5700, 220, "NUMBER", "Room number", "2.00")
    block.attribute_definition("A-ROOM-NAME", 450, 5350, 160, "NAME", "Room name", "Office")


def axis_bubble(drawing):
    block = drawing.block("AXIS-BUBBLE", flags=2)
    block.circle("S-GRID-IDEN", 0, 0, 450)
    block.attribute_definition("S-GRID-IDEN", -110, -130, 260, "AXIS", "Axis", "A")


def north_arrow(drawing):
    block = drawing.block("NORTH")
    block.circle("A-ANNO-SYMB", 0, 0, 900)
    block.solid("A-ANNO-SYMB", (-350, -500), (0, -300), (0, 800))
    block.polyline("A-ANNO-SYMB", [(0, -300), (350, -500), (0, 800)])
    block.text("A-ANNO-SYMB", 0, 1150, 400, "N", centred=True)
