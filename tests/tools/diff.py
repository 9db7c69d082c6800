#!/usr/bin/env python3
"""Holds decks against each other that differ in known bytes: what diff shows, what tolerances pass over, exit statuses.

The changes are made in the raw bytes and by h5py, which share nothing with the program. What a change comes to is
calculated beside it.

Usage: diff.py brenmark SAMPLES
"""
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile

try:
    import h5py
    import numpy
except ImportError:
    if sys.executable == "/usr/bin/python3" or not os.path.exists("/usr/bin/python3"):
        sys.exit(77)
    os.execv("/usr/bin/python3", ["/usr/bin/python3", *sys.argv])  # the one that Debian's h5py belongs to

TOOL, SAMPLES = sys.argv[1], pathlib.Path(sys.argv[2])
BY = 1e-7  # of gravity, -9.81 m/s2, which is 9.81e-7 m/s2
NAN, INF = float("nan"), float("inf")
OTHER_NAN = struct.unpack("<d", struct.pack("<Q", 0x7FF8000000000001))[0]

# arguments after the two decks, exit status, part of what is shown
VALUE_CASES = [
    ([], 1, "creator/gravity: another value\n< (0, 0, -9.8100000000000005)\n> (0, 0, -9.81000098"),
    (["--brief"], 1, "differ\n"),
    (["--tolerance", "9.8e-7"], 1, "gravity"),
    (["--tolerance", "9.82e-7"], 0, ""),
    (["--tolerance", "0.0000099%"], 1, "gravity"),
    (["--tolerance", "0.0000101%"], 0, ""),
    (["--tolerance", "gravity=9.82e-7"], 0, ""),
    (["--tolerance", "gravity=9.8e-7", "--tolerance", "1"], 1, "gravity"),
    (["--tolerance", "some"], 2, ""),
    (["--tolerance", "=1"], 2, ""),
    (["--tolerance", "inf"], 2, ""),
]
POSITION, VELOCITY = "ParticleTypes/0/position", "ParticleTypes/0/velocity"
# array, {(row, column): value in the one deck, value in the other}, tolerances, exit status, part of what is shown
ARRAY_CASES = [
    (POSITION, {(5, 0): (1.0, 1.25)}, "", 1, "position: 1 of {values} values differs, by 0.25; in row 5\n< (1, "),
    (POSITION, {(5, 0): (1.0, 1.25)}, "0.25", 0, ""),
    (POSITION, {(5, 0): (1.0, 1.25)}, "0.2499", 1, "in row 5"),
    (POSITION, {(5, 0): (1.0, 1.25)}, "20%", 0, ""),  # 0.25 of the greater, 1.25
    (POSITION, {(5, 0): (1.0, 1.25)}, "19.9%", 1, "in row 5"),
    (POSITION, {(5, 0): (-1.0, 1.0)}, "199%", 1, "by 2;"),
    (POSITION, {(5, 0): (0.0, 1e-300)}, "99%", 1, "in row 5"),  # nothing is close to 0 by a share
    (POSITION, {(2, 0): (1.0, 1.25), (7, 1): (1.0, 3.0), (7, 2): (1.0, 4.0)}, "1", 1,
     "2 of {values} values differ, in 1 row, by 3 at most; the first in row 7"),
    (POSITION, {(5, 0): (1.0, 1.25)}, "position=0.25", 0, ""),
    (POSITION, {(5, 0): (1.0, 1.25)}, "velocity=9", 1, "in row 5"),
    (POSITION, {(5, 0): (1.0, 1.25)}, "osition=9", 1, "in row 5"),
    (POSITION, {(5, 0): (1.0, 1.25)}, "particles=9", 0, ""),
    (POSITION, {(5, 0): (1.0, 1.25)}, "particles=0.1 position=0.25", 0, ""),
    (POSITION, {(5, 0): (1.0, 1.25)}, "particles=0.25 position=0.1", 1, "in row 5"),
    (POSITION, {(5, 0): (1.0, 1.25)}, "9 position=0.1", 1, "in row 5"),
    (POSITION, {(5, 0): (1.0, 1.25)}, "0.1 position=20%", 0, ""),
    (VELOCITY, {(3, 1): (0.0, -0.0)}, "", 1, "velocity: 1 of"),  # other bits
    (VELOCITY, {(3, 1): (0.0, -0.0)}, "1e-300", 0, ""),
    (VELOCITY, {(3, 1): (1.0, NAN)}, "1e300", 1, "velocity: 1 of {values} values differs; in row 3"),
    (VELOCITY, {(3, 1): (NAN, OTHER_NAN)}, "", 1, "velocity: 1 of"),
    (VELOCITY, {(3, 1): (NAN, OTHER_NAN)}, "1e-300", 0, ""),
    (VELOCITY, {(3, 1): (1.0, INF)}, "1e300", 1, "in row 3"),
    (VELOCITY, {(3, 1): (1.0, INF)}, "100%", 1, "in row 3"),
    (VELOCITY, {(3, 1): (-INF, INF)}, "100%", 1, "in row 3"),
    (VELOCITY, {(3, 1): (INF, INF), (4, 1): (1.0, 1.25)}, "0.25", 0, ""),
    ("ParticleTypes/0/ids", {5: (None, 4000)}, "1e9", 1, "ids"),  # a whole number
]
failures = []


