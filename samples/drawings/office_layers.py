"""The layers of the office floor: name, colour, linetype, lineweight and what else is special."""

# Colours by index, as true colour (index nearest, 0xRRGGBB) and from a colour book (also its entry).
SAND, CONCRETE, GLASS, MOSS = (41, 0xD9C49A), (252, 0x8A8D8F), (141, 0x8FB7D6), (84, 0x5F7A3A)
BOOK = "OFFICE FINISHES$"

LAYERS = (
    # architecture
    ("A-WALL-EXTR", 7, "Continuous", 50, dict(description="Exterior walls, load bearing")),
    ("A-WALL-INTR", 8, "Continuous", 35, dict(description="Partitions")),
    ("A-WALL-PATT", 252, "Continuous", 9, dict(true=CONCRETE[1], transparency=40)),
    ("A-WALL-CORE", 7, "Continuous", 50, dict(marks="locked")),
    ("A-DOOR", 30, "Continuous", 25, dict(description="Door frames and references of doors")),
    ("A-DOOR-LEAF", 30, "Continuous", 25, {}),
    ("A-DOOR-SWNG", 31, "Continuous", 13, dict(description="Swings, thin")),
    ("A-DOOR-FRAM", 32, "Continuous", 18, {}),
    ("A-DOOR-THLD", 33, "HIDDEN", 13, {}),
    ("A-GLAZ", 141, "Continuous", 25, dict(true=GLASS[1])),
    ("A-GLAZ-SILL", 142, "Continuous", 13, {}),
    ("A-GLAZ-MULL", 143, "Continuous", 18, {}),
    ("A-FLOR-STRS", 9, "Continuous", 25, {}),
    ("A-FLOR-HRAL", 11, "Continuous", 18, {}),
    ("A-FLOR-EVTR", 12, "Continuous", 25, {}),
    ("A-FLOR-PATT", 254, "Continuous", 5, dict(transparency=70, description="Floor finishes")),
    ("A-FLOR-OVHD", 9, "PHANTOM", 13, {}),
    ("A-CLNG-GRID", 253, "DOT", 5, dict(marks="frozen", description="Suspended ceiling, see reflected plan")),
    ("A-ROOM-UNIT", 150, "Continuous", 18, dict(description="References of office units")),
    ("A-ROOM-NUMB", 5, "Continuous", 18, {}),
    ("A-ROOM-NAME", 5, "Continuous", 18, {}),
    ("A-ROOM-AREA", 6, "DASHDOT", 9, dict(marks="noplot", description="Area outlines for the room book, never plotted")),
    ("A-FURN", 41, "Continuous", 18, dict(true=SAND[1], book=BOOK + "Birch 12")),
    ("A-FURN-DESK", 41, "Continuous", 18, dict(true=SAND[1])),
    ("A-FURN-SEAT", 34, "Continuous", 13, dict(true=0x7A3B2E, book=BOOK + "Oxblood 3")),
    ("A-FURN-STOR", 43, "Continuous", 18, {}),
    ("A-FURN-PLNT", 84, "Continuous", 13, dict(true=MOSS[1])),
    ("A-EQPM-KTCH", 35, "Continuous", 18, {}),
    ("A-ANNO-DIMS", 3, "Continuous", 13, {}),
    ("A-ANNO-NOTE", 2, "Continuous", 18, dict(description="Notes of the architect")),
    ("A-ANNO-SYMB", 2, "Continuous", 18, {}),
    ("A-ANNO-TTLB", 7, "Continuous", 35, {}),
    ("A-ANNO-VPRT", 9, "Continuous", -3, dict(marks="noplot")),
    ("A-ANNO-REVC", 1, "Continuous", 25, dict(marks="newvp")),
    # structure
    ("S-GRID", 1, "CENTER", 13, dict(description="Structural grid")),
    ("S-GRID-IDEN", 1, "Continuous", 18, {}),
    ("S-COLS", 7, "Continuous", 50, {}),
    ("S-COLS-PATT", 250, "Continuous", 9, {}),
    ("S-BEAM", 6, "HIDDEN", 18, dict(marks="off", description="Beams above, off in plans")),
    ("S-SLAB-EDGE", 8, "DASHED", 25, {}),
    ("S-SLAB-OPNG", 1, "PHANTOM", 18, {}),
    ("S-FNDN", 8, "HIDDEN", 18, dict(marks="frozen locked", description="Foundations of the storey below")),
    # sanitary and plumbing
    ("P-SANR-FIXT", 4, "Continuous", 18, dict(description="WC pans, basins, urinals")),
    ("P-SANR-PIPE", 36, "DASHED", 25, {}),
    ("P-DOMW-COLD", 5, "Continuous", 25, {}),
    ("P-DOMW-HOTW", 1, "CENTER2", 25, {}),
    ("P-SANR-PART", 8, "Continuous", 18, {}),
    # electrical and communication
    ("E-LITE-FIXT", 40, "Continuous", 18, dict(true=0xFFC53D)),
    ("E-LITE-SWCH", 50, "Continuous", 13, {}),
    ("E-LITE-CIRC", 50, "DASHDOT", 9, {}),
    ("E-POWR-RCPT", 20, "Continuous", 13, {}),
    ("E-POWR-PANL", 10, "Continuous", 35, {}),
    ("E-POWR-TRAY", 21, "DIVIDE", 18, {}),
    ("E-COMM-DATA", 94, "Continuous", 13, {}),
    ("E-COMM-RACK", 96, "Continuous", 25, {}),
    # fire protection
    ("F-ESCP-ROUT", 3, "DASHED", 50, dict(true=0x009A44, description="Escape routes")),
    ("F-ESCP-SIGN", 3, "Continuous", 25, {}),
    ("F-ALRM-DETC", 1, "Continuous", 18, {}),
    ("F-EXTG", 1, "Continuous", 35, dict(true=0xC8102E, book=BOOK + "Signal red")),
    ("F-SPRN-HEAD", 1, "Continuous", 13, {}),
    ("F-SPRN-PIPE", 1, "DASHDOT", 18, {}),
    ("F-COMP-WALL", 1, "PHANTOM", 70, dict(transparency=50)),
    # heating, ventilation, air conditioning
    ("M-DUCT-SUPL", 130, "Continuous", 25, dict(description="Supply air")),
    ("M-DUCT-RETN", 210, "DASHED", 25, dict(description="Return air")),
    ("M-DUCT-CNTR", 131, "CENTER", 9, {}),
    ("M-DIFF-SUPL", 132, "Continuous", 18, {}),
    ("M-GRLL-RETN", 211, "Continuous", 18, {}),
    ("M-EQPM", 200, "Continuous", 35, {}),
    ("M-PIPE-CHWS", 150, "Continuous", 25, {}),
    ("M-PIPE-CHWR", 151, "DASHED", 25, {}),
    # names in other scripts, as the partners of the project have them
    ("Möblierung", 42, "Continuous", 18, dict(description="Lose Möbel, nicht im Leistungsumfang")),
    ("Türen-Öffnungsmaße", 3, "Continuous", 13, {}),
    ("Brandschutz Grünfläche außen", 94, "Continuous", 13, {}),
    ("Άξονες-κτηρίου", 1, "CENTER", 13, {}),
    ("Διαστάσεις", 3, "Continuous", 13, {}),
    ("平面図-家具", 41, "Continuous", 13, {}),
    ("注記", 2, "Continuous", 13, {}),
    ("Освещение-аварийное", 1, "Continuous", 18, dict(description="Аварийное освещение")),
    ("Окна-маркировка", 5, "Continuous", 13, {}),
    ("X-SITE", 9, "Continuous", -3, dict(description="Reference of the site plan")),
    # kept for later, nothing is on them
    ("A-DEMO", 8, "DASHED", 18, dict(marks="off noplot")),
    ("E-SAFE-CCTV", 22, "Continuous", 18, {}),
)


