"""The office floor's building: axes, walls, columns, rooms, stairs, furniture, notes and dimensions, in millimetres.

Axis 1 meets axis A at the origin. Offices lie along the south façade, the corridor between axes B and C, the open office,
the meeting room, the core and the side rooms along the north façade.
"""
import math

from drawings.office_blocks import DOOR_IN_UNIT, DOOR_WIDTH, UNIT_WIDTH

BAY = 7200
AXES_X = [BAY * i for i in range(7)]
AXES_Y = [0, 7200, 9600, 16800]
WIDTH, DEPTH = AXES_X[-1], AXES_Y[-1]
OUTSIDE, INSIDE = 200, 165  # of the façade, from its axis
INSULATION = 140
SOFA = 12400, 13300, 13000, 14600  # left, right, low, high
SOFA_BULGE = 0.35
CLOUD_AT, CLOUD_STEP, CLOUD_BULGE = (39900, 12400), 600, 0.5
NOTES_AT = WIDTH + 3200, DEPTH
UNITS = WIDTH // UNIT_WIDTH
NORTH_DOORS = (3000, 10200, 17400, 25600, 29900, 33500, 37100, 41100)  # hinges along axis C
NORTH_WALLS = (14400, 21600, 25200, 28800, 32400, 36000, 39600)
ROOMS = ((1200, 15900, "2.20", "Open office / Großraumbüro"), (14900, 15900, "2.21", "Meeting room"), (21900, 10400, "2.22", "Stairs"),
         (28960, 14700, "2.24", "WC women"), (32560, 14700, "2.25", "WC men"), (36200, 15900, "2.26", "Kitchen"), (39900, 15900, "2.27", "Server"))


def add_plan(drawing):
    model = drawing.model
    for draw in (axes, facade, columns, corridor_walls, cross_walls, office_units, north_rooms, open_office, meeting_room, stairs, lifts,
                 toilets, kitchen, slab_and_beams, dimensions, notes, other_scripts):
        draw(model)