def expect(arguments, status, text):
    ended = subprocess.run([TOOL, "diff", *map(str, arguments)], capture_output=True, text=True, timeout=120)
    if ended.returncode != status or text not in ended.stdout or (status == 0 and ended.stdout):
        failures.append(f"{arguments}: {ended.returncode}: {ended.stdout}{ended.stderr}")


def copied(deck, to):
    """A deck of the current family under another name."""
    for file in deck.parent.glob(deck.stem + ".*"):
        shutil.copy(file, to.with_suffix(file.suffix))
    shutil.copytree(deck.parent / (deck.stem + "_data"), to.parent / (to.stem + "_data"), dirs_exist_ok=True)
    return to


def timestep(file):
    return next(iter(file["TimestepData"].values()))


def values(folder):
    source, converted, changed = SAMPLES / "pile-27.dem", folder / "new.dem", folder / "changed.dem"
    for file in SAMPLES.glob("pile-27.*"):
        shutil.copy(file, changed.with_suffix(file.suffix))
    content, gravity = changed.read_bytes(), struct.pack(">d", -9.81)
    assert content.count(gravity) == 1
    changed.write_bytes(content.replace(gravity, struct.pack(">d", -9.81 * (1 + BY))))
    subprocess.run([TOOL, "convert", "-q", source, converted], check=True, capture_output=True)
    for more, status, text in VALUE_CASES:
        expect([source, changed, *more], status, text)
        if status != 2:  # another family on either side changes nothing
            expect([converted, changed, *more], status, text)
    expect([source, converted], 0, "")
    expect([converted, source], 0, "")
    expect([source, SAMPLES / "physics-25.dem", "--limit", 2], 1, "and more, beyond the limit")
    expect([source, folder / "none.dem"], 2, "")


def arrays(folder):
    deck = folder / "properties.dem"
    subprocess.run([TOOL, "convert", "-q", SAMPLES / "properties-24.dem", deck], check=True, capture_output=True)
    for name, change, tolerances, status, text in ARRAY_CASES:
        sides = copied(deck, folder / "a.dem"), copied(deck, folder / "b.dem")
        for side, copy in enumerate(sides):
            with h5py.File(folder / (copy.stem + "_data") / "1.h5", "r+") as file:
                data = timestep(file)[name]
                array = data[()]
                for place, pair in change.items():
                    if pair[side] is not None:
                        array[place] = pair[side]
                data[()] = array
        options = [word for one in tolerances.split() for word in ("--tolerance", one)]
        expect([*sides, *options], status, text.format(values=array.size))


def shapes(folder):
    """Another number of rows is a difference whatever the values are, and so is another whole number."""
    deck = folder / "bonds.dem"
    subprocess.run([TOOL, "convert", "-q", SAMPLES / "bonds-24.dem", deck], check=True, capture_output=True)
    shorter = copied(deck, folder / "shorter.dem")
    with h5py.File(folder / "shorter_data" / "1.h5", "r+") as file:
        pairs = timestep(file)["Bonds/SurfaceSurface"]
        rows = int(pairs.attrs["size"]) - 1
        kind = h5py.h5a.open(pairs.id, b"size").dtype
        pairs.attrs.create("size", rows, dtype=kind)
        for name in list(pairs):
            data, stored = pairs[name][:rows], pairs[name].id.get_type()
            del pairs[name]
            pairs.create_dataset(name, data=data, dtype=stored.dtype)
    for more in [], ["--tolerance", "1e300"]:
        expect([deck, shorter, *more], 1, f"timestep/1/bonds/surfaceSurface: rows: {rows + 1} in ")


with tempfile.TemporaryDirectory() as scratch:
    for part in values, arrays, shapes:
        part(pathlib.Path(scratch))
print(*failures, sep="\n")
sys.exit(1 if failures else 0)
