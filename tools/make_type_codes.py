#!/usr/bin/env python3
"""Makes the table of node types by their codes in binary scene files (standard library only).

  make_type_codes.py           host/file/binary/tables/type_codes.txt -> host/file/binary/tables/typeCodes.inc
  make_type_codes.py --check   the same, but only compares: exit status 1 when the file would change
  make_type_codes.py --list    prints which of the host's node types have no code, and which codes it has no type for

The text table is the source and may be edited by hand; its first lines tell its form.
"""
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
SOURCE = ROOT / "host" / "file" / "binary" / "tables" / "type_codes.txt"
OUTPUT = SOURCE.parent / "typeCodes.inc"
NODE_TYPES = ROOT / "host" / "types" / "tables" / "node_types.txt"
LONGEST_LITERAL = 65535  # bytes that every compiler takes


def read_codes():
    """(code, name), sorted by code; leaves the program where a line is not as it should be."""
    codes = []
    for number, line in enumerate(SOURCE.read_text(encoding="ascii").splitlines(), 1):
        if not line or line.startswith("#"):
            continue
        words = line.split()
        if len(words) != 3 or len(words[0]) != 8 or words[2] not in "PDNLG":
            sys.exit(f"{SOURCE.name}:{number}: expected 'CODE NAME P|D|N|L|G' with a code of eight digits")
        codes.append((int(words[0], 16), words[1]))
    for (code, name), (following, other) in zip(codes, codes[1:]):
        if code >= following:
            sys.exit(f"{SOURCE.name}: {other} does not stand behind {name}, or has the same code")
    return codes


def make_cpp(codes):
    """Plain integers and one store of characters, so that nothing is to be done when a program starts."""
    store, offsets = "", {}
    for _, name in codes:
        if name not in offsets:
            offsets[name] = len(store)
            store += name
    assert len(store) < LONGEST_LITERAL
    records = ["{0x%08x,%d,%d}," % (code, offsets[name], len(name)) for code, name in codes]
    parts = [
        "// Made by tools/make_type_codes.py from type_codes.txt: edit that.",
        "// clang-format off",
        "constexpr char kNames[] =",
        *[f'"{store[i:i + 110]}"' for i in range(0, len(store), 110)], ";",
        "// code, name, its length; by code",
        f"constexpr TypeCode kTypeCodes[{len(codes)}] = {{",
        *["".join(records[i:i + 6]) for i in range(0, len(records), 6)], "};",
        "// clang-format on", "",
    ]
    return "\n".join(parts)


def list_differences(codes):
    lines = [line.split() for line in NODE_TYPES.read_text(encoding="ascii").splitlines() if not line.startswith("#")]
    types = {words[1] for words in lines if words[0] == "type"}
    coded = {name for _, name in codes}
    letters = {name for code, name in codes if all(0x20 < byte < 0x7f for byte in code.to_bytes(4, "big"))}
    print("types without a code: " + " ".join(sorted(types - coded)))
    print("codes of four letters without a type: " + " ".join(sorted(letters - {words[1] for words in lines})))


def main(arguments):
    if arguments not in ([], ["--check"], ["--list"]):
        print(__doc__, file=sys.stderr)
        return 2
    codes = read_codes()
    text = make_cpp(codes)
    if arguments == ["--list"]:
        list_differences(codes)
    elif arguments:
        is_same = OUTPUT.exists() and OUTPUT.read_text(encoding="ascii") == text
        print("unchanged" if is_same else f"{OUTPUT} does not agree with its source table")
        return 0 if is_same else 1
    else:
        OUTPUT.write_text(text, encoding="ascii", newline="\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
