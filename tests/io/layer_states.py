"""Reads a drawing with ezdxf and tells the records of its layer states, as ezdxf holds them: a line with the
state's name, the owner's and the record's handle, then its groups, a line each, as CODE=VALUE."""

import sys

from ezdxf import recover

sys.stdout.reconfigure(encoding="utf-8")


def main():
    document, _ = recover.readfile(sys.argv[1])
    states = document.layers.head.get_extension_dict().dictionary["ACAD_LAYERSTATES"]
    for name, record in states.items():
        groups = "\n".join(f"{tag.code}={tag.value}" for tag in record.tags)
        print(f"{name}|{record.dxf.owner}|{record.dxf.handle}\n{groups}")


main()
