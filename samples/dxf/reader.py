"""Reads a text drawing back into records, for looking into what was written."""


class File:
    """A drawing's records, as lists of (code, text), by section."""

    def __init__(self, content):
        self.content = content
        lines = self._decoded(content).splitlines() if isinstance(content, bytes) else content
        if len(lines) % 2:
            raise ValueError("an odd number of lines")
        self.pairs = [(int(code), value) for code, value in zip(lines[::2], lines[1::2])]
        self.sections, self.variables = {}, {}
        self._split()
        self.blocks = self._blocks()

    @staticmethod
    def _decoded(content):
        encoding = "utf-8" if b"AC1021" <= content[content.index(b"AC10"):][:6] else "cp850" if b"dos850" in content else "cp1252"
        return content.decode(encoding).replace("\r\n", "\n")

    def _split(self):
        section, record, variable = None, None, None
        for code, value in self.pairs:
            if code == 0 and value == "SECTION":
                section = ""
            elif code == 2 and section == "":
                section, record = value, None
                self.sections[section] = []
            elif code == 0 and value in ("ENDSEC", "EOF"):
                section = None
            elif section == "HEADER":
                variable = self.variables.setdefault(value, []) if code == 9 else variable
                if code != 9:
                    variable.append((code, value))
            elif code == 0:
                record = [(code, value)]
                self.sections[section].append(record)
            elif record is not None:
                record.append((code, value))

    def _blocks(self):
        blocks, name = {}, None
        for record in self.sections["BLOCKS"]:
            if record[0][1] == "BLOCK":
                name = first(record, 2)
                blocks[name] = {"head": record, "entities": []}
            elif record[0][1] != "ENDBLK":
                blocks[name]["entities"].append(record)
        return blocks

    def records(self, kind):
        return [record for section in self.sections.values() for record in section if record[0][1] == kind]

    def table(self, kind):
        """The records of a symbol table by name."""
        return {first(record, 2): record for record in self.sections["TABLES"] if record[0][1] == kind}

    def space(self, name):
        """The entities of a space."""
        paper = name.lower().startswith("*paper")
        if name.lower() in ("*model_space", "*paper_space"):
            return [record for record in self.sections["ENTITIES"] if (first(record, 67) == "     1") == paper]
        return self.blocks[name]["entities"]


def first(record, code, default=None):
    return next((value for at, value in record if at == code), default)


def number(record, code, default=0.0):
    return float(first(record, code, default))


def numbers(record, code):
    return [float(value) for at, value in record if at == code]


def points(record, code):
    """The points of a record whose x stands in a code and whose y in the one ten above."""
    return list(zip(numbers(record, code), numbers(record, code + 10)))
