#!/usr/bin/env python3
"""Checks that what belongs to one source is static: an unnamed namespace is for types, and for what is beside them.
clang-tidy sees the rest: that nothing in such a namespace is static as well.

Usage: linkage.py ROOT"""

import pathlib
import re
import sys

UNNAMED = re.compile(r"^namespace \{\n(.*?)^\} // namespace$", re.M | re.S)
TYPE = re.compile(r"^\s*(?:class|struct|enum|union|using)\b", re.M)

root = pathlib.Path(sys.argv[1])
sources = [source for folder in ("src", "tools") for source in (root / folder).rglob("*.cpp")]
found = [(source, match) for source in sources for match in UNNAMED.finditer(source.read_text(encoding="utf-8"))]
assert len(found) > 30
faults = [source.relative_to(root) for source, match in found if not TYPE.search(match.group(1))]
for source in sorted(faults):
    print(f"{source}: an unnamed namespace without a type: make what is in it static")
sys.exit(1 if faults else 0)
