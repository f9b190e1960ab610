#!/usr/bin/env python3
"""Holds every include of the product to the table of rooms in ARCHITECTURE.md: check_includes.py [SOURCE-TREE]

A source may include the headers of its own room, and of the rooms and single headers that its room's row names; and of the
libraries that the table names, those in its room's row. Prints each include that breaks the table, as FILE:LINE with the
rule, and ends with exit code 1 when there is one.
"""
import pathlib
import re
import sys

INCLUDE = re.compile(r'\s*#\s*include\s+(?:"([^"]+)"|<([^>]+)>)')


def read_table(text):
    """The rows as {room: (rooms and headers, libraries)}; a library goes by the first part of its headers' names."""
    lines = text.splitlines()
    start = next(i for i, line in enumerate(lines) if line.startswith("| Room | May include | Libraries |"))
    table = {}
    for line in lines[start + 2:]:
        if not line.startswith("|"):
            break
        room, rooms, libraries = ([*map(str.strip, re.findall(r"`([^`]+)`", cell))] for cell in line.split("|")[1:4])
        table[room[0]] = (rooms, libraries)
    return table


def room_of(path, table):
    return max((room for room in table if path.startswith(room + "/")), key=len, default=None)


def broken_rule(path, header, library, table, root):
    """Why the source may not include this, or None."""
    room = room_of(path, table)
    rooms, libraries = table[room]
    if library is not None:
        name = library.split("/")[0].split(".")[0]
        known = {one for row in table.values() for one in row[1]}
        if name in known and name not in libraries:
            return f"`{room}` doesn't use the library `{name}`"
        return None
    if not (root / header).is_file():
        return f'"{header}" is no header: includes are written from the top of the source tree'
    target = room_of(header, table)
    if target == room or header in rooms or (target is not None and any(f"{target}/".startswith(f"{one}/") for one in rooms)):
        return None
    allowed = ", ".join(f"`{one}`" for one in rooms) or "no other room"
    return f"`{room}` may include {allowed}, but not `{target or header}`"


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
    table = read_table((root / "ARCHITECTURE.md").read_text())
    count = failures = 0
    for room in table:
        if not any((root / room).rglob("*.cpp")) and not any((root / room).rglob("*.h")):
            print(f"ARCHITECTURE.md: there is no room `{room}`")
            failures += 1
    for source in sorted(root.rglob("*")):
        path = source.relative_to(root).as_posix()
        if source.suffix not in (".h", ".cpp", ".in") or room_of(path, table) is None:
            continue
        for number, line in enumerate(source.read_text().splitlines(), 1):
            include = INCLUDE.match(line)
            if include is None:
                continue
            count += 1
            rule = broken_rule(path, *include.groups(), table, root)
            if rule is not None:
                print(f"{path}:{number}: {line.strip()}: {rule}")
                failures += 1
    print(f"{count} includes, {failures} against the table of rooms in ARCHITECTURE.md")
    return 1 if failures or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
