"""Looks for broken links in a drawing's file: what does not fit is told, one line a fault."""
from dxf.reader import first

LINKS = {330, 331, 335, 340, 343, 345, 346, 347, 348, 350, 360, 390}
ENTITY_SECTIONS = ("BLOCKS", "ENTITIES")
HANDLE_CODES = {"DIMSTYLE": 105}


def faults(file):
    """What is wrong with a file; nothing when all is well."""
    found = [*_name_faults(file), *_table_faults(file), *_extended_data_faults(file)]
    if "OBJECTS" in file.sections:
        found += [*_handle_faults(file), *_owner_faults(file), *_dictionary_faults(file), *_layout_faults(file), *_bracket_faults(file)]
    return found


def handle_of(record):
    return first(record, HANDLE_CODES.get(record[0][1], 5))


def owner_of(record):
    """The first 330 outside of brackets."""
    depth = 0
    for code, value in record:
        depth += (1 if value.startswith("{") else -1) if code == 102 else 0
        if code == 330 and depth == 0:
            return value
    return None


def _all_records(file):
    return [record for name in ("TABLES", "BLOCKS", "ENTITIES", "OBJECTS") for record in file.sections.get(name, []) if record[0][1] != "ENDTAB"]


def _handle_faults(file):
    known = {}
    for record in _all_records(file):
        handle = handle_of(record)
        if handle is None or handle in known:
            yield f"{record[0][1]} has no handle of its own: {handle}"
        known[handle] = record
    seed = int(file.variables["$HANDSEED"][0][1], 16)
    if seed <= max(int(handle, 16) for handle in known):
        yield f"$HANDSEED {seed:X} is in use"
    for record in _all_records(file):
        yield from (f"{record[0][1]} {handle_of(record)}: group {code} names {value}, which is nowhere" for code, value in record
                    if code in LINKS and value != "0" and value not in known)


def _owner_faults(file):
    blocks = {handle_of(record): first(record, 2) for record in file.records("BLOCK_RECORD")}
    heads = {handle_of(record) for record in file.records("POLYLINE") + file.records("INSERT")}
    for name in file.blocks:
        for record in [file.blocks[name]["head"], *file.blocks[name]["entities"]]:
            if blocks.get(owner_of(record)) != name and owner_of(record) not in heads:
                yield f"{record[0][1]} {handle_of(record)} in {name} has owner {owner_of(record)}"
    for record in file.sections["ENTITIES"]:
        paper = first(record, 67, "0").strip() == "1"
        if blocks.get(owner_of(record)) != ("*Paper_Space" if paper else "*Model_Space") and owner_of(record) not in heads:
            yield f"{record[0][1]} {handle_of(record)} in ENTITIES has owner {owner_of(record)}"


def _dictionary_faults(file):
    objects = {handle_of(record): record for record in file.sections["OBJECTS"]}
    for record in file.sections["OBJECTS"]:
        if record[0][1] not in ("DICTIONARY", "ACDBDICTIONARYWDFLT"):
            continue
        for (before, name), (code, value) in zip(record, record[1:]):
            if before == 3 and code in (350, 360) and owner_of(objects.get(value, [(0, "")])) != handle_of(record):
                yield f"entry {name} of dictionary {handle_of(record)} has another owner"


def _layout_faults(file):
    blocks = {handle_of(record): record for record in file.records("BLOCK_RECORD")}
    named = set()
    for layout in file.records("LAYOUT"):
        block = [value for code, value in layout if code == 330][-1]
        named.add(block)
        if block not in blocks or first(blocks[block], 340) != handle_of(layout):
            yield f"layout {first(layout, 1)} and its block record do not name each other"
    for handle, block in blocks.items():
        if (first(block, 340, "0") != "0") != (handle in named):
            yield f"block record {first(block, 2)} names a layout that does not name it"
        if first(block, 2) not in file.blocks:
            yield f"block record {first(block, 2)} has no block"


def _bracket_faults(file):
    for record in _all_records(file):
        marks = ["{" if value.startswith("{") else value for code, value in record if code == 102]
        if marks != ["{", "}"] * (len(marks) // 2):
            yield f"{record[0][1]} {handle_of(record)}: brackets do not pair"


def _table_faults(file):
    kind, stated, count = None, 0, 0
    for record in file.sections["TABLES"]:
        if record[0][1] == "TABLE":
            kind, stated, count = first(record, 2), int(first(record, 70)), 0
        elif record[0][1] != "ENDTAB":
            count += 1
        elif count != stated:
            yield f"table {kind} holds {count} records and says {stated}"


def _extended_data_faults(file):
    applications = set(file.table("APPID"))
    for record in _all_records(file):
        yield from (f"{record[0][1]} {handle_of(record)} has data of {value}, which is not registered" for code, value in record
                    if code == 1001 and value not in applications)


def _name_faults(file):
    layers, linetypes = ({name.upper() for name in file.table(kind)} for kind in ("LAYER", "LTYPE"))
    styles, dimension_styles = (set(file.table(kind)) for kind in ("STYLE", "DIMSTYLE"))
    known = {8: layers, 6: linetypes | {"BYLAYER", "BYBLOCK"}, 7: {name.upper() for name in styles}}
    records = [record for section in ENTITY_SECTIONS for record in file.sections[section]] + file.records("LAYER")
    for record in records:
        yield from (f"{record[0][1]} {handle_of(record)} names {value} in group {code}" for code, value in record
                    if code in known and value.upper() not in known[code])
        if record[0][1] in ("INSERT", "DIMENSION") and first(record, 2) not in file.blocks:
            yield f"{record[0][1]} {handle_of(record)} shows the block {first(record, 2)}, which is nowhere"
        if record[0][1] == "DIMENSION" and first(record, 3, "ISO-25") not in dimension_styles:
            yield f"DIMENSION {handle_of(record)} has the style {first(record, 3)}, which is nowhere"
    current = file.variables["$CLAYER"][0][1]
    if current.upper() not in layers:
        yield f"$CLAYER names {current}"
