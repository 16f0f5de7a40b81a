#!/usr/bin/python3
"""Writes group_codes.bin: a group of every code in binary form, as another program (ezdxf) writes it.

The groups lie in records that are named after their type. Each value is made from its code, so that a reader
can tell whether it took the right bytes. The line that a binary drawing begins with is not in it.
"""

import io
import pathlib

from ezdxf.lldxf import types
from ezdxf.lldxf.tagwriter import BinaryTagWriter

# What ezdxf has no table for is text.
TEXTS = [*range(0, 10), *range(100, 110), *range(300, 310), *range(410, 420), *range(430, 440),
         *range(470, 480), *range(1000, 1010)]
NUMBERS = types.BYTES | types.INT16 | types.INT32 | types.INT64 | types.DOUBLE
OTHERS = NUMBERS | types.BINARY_DATA | types.HEX_HANDLE_CODES

RECORDS = [
    ("TEXT", [code for code in TEXTS if code not in OTHERS and code != 0], lambda code: f"text {code}"),
    ("HANDLE", types.HEX_HANDLE_CODES, lambda code: f"{code:X}"),
    ("REAL", types.DOUBLE, lambda code: code + 0.25),
    ("INT16", types.INT16, lambda code: -code),
    ("INT32", types.INT32, lambda code: -100_000 * code),
    ("INT64", types.INT64, lambda code: -10**12 * code),
    ("BOOLEAN", types.BYTES, lambda code: code % 2),
    ("BINARY", types.BINARY_DATA, lambda code: code.to_bytes(3, "big")),
]

stream = io.BytesIO()
writer = BinaryTagWriter(stream, dxfversion="AC1027")
for code, value in [(0, "SECTION"), (2, "ENTITIES")]:
    writer.write_tag2(code, value)
for name, codes, value in RECORDS:
    writer.write_tag2(0, name)
    for code in sorted(codes):
        writer.write_tag2(code, value(code))
for value in ["ENDSEC", "EOF"]:
    writer.write_tag2(0, value)
pathlib.Path(__file__).with_name("group_codes.bin").write_bytes(stream.getvalue())
