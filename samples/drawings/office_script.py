"""The command script that shows LAYFRZ on the office floor: its picks come from the drawing's own measures."""
from drawings.office_sheets import ESCAPE_SHEET

SCRIPT = """\
; LAYFRZ on the office floor: what a pick freezes, with each way to treat nested blocks, in model space and in a layout.
; Run it on office-floor.dxf, with no display:  korvex samples/office-floor.dxf --headless --script samples/layfrz.scr
;
; Entity: the layer of the picked object itself, however deep it lies.
LAYFRZ
Settings
Block
Entity
; the outer wall: {outer wall.own}
{outer wall}
; the swing of an office door, a leaf in a door in an office unit: {door swing.own}
{door swing}
; the curb in the external reference: {curb.own}
{curb}
; Undo takes the last freezes back, one at a time.
Undo
Undo
; Block: the layer of the innermost reference, here that of the door leaf: {door swing.innermost}
Settings
Block
Block
{door swing}
Undo
; No: the layer of the outermost reference, here that of the office unit: {door swing.outermost}
Settings
Block
No
{door swing}
; ... with it the unit's contents are gone: the same pick finds nothing now, and LAYFRZ asks again.
{door swing}
Undo
; In an external reference both Entity and Block mean the object's layer: {tree.own}
Settings
Block
Block
{tree}
; a note on the current layer, {note.own}, is refused
{note}
eXit
; The command as a whole is one step for U.
U
; Two layers once more, to stay: {supply duct.own} and {furniture.own}
LAYFRZ
{supply duct}
{furniture}
eXit
-LAYER
?
{supply duct.own},{furniture.own},{outer wall.own},{door swing.own}

; In a floating viewport of a layout the layer can be frozen there alone.
LAYOUT
Set
{sheet}
MSPACE
LAYFRZ
Settings
Viewports
Vpfreeze
; {partition.own}, in this viewport only
{partition}
; the current layer needs an answer here
{note}
No
; Freeze: in the whole drawing, also from here: {escape route.own}
Settings
Viewports
Freeze
{escape route}
Undo
; back to what a new profile has
Settings
Viewports
Vpfreeze
eXit
MODEL
-LAYER
?
{partition.own},{escape route.own}

"""


def script(picks):
    text = SCRIPT.replace("{sheet}", ESCAPE_SHEET)
    for name, pick in picks.items():
        words = {"": pick, ".own": pick.layer, ".innermost": pick.innermost, ".outermost": pick.outermost}
        for word, value in words.items():
            text = text.replace(f"{{{name}{word}}}", str(value))
    return text
