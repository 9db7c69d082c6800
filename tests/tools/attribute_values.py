#!/usr/bin/env python3
"""Works the attributes of sample decks out of their bytes, and holds those of brenmark values against them, row by row.
The bytes are cut up by docs/formats/reader, and the formulas are those of a textbook: no line is shared with brenmark.

Usage: attribute_values.py ROOT brenmark [FOLDER of other decks]
"""
import copy
import csv
import glob
import math
import os
import struct
import subprocess
import sys

root, program = sys.argv[1:3]
sys.path.insert(0, os.path.join(root, "docs", "formats", "reader"))
import model  # noqa: E402
import read_legacy  # noqa: E402
import stream  # noqa: E402
import timestep  # noqa: E402

# ---------------------------------------------------------------- what the reader passes over

families, types, pairs, gravity = [], [], [], []  # of the timestep that is read
last_columns = []
FORMS = {4: "<I", 8: "<d", 16: "<4I", 24: "<3d", 32: "<4d", 48: "<6d", 56: "<7d", 72: "<9d"}


def row_bytes(columns, mask):
    last_columns[:] = [(columns, mask)]
    return sum(size for bit, size in columns if mask >> bit & 1)


def rows_of(columns, mask, count, data):
    """Each row as a dictionary: the numbers of its columns by their bits."""
    bits, arrays, at = [], [], 0
    for bit, size in columns:
        if mask >> bit & 1:
            bits.append(bit)
            arrays.append(struct.iter_unpack(FORMS.get(size, f"<{size}s"), data[at:at + count * size]))
            at += count * size
    return [dict(zip(bits, row)) for row in zip(*arrays)]


