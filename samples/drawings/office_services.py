"""The office floor's services: ventilation, pipes, lights, cables, fire protection and escape routes."""
from drawings.office_plan import AXES_X, DEPTH, UNITS, WIDTH
from drawings.office_blocks import UNIT_WIDTH

SUPPLY_Y, RETURN_Y = 8750, 7800  # centres of the main ducts in the corridor


def add_services(drawing):
    model = drawing.model
    for draw in (supply_air, return_air, chilled_water, lights, cables, sprinklers, detectors, escape_routes):
        draw(model)


def supply_air(model):
    model.rectangle("M-DUCT-SUPL", 700, SUPPLY_Y - 250, 42500, SUPPLY_Y + 250)
    model.line("M-DUCT-CNTR", 500, SUPPLY_Y, 42700, SUPPLY_Y)
    for i in range(UNITS):
        x = UNIT_WIDTH * i + 1800
        model.lines("M-DUCT-SUPL", (x - 100, SUPPLY_Y - 250, x - 100, 3900), (x + 100, SUPPLY_Y - 250, x + 100, 3900))
    for x in (4000, 9400, 18000, 38000):
        model.insert("M-DIFF-SUPL", "DIFFUSER", x, 11100)
        model.lines("M-DUCT-SUPL", (x - 100, SUPPLY_Y + 250, x - 100, 10800), (x + 100, SUPPLY_Y + 250, x + 100, 10800))


def return_air(model):
    model.polyline("M-DUCT-RETN", [(1500, RETURN_Y - 200), (27700, RETURN_Y - 200), (27700, RETURN_Y + 200), (1500, RETURN_Y + 200)])
    for x in range(5400, 27000, 7200):
        model.rectangle("M-GRLL-RETN", x - 300, RETURN_Y - 100, x + 300, RETURN_Y + 100)
        model.lines("M-GRLL-RETN", (x - 300, RETURN_Y - 50, x + 300, RETURN_Y - 50), (x - 300, RETURN_Y + 50, x + 300, RETURN_Y + 50))


def chilled_water(model):
    for layer, y in (("M-PIPE-CHWS", 9120), ("M-PIPE-CHWR", 9400)):
        model.polyline(layer, [(600, y), (27300, y), (27300, y + 900, 0.4142135624), (27100, y + 1100), (26100, y + 1100)], closed=False, width=40)


def lights(model):
    model.insert("E-LITE-FIXT", "LIGHT-1500", 2700, 8280, columns=12, dx=3450)
    model.insert("E-LITE-FIXT", "LIGHT-1500", 2300, 14800, columns=4, rows=2, dx=2600, dy=1300)
    model.insert("E-LITE-FIXT", "LIGHT-1500", 18000, 15200)
    model.polyline("E-LITE-CIRC", [(2300, 14550), (4900, 14450, 0.2), (7500, 14450, 0.2), (10100, 14550)], closed=False)
    model.rectangle("E-POWR-PANL", 40000, 9760, 41000, 10100)
    model.hatch("E-POWR-PANL", [(40000, 9760), (41000, 9760), (40000, 10100)])


def cables(model):
    model.polyline("E-POWR-TRAY", [(400, 7450), (42800, 7450)], closed=False)
    model.spline("E-COMM-DATA", [(40500, 13000), (40400, 11500), (38700, 9000), (33000, 8100), (30000, 8050), (29000, 8000)])
    for x in (3100, 6000, 8500, 11100):
        model.insert("E-POWR-RCPT", "RECEPTACLE", x, DEPTH - 240, angle=180)


def sprinklers(model):
    model.line("F-SPRN-PIPE", 900, 8450, 42300, 8450)
    for x in range(1800, WIDTH, 3600):
        model.circle("F-SPRN-HEAD", x + 300, 8450, 45)
    for y in (11700, 15500):
        model.line("F-SPRN-PIPE", 900, y, 13500, y)
        for x in range(1500, 13500, 3000):
            model.circle("F-SPRN-HEAD", x, y, 45)


def detectors(model):
    for x in AXES_X[:-1]:
        model.insert("F-ALRM-DETC", "SMOKE-DETECTOR", x + 3000, 8000)
    for x, y in ((6500, 14100), (18000, 11700), (38600, 14300), (41400, 12500)):
        model.insert("F-ALRM-DETC", "SMOKE-DETECTOR", x, y)
    for x in (900, 21200, 42400):
        model.insert("F-EXTG", "EXTINGUISHER", x, 7560)


def escape_routes(model):
    """From both ends of the corridor to the stairs, with arrow heads; the signs are numbered."""
    model.polyline("F-ESCP-ROUT", [(1000, 8150), (20800, 8150, 0.4142135624), (21100, 8150 + 300), (21100, 9300), (23000, 10600)], closed=False, width=80)
    model.polyline("F-ESCP-ROUT", [(42200, 8150), (26500, 8150, -0.4142135624), (26200, 8450), (26105, 10500)], closed=False, width=80)
    model.solid("F-ESCP-ROUT", (22900, 10700), (23080, 10480), (23200, 10740))
    for i, x in enumerate((7300, 14500, 28900, 36100)):
        model.insert("F-ESCP-SIGN", "EXIT-SIGN", x, 9350, attributes=[("SIGN", "F-ESCP-SIGN", x - 340, 9290, 120, f"R{i + 1:02d}")])
    model.rectangle("F-COMP-WALL", 21400, 9500, 29000, DEPTH + 100)
