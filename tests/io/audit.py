"""Reads pairs of drawings, NAME.before.dxf and NAME.after.dxf of a folder, with ezdxf, and tells what its
audit finds in the second of a pair that it did not find in the first. Nothing is said when all is well."""

import collections
import pathlib
import sys

from ezdxf import recover


def findings(path):
    _, auditor = recover.readfile(path)
    return collections.Counter(error.code.name if hasattr(error.code, "name") else str(error.code)
                               for error in auditor.errors + auditor.fixes)


def main():
    pairs = sorted(pathlib.Path(sys.argv[1]).glob("*.before.dxf"))
    for before in pairs:
        after = before.with_name(before.name.replace(".before.", ".after."))
        try:
            known = findings(before)
        except Exception:  # some of what is opened can be read by nobody else; what is saved must be
            known = None
        try:
            found = findings(after)
        except Exception as error:
            found, known = collections.Counter({f"{type(error).__name__}: {error}": 1}), known or {}
        worse = collections.Counter() if known is None else found - collections.Counter(known)
        for what, count in worse.items():
            print(f"{before.name}: {what} ({count})")
    print(len(pairs), "pairs", file=sys.stderr)


main()
