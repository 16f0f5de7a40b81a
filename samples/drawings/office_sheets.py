"""The office floor's two sheets: the floor plan with a detail of the core, and the escape plan with the site."""
from dxf.values import signed

PLAN_SHEET, ESCAPE_SHEET = "A1 Floor plan", "A3 Escape plan"
# Frozen on the escape plan, where only what matters in an emergency is shown.
ESCAPE_FROZEN = ("A-ANNO-DIMS", "A-FLOR-PATT", "A-FURN", "A-FURN-DESK", "A-FURN-SEAT", "A-FURN-STOR", "A-FURN-PLNT", "A-ROOM-AREA", "E-COMM-DATA",
                 "E-LITE-FIXT", "E-POWR-RCPT", "E-POWR-TRAY", "M-DIFF-SUPL", "M-DUCT-RETN", "M-DUCT-SUPL", "Möblierung", "Διαστάσεις", "平面図-家具")
INDEX_COLOR, TRUE_COLOR = 0xC3000000, 0xC2000000  # the method in the top byte of a colour word
WEIGHT_050 = 13


def add_sheets(drawing):
    """The spaces first, so that they stand beside model space in the block table; what is drawn in them later."""
    return drawing.layout(PLAN_SHEET, (841, 594)), drawing.layout(ESCAPE_SHEET, (420, 297))


def draw_plan_sheet(sheet):
    title_block(sheet, 841, 594, "Office floor 2", "1:100 / 1:50", "A-201")
    sheet.viewport("A-ANNO-VPRT", 2, 305, 330, 560, 330, view=(20500, 7500), view_height=33000, locked=True)
    sheet.viewport("A-ANNO-VPRT", 3, 700, 400, 220, 180, view=(25200, 13000), view_height=9000)
    sheet.text("A-ANNO-TTLB", 30, 150, 5, "Floor plan 1:100")
    sheet.text("A-ANNO-TTLB", 590, 300, 5, "Core 1:50")


def draw_escape_sheet(drawing, sheet):
    title_block(sheet, 420, 297, "Escape plan floor 2 – Flucht- und Rettungsplan", "1:250 / 1:1000", "F-202")
    frozen = [drawing.layers[name] for name in ESCAPE_FROZEN]
    plan = sheet.viewport("A-ANNO-VPRT", 2, 145, 190, 250, 150, view=(24100, 7500), view_height=37500, frozen=frozen)
    sheet.viewport("A-ANNO-VPRT", 3, 345, 190, 120, 110, view=(25000, 2000), view_height=110000, twist=15)
    drawing.override("F-ESCP-ROUT", "COLOR", plan, (420, signed(TRUE_COLOR | 0x00B050)))
    drawing.override("F-ESCP-ROUT", "LINEWT", plan, (91, WEIGHT_050))
    drawing.override("A-WALL-INTR", "COLOR", plan, (420, signed(INDEX_COLOR | 252)))
    drawing.override("A-WALL-PATT", "ALPHA", plan, (440, 0x02000000 | 64))
    drawing.override("A-GLAZ", "LINETYPE", plan, (343, drawing.linetypes["HIDDEN"]))
    sheet.mtext("A-ANNO-TTLB", 20, 105, 5, 240, "In case of fire: {\\C1;stay calm}, alarm 112, leave by the stairs.")


def title_block(sheet, width, height, title, scale, number):
    sheet.rectangle("A-ANNO-TTLB", 10, 10, width - 10, height - 10)
    left = width - 190
    sheet.rectangle("A-ANNO-TTLB", left, 10, width - 10, 65)
    for y in (25, 40):
        sheet.line("A-ANNO-TTLB", left, y, width - 10, y)
    for y, size, text in ((48, 5, title), (30, 4, f"Scale {scale}"), (15, 5, f"Sheet {number}")):
        sheet.text("A-ANNO-TTLB", left + 4, y, size, text)