def axes(model):
    for i, x in enumerate(AXES_X):
        model.line("S-GRID", x, -4200, x, DEPTH + 2200)
        bubble(model, x, -4650, str(i + 1))
    for i, y in enumerate(AXES_Y):
        model.line("S-GRID", -4200, y, WIDTH + 2200, y)
        bubble(model, -4650, y, "ABCD"[i])
    for x in range(BAY // 2, WIDTH, BAY):
        model.line("Άξονες-κτηρίου", x, -1500, x, -600)


def bubble(model, x, y, text):
    model.insert("S-GRID-IDEN", "AXIS-BUBBLE", x, y, attributes=[("AXIS", "S-GRID-IDEN", x - 110, y - 130, 260, text)])


def facade(model):
    """Piers between the windows of every unit, on both long sides, and the closed gable walls."""
    edges = [-OUTSIDE] + [x for i in range(UNITS) for x in (UNIT_WIDTH * i + 600, UNIT_WIDTH * i + 3000)] + [WIDTH + OUTSIDE]
    for low, high in zip(edges[::2], edges[1::2]):
        for bottom, top in ((-OUTSIDE, INSIDE), (DEPTH - INSIDE, DEPTH + OUTSIDE)):
            model.rectangle("A-WALL-EXTR", low, bottom, high, top)
        masonry(model, low, -OUTSIDE + INSULATION, high, INSIDE)
        masonry(model, low, DEPTH - INSIDE, high, DEPTH + OUTSIDE - INSULATION)
    for left, right in ((-OUTSIDE, INSIDE), (WIDTH - INSIDE, WIDTH + OUTSIDE)):
        model.rectangle("A-WALL-EXTR", left, INSIDE, right, DEPTH - INSIDE)
    masonry(model, -OUTSIDE + INSULATION, INSIDE, INSIDE, DEPTH - INSIDE)
    masonry(model, WIDTH - INSIDE, INSIDE, WIDTH + OUTSIDE - INSULATION, DEPTH - INSIDE)
    for i in range(UNITS):
        model.insert("A-GLAZ", "WINDOW-2400", UNIT_WIDTH * i + 3000, DEPTH + OUTSIDE, angle=180)
        model.text("Окна-маркировка", UNIT_WIDTH * i + 1800, DEPTH + 600, 200, f"ОК-{i + 1}", centred=True)


def masonry(model, x1, y1, x2, y2):
    model.hatch("A-WALL-PATT", [(x1, y1), (x2, y1), (x2, y2), (x1, y2)], "ANSI31", [(45, -100, 100, ())])


def columns(model):
    for x in AXES_X[1:-1]:
        for y in AXES_Y[1:3]:
            model.rectangle("S-COLS", x - 200, y - 200, x + 200, y + 200)
            model.hatch("S-COLS-PATT", [(x - 200, y - 200), (x + 200, y - 200), (x + 200, y + 200), (x - 200, y + 200)])


def corridor_walls(model):
    openings = sorted(door_span(i) for i in range(UNITS))
    run = [INSIDE] + [x for span in openings for x in span] + [WIDTH - INSIDE]
    for low, high in zip(run[::2], run[1::2]):
        model.rectangle("A-WALL-INTR", low, 7125, high, 7275)
    run = [INSIDE] + [x for hinge in NORTH_DOORS for x in (hinge - 60, hinge + DOOR_WIDTH + 60)] + [WIDTH - INSIDE]
    for low, high in zip(run[::2], run[1::2]):
        model.rectangle("A-WALL-INTR", low, 9525, high, 9675)
    for hinge in NORTH_DOORS:
        model.insert("A-DOOR", f"DOOR-{DOOR_WIDTH}", hinge, 9600)
    model.insert("A-DOOR", "DOOR-DOUBLE", 21900, 7275, angle=90, scale=(1.0, 1.0))
    model.line("F-COMP-WALL", 21700, 7275, 21700, 9525)


def door_span(i):
    """The opening of an office's door; every second unit is mirrored."""
    if i % 2:
        return UNIT_WIDTH * (i + 1) - DOOR_IN_UNIT - DOOR_WIDTH - 60, UNIT_WIDTH * (i + 1) - DOOR_IN_UNIT + 60
    return UNIT_WIDTH * i + DOOR_IN_UNIT - 60, UNIT_WIDTH * i + DOOR_IN_UNIT + DOOR_WIDTH + 60


def cross_walls(model):
    for i in range(1, UNITS):
        model.rectangle("A-WALL-INTR", UNIT_WIDTH * i - 50, INSIDE, UNIT_WIDTH * i + 50, 7125)
    for x in NORTH_WALLS:
        core = x in (21600, 25200, 28800)
        half = 125 if core else 60
        model.rectangle("A-WALL-CORE" if core else "A-WALL-INTR", x - half, 9675, x + half, DEPTH - INSIDE)


def office_units(model):
    for i in range(UNITS):
        x, mirrored = UNIT_WIDTH * (i + i % 2), i % 2
        at = [x - 1900 if mirrored else x + 450, 5700]
        name = "Office" if i else "Empfang"
        texts = [("NUMBER", "A-ROOM-NUMB", *at, 220, f"2.{i + 1:02d}"), ("NAME", "A-ROOM-NAME", at[0], at[1] - 350, 160, name)]
        model.insert("A-ROOM-UNIT", "OFFICE-UNIT", x, 0, scale=(-1 if mirrored else 1, 1), attributes=texts)


def north_rooms(model):
    for x, y, number, name in ROOMS:
        model.text("A-ROOM-NUMB", x, y, 220, number)
        model.text("A-ROOM-NAME", x, y - 330, 160, name)
    outlines = list(zip((0, *NORTH_WALLS), (*NORTH_WALLS, WIDTH)))
    for left, right in outlines:
        model.rectangle("A-ROOM-AREA", left + 190, 9700, right - 190, DEPTH - 190)


def open_office(model):
    """Desks in rows and columns, a lounge, storage along the wall."""
    model.insert("A-FURN", "DESK-SET", 1500, 12300, columns=4, dx=2600)
    model.insert("平面図-家具", "CABINET", 900, 9760, columns=1)
    model.insert("Möblierung", "CABINET", 6000, 9760, columns=3, dx=1250)
    model.insert("A-FURN-PLNT", "PLANT", 13700, 16200, scale=(1.4, 1.4))
    left, right, low, high = SOFA
    model.polyline("Möblierung", [(left, low, -0.6), (left, high), (right, high, SOFA_BULGE), (right, low)])
    model.circle("Möblierung", 13700, 13800, 250)
    model.text("平面図-家具", 1500, 10400, 180, "収納棚")
    model.hatch("A-FLOR-PATT", [(200, 11400), (12000, 11400), (12000, 15000), (200, 15000)], "GRID",
                [(0, 0, 600, ()), (90, -600, 0, ())])


def meeting_room(model):
    model.ellipse("A-FURN", 18000, 13300, (2100, 0), 0.45)
    for i in range(10):
        angle = 2 * math.pi * i / 10
        x, y = 18000 + 2450 * math.cos(angle), 13300 + 1330 * math.sin(angle)
        model.insert("A-FURN-SEAT", "CHAIR", x, y, angle=round(math.degrees(angle) + 90, 3) % 360)
    model.polyline("E-COMM-DATA", [(16800, 16480), (19200, 16480)], closed=False, width=60)
    model.hatch("A-FLOR-PATT", [(14700, 9900), (21300, 9900), (21300, 16500), (14700, 16500)], "DOTS", [(0, 150, 150, (0.0, -300))])


def stairs(model):
    """A straight double flight with a landing at the façade."""
    for i in range(11):
        y = 11400 + 290 * i
        model.line("A-FLOR-STRS", 21900, y, 23300, y)
        model.line("A-FLOR-STRS", 23500, y, 24900, y)
    model.rectangle("A-FLOR-HRAL", 23330, 11300, 23470, 14400)
    model.polyline("A-FLOR-STRS", [(22600, 11100), (22600, 15400, -0.4142135624), (22900, 15700), (23900, 15700, -0.4142135624), (24200, 15400),
                                   (24200, 11500)], closed=False)
    model.solid("A-FLOR-STRS", (24100, 11500), (24300, 11500), (24200, 11150))
    model.lines("A-FLOR-OVHD", (21750, 12900, 23200, 13300), (21750, 13050, 23200, 13450))
    model.text("A-ANNO-NOTE", 22600, 10950, 150, "UP", centred=True)
    model.rectangle("S-SLAB-OPNG", 21800, 11250, 25000, 16500)


def lifts(model):
    for x in (25450, 27150):
        model.rectangle("A-FLOR-EVTR", x, 12600, x + 1500, 14900)
        model.lines("A-FLOR-EVTR", (x, 12600, x + 1500, 14900), (x, 14900, x + 1500, 12600))
        model.rectangle("A-WALL-CORE", x - 75, 12400, x + 1575, 15100)
        model.line("A-FLOR-EVTR", x + 300, 12400, x + 1200, 12400)
    model.polyline("M-EQPM", [(25450, 15400), (28600, 15400), (28600, 16500), (25450, 16500)])
    model.text("M-EQPM", 27000, 15950, 250, "AHU 2", centred=True)


def toilets(model):
    for left in (28800, 32400):
        for i in range(3):
            x = left + 620 + 1000 * i
            model.insert("P-SANR-FIXT", "WC", x, 16620, angle=180)
            model.line("P-SANR-PART", x + 500, 15100, x + 500, 16630)
            model.insert("P-SANR-FIXT", "BASIN", left + 80 if i == 3 else left + 65, 12700 - 900 * i, angle=270)
        model.polyline("P-SANR-PIPE", [(left + 300, 16750), (left + 3400, 16750)], closed=False, width=100)
        model.lines("P-DOMW-COLD", (left + 100, 10500, left + 100, 13200))
        model.lines("P-DOMW-HOTW", (left + 160, 10500, left + 160, 13200))


def kitchen(model):
    model.polyline("A-EQPM-KTCH", [(36060, 11200), (36660, 11200), (36660, 15200), (39540, 15200), (39540, 15800), (36060, 15800)])
    for y in (11900, 12500):
        for x in (36210, 36500):
            model.circle("A-EQPM-KTCH", x, y, 90)
    model.insert("P-SANR-FIXT", "BASIN", 36100, 13700, angle=270)
    model.circle("A-FURN", 38300, 12600, 450)
    for i in range(3):
        x, y = 38300 + 750 * math.cos(2.1 * i), 12600 + 750 * math.sin(2.1 * i)
        model.insert("A-FURN-SEAT", "CHAIR", x, y, angle=round(math.degrees(2.1 * i) + 90, 3))
    for i in range(3):
        model.rectangle("E-COMM-RACK", 40200 + 900 * i, 13000, 40800 + 900 * i, 14000)


def slab_and_beams(model):
    model.heavy_polyline("S-SLAB-EDGE", [(-350, -350), (WIDTH + 350, -350), (WIDTH + 350, DEPTH + 350), (-350, DEPTH + 350)])
    for x in AXES_X[1:-1]:
        model.lines("S-BEAM", (x - 150, 0, x - 150, DEPTH), (x + 150, 0, x + 150, DEPTH))
    for x in AXES_X:
        model.rectangle("S-FNDN", x - 900, -900, x + 900, 900)
    for i in range(1, 24):
        model.line("A-CLNG-GRID", 600 * i, 9700, 600 * i, 16600)


def dimensions(model):
    for left, right in zip(AXES_X, AXES_X[1:]):
        model.dimension("A-ANNO-DIMS", (left, -OUTSIDE), (right, -OUTSIDE), -2200)
    model.dimension("A-ANNO-DIMS", (0, -OUTSIDE), (WIDTH, -OUTSIDE), -3200)
    for low, high in zip(AXES_Y, AXES_Y[1:]):
        model.dimension("Διαστάσεις", (-OUTSIDE, low), (-OUTSIDE, high), -2200)
    model.dimension("A-ANNO-DIMS", (-OUTSIDE, 0), (-OUTSIDE, DEPTH), -3200)
    for i in (1, 2):
        low, high = door_span(i)
        model.dimension("Türen-Öffnungsmaße", (low + 60, 7275), (high - 60, 7275), 7600)


def notes(model):
    model.mtext("A-ANNO-NOTE", *NOTES_AT, 250, 9000,
                "{\\LGENERAL NOTES\\l}\\P1. All dimensions in millimetres, to finished faces.\\P2. Partitions: 100 mm, metal studs.\\P"
                "3. Doors 1010 x 2135 unless noted.", style="Notes")
    model.mtext("注記", WIDTH + 3200, DEPTH - 3500, 250, 9000, "注記：寸法はすべてミリメートルとする。", style="Notes")
    model.insert("A-ANNO-SYMB", "NORTH", WIDTH + 5200, 2500, angle=12)
    model.polyline("A-ANNO-REVC", cloud(*CLOUD_AT, 5, 3, CLOUD_STEP), width=20)
    model.point("A-ANNO-SYMB", 0, 0)


def cloud(x, y, columns, rows, step):
    """A revision cloud around a field of steps."""
    outline = [(x + step * i, y) for i in range(columns)] + [(x + step * columns, y + step * i) for i in range(rows)]
    outline += [(x + step * i, y + step * rows) for i in range(columns, 0, -1)] + [(x, y + step * i) for i in range(rows, 0, -1)]
    return [(px, py, CLOUD_BULGE) for px, py in outline]


def other_scripts(model):
    model.polyline("Brandschutz Grünfläche außen", [(-1200, -5200), (-1200, -7600, 0.3), (8000, -7600), (8000, -5200)])
    model.text("Brandschutz Grünfläche außen", 3400, -6500, 350, "Feuerwehrzufahrt – frei halten", centred=True)
    for x in range(3600, WIDTH, 7200):
        model.circle("Освещение-аварийное", x, 9250, 110)
        model.line("Освещение-аварийное", x - 110, 9250, x + 110, 9250)
