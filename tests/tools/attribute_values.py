#!/usr/bin/env python3
"""Works the attributes of sample decks out of their bytes, and holds those of brenmark values against them, row by row.
The bytes are cut up by docs/formats/reader, and the formulas are those of a textbook: no line is shared with brenmark.

Usage: attribute_values.py ROOT brenmark [FOLDER of other decks]
"""
import copy
import csv
import glob
import os
import subprocess
import sys

try:
    import numpy as np
except ImportError:
    sys.exit(77)

root, program = sys.argv[1:3]
sys.path.insert(0, os.path.join(root, "docs", "formats", "reader"))
import model  # noqa: E402
import read_legacy  # noqa: E402
import stream  # noqa: E402
import timestep  # noqa: E402

groups, types, pairs, gravity = [], [], [], []
last_columns = []
FORMS = {4: "<u4", 8: "<f8", 16: "<u4", 24: "<f8", 32: "<f8", 56: "<f8", 72: "<f8"}


def row_bytes(columns, mask):
    last_columns[:] = [(columns, mask)]
    return sum(size for bit, size in columns if mask >> bit & 1)


def arrays_of(columns, mask, rows, data):
    """The columns of a family by their bits, each rows x width."""
    found, at = {}, 0
    for bit, size in columns:
        if mask >> bit & 1:
            numbers = np.frombuffer(data, FORMS.get(size, "u1"), rows * size // int(FORMS.get(size, "u1")[-1]), at)
            found[bit], at = numbers.reshape(rows, -1), at + rows * size
    return found


def group(self, deflated, total, read=stream.Stream.group):
    data = read(self, deflated, total)
    if last_columns and total and total % row_bytes(*last_columns[0]) == 0:
        columns, mask = last_columns.pop()
        groups.append((columns, arrays_of(columns, mask, total // sum(n for b, n in columns if mask >> b & 1), data)))
    return data


def particle_type(s, read=model.particle_type):
    t, before = copy.copy(s), len(groups)
    t.expect(3141)
    t.text(), t.text()
    numbers, spheres = t.f64(5), t.i32()
    if t.since(20, 0, 4):
        t.i32()
    spheres = [(t.text(), t.f64(5))[1] for _ in range(spheres)]
    result = read(s)
    types.append((numbers, spheres, groups[before][1] if len(groups) > before else {}))
    return result


def contacts(s, read=timestep.contacts):
    before = len(groups)
    result = read(s)
    found = [arrays for columns, arrays in groups[before:] if columns is timestep.CONTACT_COLUMNS]
    pairs.append(found[0] if found else {})
    return result


def creator_model(s, read=read_legacy.creator_model):
    t = copy.copy(s)
    stream.version_record(t)
    gravity[:] = t.f64(3)
    return read(s)


def turned_back(q, v):
    """v in the frame that q turns to, by the rotation matrix of q = (w, x, y, z)."""
    w, x, y, z = q.T
    m = np.array([[1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y)],
                  [2 * (x * y + w * z), 1 - 2 * (x * x + z * z), 2 * (y * z - w * x)],
                  [2 * (x * z - w * y), 2 * (y * z + w * x), 1 - 2 * (x * x + y * y)]])
    return np.einsum("jin,nj->ni", m, v)


def particles():
    """Attribute -> rows, of all types in order."""
    found = {}
    for number, ((mass, volume, *inertia), spheres, a) in enumerate(types):
        if not {0, 1, 2, 3, 4, 5} <= set(a):
            return {}
        s, live = a[5][:, 0], a[0][:, 0].astype("i4") > 0
        m, i = mass * s**3, np.outer(s**5, inertia)
        kinetic = m * (a[1]**2).sum(1) / 2
        turning = (i * turned_back(a[3], a[4])**2).sum(1) / 2
        potential = -m * (a[2] @ np.array(gravity))
        reach = max(np.linalg.norm(sphere[2:]) + sphere[1] for sphere in spheres)
        touching = np.zeros(len(s))
        for p, (first, second) in zip(pairs, ((0, 2), (0, None))):
            for end in (first, second):
                if p and end is not None:
                    rows = p[0][(p[5][:, 0] >= 0) & (p[0][:, end] == number)][:, end + 1] // len(spheres)
                    np.add.at(touching, rows, 1)
        rows = {"ID": a[0], "Position": a[2], "Velocity": a[1], "Velocity Magnitude": np.linalg.norm(a[1], axis=1),
                "Velocity Y": a[1][:, 1], "Angular Velocity": a[4], "Orientation": a[3], "Mass": m,
                "Volume": volume * s**3, "Moment of Inertia": i, "Diameter": 2 * s * reach,
                "Kinetic Energy": kinetic, "Rotational Kinetic Energy": turning, "Potential Energy": potential,
                "Total Energy": kinetic + turning + potential, "Coordination Number": touching}
        if 6 in a:
            rows.update({"Total Force": a[6][:, :3], "Torque": a[6][:, 3:6]})
        if 6 in a and 7 in a:
            rows["Compressive Force"] = a[6][:, 6]
        for name, values in rows.items():
            found.setdefault(name, []).append(np.reshape(values, (len(s), -1))[live])
    return {name: np.vstack(values) for name, values in found.items()}


def contact_rows():
    names = {"Tangential Overlap": 1, "Contact Vector 1": 2, "Contact Vector 2": 3, "Position": 4, "Normal Overlap": 5,
             "Normal Force": 6, "Tangential Force": 7}
    live = [{bit: values[p[5][:, 0] >= 0] for bit, values in p.items()} for p in pairs if p]
    return {name: np.vstack([p[bit] for p in live]) for name, bit in names.items() if live}


def collision_rows():
    found = {}
    for a in (arrays for columns, arrays in groups if columns is timestep.COLLISION_COLUMNS):
        a = {bit: values[a[0][:, 0] > 0] for bit, values in a.items()}
        along = (a[6] * a[5]).sum(1, keepdims=True) * a[5]
        for name, values in {"Position": a[7], "ID": a[0], "ID Element 1": a[13], "ID Element 2": a[19],
                             "Average Normal Force": a[11] / a[8], "Average Tangential Force": a[12] / a[8],
                             "Maximum Normal Force": a[3], "Maximum Tangential Force": a[4], "Relative Velocity": a[6],
                             "Velocity Element A": a[14], "Velocity Element B": a[20], "Relative Velocity Normal": along,
                             "Relative Velocity Tangential": a[6] - along, "Start Time": a[1], "End Time": a[2],
                             "Duration": a[2] - a[1], "Normal Energy Loss": a[9], "Tangential Energy Loss": a[10],
                             "Total Energy Loss": a[9] + a[10]}.items():
            found.setdefault(name, []).append(values)
    return {name: np.vstack(values) for name, values in found.items()}


def geometry_rows():
    forces = [a[2] for columns, a in groups if columns is model.TRIANGLE_COLUMNS and 2 in a]
    rows = np.vstack(forces) if forces else np.zeros((0, 7))
    return {"Total Force": rows[:, :3], "Torque": rows[:, 3:6], "Compressive Force": rows[:, 6:]}


def shown(path, owner, number, attribute):
    run = subprocess.run([program, "values", path, "--owner", owner, "--attribute", attribute, "--timestep", str(number)],
                         capture_output=True, text=True)
    return np.array([row[4:] for row in csv.reader(run.stdout.splitlines()[1:])], dtype="f8")


def whole_timestep(s, geometry, read=read_legacy.timestep):
    for held in (groups, types, pairs):
        held.clear()
    result = read(s, geometry)
    owners = {"particle": particles(), "contact": contact_rows(), "collision": collision_rows(),
              "geometry": geometry_rows()}
    states.append({owner: {name: np.array(values, dtype="f8") for name, values in rows.items() if len(values)}
                   for owner, rows in owners.items()})
    return result


model.row_bytes = timestep.row_bytes = row_bytes
stream.Stream.group, model.particle_type, timestep.contacts = group, particle_type, contacts
read_legacy.creator_model, read_legacy.timestep = creator_model, whole_timestep
folder = sys.argv[3] if len(sys.argv) > 3 else os.path.join(root, "samples")
compared, met = 0, set()
for path in sorted(glob.glob(os.path.join(folder, "*-2[4-7].dem"))):
    states = []
    read_legacy.read_deck(path)
    for owner, attributes in states[-1].items():
        for attribute, expected in attributes.items():
            found = shown(path, owner, len(states) - 1, attribute)
            if owner == "contact":  # a conversion closes the gaps of released rows by others
                expected, found = (rows[np.lexsort(rows.T)] for rows in (expected, found))
            scale = np.abs(expected).max(initial=0)
            if found.shape != expected.shape or not np.allclose(found, expected, rtol=1e-13, atol=1e-14 * scale):
                sys.exit(f"{path}: {owner} {attribute}: other values than those of its bytes")
            compared, met = compared + expected.size, met | {(owner, attribute)}
print(f"{compared} values of {len(met)} attributes compared")
