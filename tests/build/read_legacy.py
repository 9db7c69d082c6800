#!/usr/bin/env python3
"""Checks that docs/formats/read_legacy.py reads every sample deck whole, and finds the same positions as brenmark, which
shares no line with it.

Usage: read_legacy.py ROOT brenmark
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
sys.path.insert(0, os.path.join(root, "docs", "formats"))
import read_legacy  # noqa: E402

compared = 0
for path in sorted(glob.glob(os.path.join(root, "samples", "*.dem"))):
    for number, data in enumerate(read_legacy.read_deck(path)[2]):
        dump = subprocess.run([program, "dump", path, "--timestep", str(number)], capture_output=True, text=True).stdout
        told = dict(re.findall(r"^timestep/\d+/particles/(\S+)/position f64\S+ sha256:(\w+)$", dump, re.MULTILINE))
        for name, particles in data["types"]:
            found = hashlib.sha256(b"".join(struct.pack("<3d", *position) for _, position in particles)).hexdigest()
            if told.get(urllib.parse.quote(name, safe="()"), found) != found:
                sys.exit(f"{path}: timestep {number}, {name}: other positions than those of brenmark dump")
            compared += name in told or urllib.parse.quote(name, safe="()") in told
if compared < 20:
    sys.exit(f"only {compared} particle types of timesteps compared")