def add_layers(drawing):
    drawing.layer("Defpoints", 7, marks="noplot")
    for name, color, linetype, weight, more in LAYERS:
        drawing.layer(name, color, linetype, weight, **more)


def add_filters(filters):
    """The filter tree of the project, and two filters in the older form."""
    disciplines = filters.properties("Architecture", 'NAME=="A-*"')
    filters.properties("Doors", 'NAME=="A-DOOR*"', parent=disciplines)
    filters.properties("Furniture", 'NAME=="A-FURN*" OR NAME=="Möblierung" OR NAME=="平面図-*"', parent=disciplines)
    filters.properties("Structure", 'NAME=="S-*"')
    services = filters.properties("Building services", 'NAME=="P-*" OR NAME=="E-*" OR NAME=="M-*"')
    filters.properties("Thick services", 'LINEWEIGHT=="0.35" OR LINEWEIGHT=="0.50"', parent=services)
    filters.properties("Fire protection", 'NAME=="F-*"', current=True)
    filters.properties("Off or frozen", 'OFF=="True" OR FROZEN=="True"')
    filters.properties("Red and plotted", 'COLOR=="1" AND PLOTTABLE=="True"')
    sheet = filters.members("Escape plan sheet", ("F-ESCP-ROUT", "F-ESCP-SIGN", "F-EXTG", "A-WALL-EXTR", "A-WALL-INTR", "A-DOOR"))
    filters.members("Signs only", ("F-ESCP-SIGN", "F-EXTG"), parent=sheet)
    filters.pattern("ANNOTATION", "?-ANNO-*")
    filters.pattern("HIDDEN LINES", linetypes="HIDDEN")
