#!/usr/bin/env python3
"""Holds decks against each other that differ in known bytes: what diff shows, what tolerances pass over, exit statuses.

Usage: diff.py brenmark SAMPLES
"""
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile

TOOL, SAMPLES = sys.argv[1], pathlib.Path(sys.argv[2])
BY = 1e-7  # of gravity, -9.81 m/s2, which is 9.81e-7 m/s2

# arguments after the two decks, exit status, part of what is shown
CASES = [
    ([], 1, "creator/gravity: another value\n< (0, 0, -9.8100000000000005)\n> (0, 0, -9.81000098"),
    (["--brief"], 1, "differ\n"),
    (["--tolerance", "9.8e-7"], 1, "gravity"),
    (["--tolerance", "9.82e-7"], 0, ""),
    (["--tolerance", "0.0000099%"], 1, "gravity"),
    (["--tolerance", "0.0000101%"], 0, ""),
    (["--tolerance", "some"], 2, ""),
]
failures = []


def expect(arguments, status, text):
    ended = subprocess.run([TOOL, "diff", *map(str, arguments)], capture_output=True, text=True, timeout=120)
    if ended.returncode != status or text not in ended.stdout or (status == 0 and ended.stdout):
        failures.append(f"{arguments}: {ended.returncode}: {ended.stdout}{ended.stderr}")


with tempfile.TemporaryDirectory() as folder:
    changed = pathlib.Path(folder) / "changed.dem"
    for file in SAMPLES.glob("pile-27.*"):
        shutil.copy(file, changed.with_suffix(file.suffix))
    content, gravity = changed.read_bytes(), struct.pack(">d", -9.81)
    assert content.count(gravity) == 1
    changed.write_bytes(content.replace(gravity, struct.pack(">d", -9.81 * (1 + BY))))
    source, converted = SAMPLES / "pile-27.dem", pathlib.Path(folder) / "new.dem"
    subprocess.run([TOOL, "convert", "-q", source, converted], check=True, capture_output=True)
    for more, status, text in CASES:
        expect([source, changed, *more], status, text)
        if status != 2:  # another family on either side changes nothing
            expect([converted, changed, *more], status, text)
    expect([source, converted], 0, "")
    expect([converted, source], 0, "")
    expect([source, SAMPLES / "physics-25.dem", "--limit", 2], 1, "and more, beyond the limit")
    expect([source, pathlib.Path(folder) / "none.dem"], 2, "")
print(*failures, sep="\n")
sys.exit(1 if failures else 0)
