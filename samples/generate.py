#!/usr/bin/env python3
"""Makes the sample drawings and the script beside this file, always the same bytes.

    python3 samples/generate.py                          writes them all
    python3 samples/generate.py --check                  says which kept file is not what would be written
    python3 samples/generate.py --picks                  lists the pick points and what is there
    python3 samples/generate.py --layers N --out FILE    writes a drawing with N layers, for measuring
"""
import argparse
import pathlib
import sys

from drawings import office_floor, office_script, site_plan, small
from drawings.picks import pick_faults
from dxf.check import faults
from dxf.reader import File
from dxf.scene import Scene

HERE = pathlib.Path(__file__).resolve().parent
SCRIPT = "layfrz.scr"
BINARY = "small/binary.dxf"  # the nesting drawing again
NESTING = "small/nesting.dxf"
DRAWINGS = {  # what builds each, and the external references that its extents and picks go through
    "site-plan.dxf": (site_plan.build, {}),
    "office-floor.dxf": (office_floor.build, {office_floor.SITE: "site-plan.dxf"}),
    "small/xplan.dxf": (small.xplan, {}),
    NESTING: (small.nesting, {small.PLAN: "small/xplan.dxf"}),
    "small/r12.dxf": (small.r12, {}),
    "small/r2000-cp1252.dxf": (small.r2000, {}),
    "small/r2018.dxf": (small.r2018, {}),
}
PICKS = {"office-floor.dxf": (office_floor.picks, 20), NESTING: (small.nesting_picks, 1)}  # and how far all else keeps away
UNKNOWN_EXTENTS = (0, 0), (1, 1)


def drawn(build, references):
    """The drawing's file, with its true extents, and its scene. It is built twice: the extents come from what it shows."""
    extents = Scene(File(build(UNKNOWN_EXTENTS).content()), references).extents()
    extents = tuple(tuple(round(value, 4) for value in corner) for corner in extents)
    content = build(extents).content()
    return content, extents, Scene(File(content), references)


def make_all():
    """The bytes of every file by its name, and what is wrong with them."""
    contents, found, scenes = {}, [], {}
    for name, (build, named) in DRAWINGS.items():
        references = {block: scenes[other].file for block, other in named.items()}
        contents[name], extents, scenes[name] = drawn(build, references)
        found += [f"{name}: {fault}" for fault in faults(scenes[name].file)]
        if name in PICKS:
            picks, clearance = PICKS[name]
            found += [f"{name}: {fault}" for fault in pick_faults(scenes[name], picks(), clearance)]
        if name == NESTING:
            contents[BINARY] = build(extents).content(binary=True)
    contents[SCRIPT] = office_script.script(office_floor.picks()).encode("utf-8")
    return contents, found


def write_all(contents):
    for name, content in contents.items():
        path = HERE / name
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(content)
        print(f"{len(content):8d}  {name}")


def differing(contents):
    return [name for name, content in contents.items() if not (HERE / name).is_file() or (HERE / name).read_bytes() != content]


def list_picks():
    for name, (picks, _) in PICKS.items():
        print(f"{name}: place, then the layers of the object, of its innermost and of its outermost reference")
        for title, pick in picks().items():
            print(f"  {title:42s} {str(pick):20s} {' / '.join(pick.layers)}")


def arguments():
    parser = argparse.ArgumentParser(description="Makes the sample drawings.")
    parser.add_argument("--check", action="store_true", help="compare with the kept files, exit 1 on a difference")
    parser.add_argument("--picks", action="store_true", help="list the pick points")
    parser.add_argument("--layers", type=int, metavar="N", help="write one drawing with N layers instead")
    parser.add_argument("--out", metavar="FILE", help="where to, with --layers")
    given = parser.parse_args()
    if (given.layers is None) != (given.out is None) or (given.layers is not None and given.layers < 1):
        parser.error("--layers (1 or more) and --out go together")
    return given


def main():
    given = arguments()
    if given.picks:
        list_picks()
        return 0
    if given.layers:
        pathlib.Path(given.out).write_bytes(small.many_layers(given.layers).content())
        return 0
    contents, found = make_all()
    if given.check:
        found += [f"{name} is not what the generator makes" for name in differing(contents)]
    for fault in found:
        print(fault, file=sys.stderr)
    if not given.check and not found:
        write_all(contents)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
