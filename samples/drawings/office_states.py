"""The layer states of the office floor: what its offices save before they hand the drawing on."""
import copy

from drawings.office_sheets import ESCAPE_FROZEN
from dxf.layer_states import ALL, HIDDEN

SERVICES = ("P-", "E-", "F-", "M-")
BUILDING = ("A-WALL", "A-DOOR", "A-GLAZ", "A-FLOR-STRS", "S-")
WALL_GREY, EXIT_GREEN = 252, 0x00B050


def add_states(states):
    _add_sheets(states)
    _add_coordination(states)
    _add_demolition(states)
    states.save("Before revision B", states.layers(), "kept by the revision list", ALL | HIDDEN, current="A-ANNO-REVC")


def _add_sheets(states):
    """As the main viewports of both sheets show the floor."""
    plan = states.layers()
    for name, entry in plan.items():
        if name.startswith("M-DUCT") or name.startswith("F-SPRN") or name == "A-FLOR-OVHD":
            entry.change("here")
    states.save("Floor plan 1-100", plan, "A1 sheet, without ducts and sprinklers", space=1, current="A-ANNO-NOTE")
    escape = states.layers()
    for name in ESCAPE_FROZEN:
        escape[name].change("here")
    escape["F-ESCP-ROUT"].change(true=EXIT_GREEN, weight=50)
    escape["A-WALL-INTR"].change(color=WALL_GREY)
    escape["A-WALL-PATT"].change(alpha=64)
    escape["A-GLAZ"].change(linetype="HIDDEN")
    states.save("Escape plan", escape, "A3 sheet; Flucht- und Rettungsplan", space=1, current="F-ESCP-ROUT")


def _add_coordination(states):
    """As another office's program wrote it: the building grey and locked, the services in their colours."""
    entries = states.layers()
    for name, entry in entries.items():
        if name.startswith(BUILDING):
            entry.change("locked -off -frozen", color=WALL_GREY, true=None, book=None)
        elif not name.startswith(SERVICES) and name != "0":
            entry.change("off")
    states.save("Services coordination", entries, "", current="M-DUCT-SUPL", by_handle=True)


def _add_demolition(states):
    """Made before the layer of the old core was purged."""
    entries = states.layers()
    old = copy.copy(entries["A-DEMO"]).change("-off plots", name="A-DEMO-CORE", color=1)
    entries["A-DEMO"].change("-off plots")
    for name, entry in entries.items():
        if name.startswith(SERVICES) or name.startswith("A-FURN"):
            entry.change("frozen")
    states.save("Demolition", {**entries, old.name: old}, "demolition permit, 平面図 1:200", current="A-DEMO")