def group(self, deflated, total, read=stream.Stream.group):
    data = read(self, deflated, total)
    if last_columns and total:
        columns, mask = last_columns.pop()
        width = sum(size for bit, size in columns if mask >> bit & 1)
        if total % width == 0:
            families.append((columns, rows_of(columns, mask, total // width, data)))
    return data


def particle_type(s, read=model.particle_type):
    t, before = copy.copy(s), len(families)
    t.expect(3141)
    t.text(), t.text()
    numbers, spheres = t.f64(5), t.i32()
    if t.since(20, 0, 4):
        t.i32()
    spheres = [(t.text(), t.f64(5))[1] for _ in range(spheres)]
    result = read(s)
    types.append((numbers, spheres, families[before][1] if len(families) > before else []))
    return result


def contacts(s, read=timestep.contacts):
    before = len(families)
    result = read(s)
    found = [rows for columns, rows in families[before:] if columns is timestep.CONTACT_COLUMNS]
    pairs.append([row for row in (found[0] if found else []) if row[5][0] >= 0])
    return result


def creator_model(s, read=read_legacy.creator_model):
    t = copy.copy(s)
    stream.version_record(t)
    gravity[:] = t.f64(3)
    return read(s)


# ---------------------------------------------------------------- the formulas

def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def plus(a, b, factor=1.0):
    return tuple(x + factor * y for x, y in zip(a, b))


def times(a, factor):
    return tuple(x * factor for x in a)


def turned_back(q, v):
    """v in the frame that q turns to, by the rotation matrix of q = (w, x, y, z)."""
    w, x, y, z = q
    columns = ((1 - 2 * (y * y + z * z), 2 * (x * y + w * z), 2 * (x * z - w * y)),
               (2 * (x * y - w * z), 1 - 2 * (x * x + z * z), 2 * (y * z + w * x)),
               (2 * (x * z + w * y), 2 * (y * z - w * x), 1 - 2 * (x * x + y * y)))
    return tuple(dot(column, v) for column in columns)


def touching():
    """How many contacts each particle has, by its type and slot."""
    counts = {}
    for family, ends in zip(pairs, ((0, 2), (0,))):
        for row in family:
            for end in ends:
                kind, element = row[0][end:end + 2]
                key = kind, element // len(types[kind][1])
                counts[key] = counts.get(key, 0) + 1
    return counts


def of_particles():
    counts = touching()
    for kind, ((mass, volume, *inertia), spheres, rows) in enumerate(types):
        reach = max(math.hypot(*sphere[2:]) + sphere[1] for sphere in spheres)
        for slot, row in enumerate(rows):
            if not {0, 1, 2, 3, 4, 5} <= set(row) or not 0 < row[0][0] < 1 << 31:
                continue
            s, m, i = row[5][0], mass * row[5][0]**3, times(inertia, row[5][0]**5)
            kinetic, potential = m * dot(row[1], row[1]) / 2, -m * dot(row[2], gravity)
            turning = sum(a * w * w for a, w in zip(i, turned_back(row[3], row[4]))) / 2
            values = {"ID": row[0], "Position": row[2], "Velocity": row[1], "Angular Velocity": row[4],
                      "Velocity Magnitude": [math.sqrt(dot(row[1], row[1]))], "Velocity Y": row[1][1:2],
                      "Orientation": row[3], "Mass": [m], "Volume": [volume * s**3], "Moment of Inertia": i,
                      "Diameter": [2 * s * reach], "Kinetic Energy": [kinetic], "Potential Energy": [potential],
                      "Rotational Kinetic Energy": [turning], "Total Energy": [kinetic + turning + potential],
                      "Coordination Number": [counts.get((kind, slot), 0)]}
            if 6 in row:
                values.update({"Total Force": row[6][:3], "Torque": row[6][3:6]})
            if 6 in row and 7 in row:
                values["Compressive Force"] = row[6][6:]
            yield values


def of_contacts():
    names = {"Tangential Overlap": 1, "Contact Vector 1": 2, "Contact Vector 2": 3, "Position": 4, "Normal Overlap": 5,
             "Normal Force": 6, "Tangential Force": 7}
    for row in pairs[0] + pairs[1] if len(pairs) > 1 else []:
        yield {name: row[bit] for name, bit in names.items()}


def of_collisions():
    for row in (row for columns, rows in families if columns is timestep.COLLISION_COLUMNS for row in rows):
        if row[0][0] == 0:
            continue
        along = times(row[5], dot(row[6], row[5]))
        yield {"Position": row[7], "ID": row[0], "ID Element 1": row[13], "ID Element 2": row[19],
               "Average Normal Force": times(row[11], 1 / row[8][0]), "Maximum Normal Force": row[3],
               "Average Tangential Force": times(row[12], 1 / row[8][0]), "Maximum Tangential Force": row[4],
               "Velocity Element A": row[14], "Velocity Element B": row[20], "Relative Velocity": row[6],
               "Relative Velocity Normal": along, "Relative Velocity Tangential": plus(row[6], along, -1),
               "Start Time": row[1], "End Time": row[2], "Duration": plus(row[2], row[1], -1),
               "Normal Energy Loss": row[9], "Tangential Energy Loss": row[10],
               "Total Energy Loss": plus(row[9], row[10])}


def of_triangles():
    for row in (row for columns, rows in families if columns is model.TRIANGLE_COLUMNS for row in rows if 2 in row):
        yield {"Total Force": row[2][:3], "Torque": row[2][3:6], "Compressive Force": row[2][6:]}


# ---------------------------------------------------------------- all decks

def whole_timestep(s, geometry, read=read_legacy.timestep):
    for held in (families, types, pairs):
        held.clear()
    result = read(s, geometry)
    states.append({"particle": list(of_particles()), "contact": list(of_contacts()),
                   "collision": list(of_collisions()), "geometry": list(of_triangles())})
    return result


def shown(path, owner, number, attribute):
    command = [program, "values", path, "--owner", owner, "--attribute", attribute, "--timestep", str(number)]
    run = subprocess.run(command, capture_output=True, text=True)
    return [[float(cell) for cell in row[4:]] for row in csv.reader(run.stdout.splitlines()[1:])]


def agree(found, expected):
    least = 1e-14 * max((abs(x) for row in expected for x in row), default=0)
    return [len(row) for row in found] == [len(row) for row in expected] and all(
        math.isclose(x, y, rel_tol=1e-13, abs_tol=least) for a, b in zip(found, expected) for x, y in zip(a, b))


model.row_bytes = timestep.row_bytes = row_bytes
stream.Stream.group, model.particle_type, timestep.contacts = group, particle_type, contacts
read_legacy.creator_model, read_legacy.timestep = creator_model, whole_timestep
folder = sys.argv[3] if len(sys.argv) > 3 else os.path.join(root, "samples")
compared, met = 0, set()
for path in sorted(glob.glob(os.path.join(folder, "*-2[4-7].dem"))):
    states = []
    read_legacy.read_deck(path)
    for owner, rows in states[-1].items():
        for attribute in rows[0] if rows else ():
            found, expected = shown(path, owner, len(states) - 1, attribute), [row[attribute] for row in rows]
            if owner == "contact":  # a conversion closes the gaps of released rows by others
                found, expected = sorted(found), sorted(map(list, expected))
            if not agree(found, expected):
                sys.exit(f"{path}: {owner} {attribute}: other values than those of its bytes")
            compared, met = compared + sum(map(len, expected)), met | {(owner, attribute)}
print(f"{compared} values of {len(met)} attributes compared")
