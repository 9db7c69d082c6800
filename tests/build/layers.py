#!/usr/bin/env python3
"""Checks that every #include of src stays within what cmake/layers.txt allows, and that this is no more than is needed.

Usage: layers.py ROOT
Prints a line for each include that isn't allowed, each arrow that no include uses and each ring, and ends with 1 if
there are any.
"""
import fnmatch
import os
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def read_layers(path):
    """The rooms with what each may include, and the patterns of libraries with the rooms that may."""
    rooms, libraries = {}, {}
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            line = line.split("#")[0].strip()
            if not line:
                continue
            name, _, allowed = line.partition(":")
            name = name.strip()
            names = [part.strip() for part in allowed.split(",") if part.strip()]
            if name.startswith("<"):
                libraries[name.strip("<>")] = names
            else:
                rooms[name] = names
    return rooms, libraries


def room_of(path, rooms):
    """The room of a path below src: the longest that fits, or None."""
    fitting = [room for room in rooms if path.startswith(room + "/")]
    return max(fitting, key=len, default=None)


def violations_of_file(source, path, rooms, libraries):
    """Yields the complaint for each include of one file that its room doesn't allow."""
    room = room_of(path, rooms)
    if room is None:
        yield f"src/{path}:1: lies in a folder that cmake/layers.txt doesn't list"
        return
    allowed = ", ".join(rooms[room]) or "nothing but itself"
    with open(os.path.join(source, path), encoding="utf-8") as lines:
        for number, line in enumerate(lines, start=1):
            match = INCLUDE.match(line)
            if not match:
                continue
            kind, included = match.groups()
            place = f"src/{path}:{number}: includes {included}"
            if kind == "<":
                for pattern, users in libraries.items():
                    if fnmatch.fnmatchcase(included, pattern) and room not in users:
                        yield f"{place}; only {', '.join(users)} may"
                continue
            if os.path.exists(os.path.join(source, included)):
                target = room_of(included, rooms)
                if target is None:
                    yield f"{place}, whose folder cmake/layers.txt doesn't list"
                elif target != room and target not in rooms[room]:
                    yield f"{place}; {room} may include {allowed}"
            elif not os.path.exists(os.path.join(source, os.path.dirname(path), included)):
                yield f"{place}, which isn't below src"


def violations(root):
    """All complaints about a project, in the order of its files."""
    rooms, libraries = read_layers(os.path.join(root, "cmake", "layers.txt"))
    source = os.path.join(root, "src")
    for folder, folders, files in os.walk(source):
        folders.sort()
        for name in sorted(files):
            if name.endswith((".h", ".cpp", ".def")):
                path = os.path.relpath(os.path.join(folder, name), source).replace(os.sep, "/")
                yield from violations_of_file(source, path, rooms, libraries)


def unused_arrows(root):
    """Yields the complaint for each arrow that no include needs."""
    rooms, _ = read_layers(os.path.join(root, "cmake", "layers.txt"))
    source = os.path.join(root, "src")
    used = set()
    for folder, _, files in os.walk(source):
        for name in files:
            path = os.path.relpath(os.path.join(folder, name), source).replace(os.sep, "/")
            with open(os.path.join(folder, name), encoding="utf-8") as lines:
                included = [match.group(2) for match in map(INCLUDE.match, lines) if match]
            used.update((room_of(path, rooms), room_of(target, rooms)) for target in included)
    for room, allowed in rooms.items():
        yield from (f"cmake/layers.txt: {room} never includes {name}" for name in allowed if (room, name) not in used)


def rings(root):
    """Yields the complaint for each room that may include itself by way of others."""
    rooms, _ = read_layers(os.path.join(root, "cmake", "layers.txt"))
    for room in rooms:
        reached, waiting = set(), list(rooms[room])
        while waiting:
            name = waiting.pop()
            if name not in reached:
                reached.add(name)
                waiting += rooms.get(name, [])
        if room in reached:
            yield f"cmake/layers.txt: {room} comes round to itself"


def main():
    root = sys.argv[1]
    complaints = [*violations(root), *unused_arrows(root), *rings(root)]
    for complaint in complaints:
        print(complaint)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
