#!/usr/bin/env python3
"""Checks that docs/formats/reader reads every sample deck whole, and finds the same positions as brenmark, which shares
no line with it.

Usage: read_legacy.py ROOT brenmark [FOLDER of other decks]
"""
import glob
import hashlib
import os
import re
import struct
import subprocess
import sys
import urllib.parse

root, program = sys.argv[1:3]
sys.path.insert(0, os.path.join(root, "docs", "formats", "reader"))
import read_legacy  # noqa: E402

compared = 0
folder = sys.argv[3] if len(sys.argv) > 3 else os.path.join(root, "samples")
for path in sorted(glob.glob(os.path.join(folder, "*.dem"))):
    for number, data in enumerate(read_legacy.read_deck(path)[2]):
        dump = subprocess.run([program, "dump", path, "--timestep", str(number)], capture_output=True, text=True).stdout
        held = dict(re.findall(r"^timestep/\d+/particles/(\S+)/position f64\S+ (.+)$", dump, re.MULTILINE))
        for name, particles in data["types"]:
            rows = [position for _, position in particles]
            found = "sha256:" + hashlib.sha256(b"".join(struct.pack("<3d", *row) for row in rows)).hexdigest()
            text = held.pop(urllib.parse.quote(name, safe="()"), None)
            if text is not None and not text.startswith("sha256:"):
                found = [tuple(map(float, row.split(", "))) for row in re.findall(r"\(([^)]*)\)", text)]
                text = rows  # few rows are written out
            if rows and text != found:
                sys.exit(f"{path}: timestep {number}, {name}: other positions than those of brenmark dump")
            compared += len(rows)
        if any("(" in text or "sha" in text for text in held.values()):
            sys.exit(f"{path}: timestep {number}: brenmark dump has more types with particles: {', '.join(held)}")
print(f"{compared} positions compared")
