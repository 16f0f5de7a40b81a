"""Group codes and their values as drawing files hold them, in text and in binary form."""
import codecs
import functools
import struct

CODE_PAGES = {"ANSI_1252": "cp1252", "dos850": "cp850"}
BINARY_SENTINEL = b"KORVEX. Binary DXF\r\n\x1a\0"


def point(code, x, y, z=0.0):
    return [(code, x), (code + 10, y), (code + 20, z)]


def signed(word):
    """A 32-bit word as the signed number that group codes hold."""
    return word - (1 << 32) if word & 0x80000000 else word


# Which values are numbers: first and last code, letter of the binary form, width in text.
NUMBER_CODES = ((10, 59, "d", 0), (60, 79, "h", 6), (90, 99, "i", 9), (110, 149, "d", 0), (160, 169, "q", 0), (170, 179, "h", 6),
                (210, 239, "d", 0), (270, 289, "h", 6), (290, 299, "B", 6), (370, 389, "h", 6), (400, 409, "h", 6), (420, 429, "i", 9),
                (440, 459, "i", 9), (460, 469, "d", 0), (1010, 1059, "d", 0), (1060, 1070, "h", 6), (1071, 1071, "i", 9))


@functools.lru_cache(maxsize=None)
def number_form(code):
    """The letter of the binary form and the width in text; none for texts and handles."""
    return next((row[2:] for row in NUMBER_CODES if row[0] <= code <= row[1]), (None, 0))


def real_text(value):
    text = repr(round(float(value), 10) + 0.0)
    return f"{float(text):.15E}" if "e" in text else text


def group_text(code, value):
    letter, width = number_form(code)
    if letter == "d":
        return real_text(value)
    if letter:
        return f"{int(value):{width}d}"
    return getattr(value, "handle_text", None) or str(value)


def binary_value(code, value, encoding):
    """A value as binary drawings hold it: its size follows from the group code."""
    letter, _ = number_form(code)
    if letter == "d":
        return struct.pack("<d", float(real_text(value)))
    if letter:
        return struct.pack("<" + letter, int(value))
    return group_text(code, value).encode(encoding, "drawing") + b"\0"


def escape_characters(error):
    text = error.object[error.start:error.end]
    return "".join(f"\\U+{ord(character):04X}" for character in text), error.end


codecs.register_error("drawing", escape_characters)
