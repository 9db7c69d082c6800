#!/usr/bin/env python3
"""Checks docs/formats/ and src/core/version_history.h against the sources: every version at which a reader takes another
way is in both, and every class that the legacy family stores is on the page. What HDF5 files hold is held by a test of its own, which looks into decks."""

import pathlib
import re
import sys

root = pathlib.Path(sys.argv[1])
faults = []


def page(name):
    return (root / "docs/formats" / name).read_text(encoding="utf-8")


GATE = re.compile(r"\b(?:from|andFrom|below|upTo|since|makeVersion)\((\d+), *(\d+), *(\d+)\)")

NAMED = re.findall(r"constexpr quint32 (\w+) = makeVersion\((\d+), *(\d+), *(\d+)\)",
                   (root / "src/core/version_history.h").read_text(encoding="utf-8"))


def versions(source):
    """The versions that a source names, by their numbers or by what they brought."""
    text = source.read_text(encoding="utf-8")
    named = [word[1:] for word in NAMED if "NFileVersion" in text and re.search(rf"\b{word[0]}\b", text)]
    return named + [m.group(1, 2, 3) for m in GATE.finditer(text)]


for folder, name in (("src/io/dem", "legacy.md"), ("src/io/hdf5", "hdf5.md")):
    text = page(name)
    sources = sorted((root / folder).rglob("*.cpp")) + sorted((root / folder).rglob("*.h"))
    gates = {(version, source) for source in sources for version in versions(source)}
    assert len(gates) > 5, folder
    for gate, source in sorted(gates):
        version = ".".join(gate)
        if version != "0.0.0" and not re.search(r"(?<![\d.])" + re.escape(version) + r"(?![\d]|\.\d)", text):
            faults.append(f"{source.relative_to(root)}: a gate at {version}, which is not in docs/formats/{name}")

ROWS = re.compile(r"\{makeVersion\((\d+), *(\d+), *(\d+)\),\s*\"")
history = {tuple(map(int, row)) for row in ROWS.findall((root / "src/core/version_history.h").read_text(encoding="utf-8"))}
assert len(history) > 50
for source in sorted((root / "src").rglob("*.cpp")) + sorted((root / "src").rglob("*.h")):
    for match in GATE.finditer(source.read_text(encoding="utf-8")):
        major, minor, build = map(int, match.groups())
        after = (major, minor, build + 1)  # what ends with a version is a change of the next one
        if (major, minor, build) not in history | {(0, 0, 0)} and not ("upTo" in match.group() and after in history):
            faults.append(f"{source.relative_to(root)}: {match.group()} has no row in src/core/version_history.h")

# STORED has columns for HDF5 and for legacy, reading and writing, and one for XML; LEGACY one, for reading.
ROW = re.compile(r"^(?:STORED|STAMPED|LEGACY) *\((.*)\)", re.M)
rows = [[cell.strip() for cell in row.split(",")]
        for row in ROW.findall((root / "src/visitors/stored_classes.def").read_text(encoding="utf-8"))]
assert len(rows) > 100
for row in rows:
    if row[4 if len(row) > 3 else -1] != "nothing" and not re.search(rf"\b{row[1]}\b", page("legacy.md")):
        faults.append(f"stored_classes.def: {row[1]} is not in docs/formats/legacy.md")

print("\n".join(faults))
sys.exit(1 if faults else 0)
