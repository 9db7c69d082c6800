#!/usr/bin/env python3
"""Works the attributes of sample decks out of their bytes, and holds those of brenmark values against them, row by row:
every one that --list shows, for every owner that has rows. The formulas are those of a textbook: no line is shared with
brenmark. Of the converted deck, too, of which no other arrays are read than those that the attribute is made of. Parts and lengths of a value are compared in the first deck that has it, with --all in each.

Usage: attribute_values.py ROOT brenmark [--all] [FOLDER of other decks]
"""
import collections
import csv
import glob
import math
import os
import re
import subprocess
import sys
import tempfile

root, program = sys.argv[1:3]
sys.path.insert(0, os.path.join(root, "docs", "formats", "reader"))
import deck_values  # noqa: E402

# What isn't compared, and why. Of all else without values the program must say that the deck holds none.
UNCOMPARED = {"Residence Time": "the legacy family stores no time of creation"}
DRAFT = "a property that isn't final has no values in a deck"

# ---------------------------------------------------------------- vectors


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def plus(a, b, factor=1.0):
    return tuple(x + factor * y for x, y in zip(a, b))


def times(a, factor):
    return tuple(x * factor for x in a)


def cross(a, b):
    return a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]


def turned_back(q, v):
    """v in the frame that q turns to, by the rotation matrix of q = (w, x, y, z)."""
    w, x, y, z = q
    columns = ((1 - 2 * (y * y + z * z), 2 * (x * y + w * z), 2 * (x * z - w * y)),
               (2 * (x * y - w * z), 1 - 2 * (x * x + z * z), 2 * (y * z + w * x)),
               (2 * (x * z + w * y), 2 * (y * z - w * x), 1 - 2 * (x * x + y * y)))
    return tuple(dot(column, v) for column in columns)


def quaternion_of(place):
    """Of the rotation in a 4 x 4 matrix: the axis from its antisymmetric part, for turns by less than a half."""
    w = math.sqrt(1 + place[0] + place[5] + place[10]) / 2
    return w, (place[9] - place[6]) / (4 * w), (place[2] - place[8]) / (4 * w), (place[4] - place[1]) / (4 * w)


# ---------------------------------------------------------------- the formulas

def held_properties(defined, lists, row):
    """Values by name; of what a deck doesn't hold, the initial ones."""
    return {name: lists[number][row] if number < len(lists) and row < len(lists[number]) else initial
            for number, (name, _, initial, is_final) in enumerate(defined) if is_final}


def of_particles(now, defined):
    counts = collections.Counter()
    for family, ends in zip(now["contacts"], ((0, 2), (0,))):
        for row in family:
            for end in ends:
                kind, element = row[0][end:end + 2]
                counts[kind, element // len(now["types"][kind]["spheres"])] += 1
    for kind, of in enumerate(now["types"]):
        mass, volume, *inertia = of["numbers"]
        reach = max(math.hypot(*sphere[2:]) + sphere[1] for sphere in of["spheres"])
        for slot, row in enumerate(of["rows"]):
            if not 0 < row[0][0] < 1 << 31:
                continue
            values = {"ID": row[0], "Coordination Number": [counts[kind, slot]],
                      **held_properties(defined, of["properties"], slot)}
            for bit, name in ((1, "Velocity"), (2, "Position"), (3, "Orientation"), (4, "Angular Velocity")):
                if bit in row:
                    values[name] = row[bit]
            if 5 in row:
                s, m, i = row[5][0], mass * row[5][0]**3, times(inertia, row[5][0]**5)
                values.update({"Mass": [m], "Volume": [volume * s**3], "Moment of Inertia": i,
                               "Diameter": [2 * s * reach]})
            if {1, 5} <= set(row):
                values["Kinetic Energy"] = [m * dot(row[1], row[1]) / 2]
            if {2, 5} <= set(row):
                values["Potential Energy"] = [-m * dot(row[2], now["gravity"])]
            if {3, 4, 5} <= set(row):
                turning = sum(a * w * w for a, w in zip(i, turned_back(row[3], row[4]))) / 2
                values["Rotational Kinetic Energy"] = [turning]
            if {1, 2, 3, 4, 5} <= set(row):
                values["Total Energy"] = [values["Kinetic Energy"][0] + turning + values["Potential Energy"][0]]
            if 6 in row:
                values.update({"Total Force": row[6][:3], "Torque": row[6][3:6]})
            if 6 in row and 7 in row:
                values["Compressive Force"] = row[6][6:]
            yield values


def of_contacts(now, defined):
    names = {"Tangential Overlap": 1, "Contact Vector 1": 2, "Contact Vector 2": 3, "Position": 4, "Normal Overlap": 5,
             "Normal Force": 6, "Tangential Force": 7}
    for row in (row for family in now["contacts"] for row in family):
        values = {name: row[bit] for name, bit in names.items() if bit in row}
        if 13 in row:
            values["Normal Force"] = row[13][:3]
        yield {**values, **held_properties(defined, [[value] for value in row.get("properties", ())], 0)}


def of_bonds(now, defined):
    """Parameters are kept by the names of types, and hold for their materials. A pair without them has no bond: it
    counts as broken, even one to be dropped, and has nothing to bear."""
    names = {"Normal Force": "normal force", "Tangential Force": "tangential force", "Normal Moment": "normal moment",
             "Tangential Moment": "tangential moment", "End Time": "end time"}
    materials = {of["name"]: of["material"] for of in now["types"]}
    pairs = {frozenset(materials[name] for name in re.split(" - | <> | [+] ", key)) for key in now["bonding"]}
    for number, family in enumerate(now["bonds"]):
        for row in family:
            is_bond = number == 1 or {now["types"][row["ends"][end]]["material"] for end in (0, 2)} in pairs
            if is_bond and row["state"][0] == 2:
                continue
            yield {name: row[column] if is_bond else [now["time"]] if name == "End Time" else (0, 0, 0)
                   for name, column in names.items()}


def of_collisions(now, defined):
    for row in now["collisions"] + now["active"]:
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


def of_triangles(now, defined):
    for group in now["groups"]:
        place = (1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0) if group["static"] else group["place"]
        points = [tuple(dot(place[i:i + 4], (*point, 1)) for i in (0, 4, 8)) for point in group["points"]]
        turning = (0, 0, 0)
        for rotation in group["rotations"]:
            turning = plus(turning, rotation[:3])
        for number, triangle in enumerate(group["triangles"]):
            a, b, c = (points[corner] for corner in triangle[1])
            centre, across = times(plus(plus(a, b), c), 1 / 3), cross(plus(b, a, -1), plus(c, a, -1))
            twice = math.hypot(*across)
            velocity = group["velocity"]
            for rotation in group["rotations"]:
                velocity = plus(velocity, cross(rotation[:3], plus(centre, rotation[3:], -1)))
            values = {"ID": triangle[0], "Position": centre, "Node 1": a, "Surface Normal": times(across, 1 / twice),
                      "Centre of Mass": group["centre"], "Orientation": quaternion_of(place),
                      "Angular Velocity": turning, "Velocity": velocity,
                      **held_properties(defined, group["properties"], number)}
            if group["forces"] and 2 in group["forces"][number]:
                force = group["forces"][number][2]
                values.update({"Total Force": force[:3], "Torque": force[3:6], "Compressive Force": force[6:],
                               "Pressure": [force[6] / (twice / 2)],
                               "Pressure Selection": times(force[:3], 1 / (twice / 2))})
            yield values


def of_simulation(now, defined):
    yield held_properties(defined, now["simulation"], 0)


def with_derived(row, properties):
    """The parts of a value, its length, and all of it again; elements of a custom property have numbers."""
    for name, value in row.items():
        yield name, value
        if len(value) == 1:
            continue
        is_custom, is_turn = name in properties, name == "Orientation"
        if not is_custom:
            yield name + " All", value
        if not is_turn:
            parts = range(1, len(value) + 1) if is_custom else "XYZ"
            yield from ((f"{name} {part}", [number]) for part, number in zip(parts, value))
        if not is_turn and name != "Surface Normal":
            yield name + " Magnitude", [math.sqrt(dot(value, value))]


OWNERS = {"particle": of_particles, "contact": of_contacts, "bond": of_bonds, "collision": of_collisions,
          "geometry": of_triangles, "simulation": of_simulation}

# ---------------------------------------------------------------- all decks


def run(*arguments):
    return subprocess.run([program, "values", *arguments], capture_output=True, text=True)


def listed(path, owner):
    lines = run(path, "--list", "--owner", owner).stdout.splitlines()[1:]
    return [line[2:line.rindex(" [")] if line.endswith("]") else line[2:] for line in lines]


def shown(path, owner, attribute):
    """The rows of each timestep; none where the program says that the deck holds none."""
    result = run(path, "--owner", owner, "--attribute", attribute, "--timestep", "all")
    if result.returncode != 0 and "holds no values" not in result.stderr:
        sys.exit(f"{path}: {owner} {attribute}: {result.stderr}")
    rows = collections.defaultdict(list)
    for row in csv.reader(result.stdout.splitlines()[1:]):
        rows[int(row[0])].append([float(cell) for cell in row[4:]])
    return rows


def agree(found, expected):
    least = 1e-14 * max((abs(x) for row in expected for x in row), default=0)
    return [len(row) for row in found] == [len(row) for row in expected] and all(
        math.isclose(x, y, rel_tol=1e-13, abs_tol=least) for a, b in zip(found, expected) for x, y in zip(a, b))


def converted(path, folder):
    target = os.path.join(folder, os.path.basename(path))
    subprocess.run([program, "convert", path, target], capture_output=True)  # damage that is known has a status, too
    return target


def compare(path, owner, attribute, expected):
    """How many numbers were compared."""
    found = shown(path, owner, attribute)
    for number, rows in enumerate(expected):
        here = found[number]
        if owner in ("contact", "bond"):  # a conversion closes the gaps of released rows by others
            here, rows = sorted(here), sorted(map(list, rows))
        if not agree(here, rows):
            sys.exit(f"{path}: timestep {number}: {owner} {attribute}: other values than those of its bytes")
    return sum(map(len, (row for rows in expected for row in rows)))


def main(work):
    folders = [argument for argument in sys.argv[3:] if argument != "--all"] or [os.path.join(root, "samples")]
    compared, met, without = 0, set(), {}
    for path in sorted(glob.glob(os.path.join(folders[0], "*.dem"))):
        states = deck_values.timesteps_of(path)
        if not states:
            print(f"{path}: not compared: too old for this")
            continue
        defined, current = deck_values.definitions(path), converted(path, work)
        for owner, formulas in OWNERS.items():
            names = {name for name, *_ in defined.get(owner, ())}
            rows = [[dict(with_derived(row, names)) for row in formulas(now, defined.get(owner, ()))] for now in states]
            primary = {name for of in formulas(states[-1], defined.get(owner, ())) for name in of}
            for attribute in listed(path, owner) if any(rows) else ():
                if "--all" not in sys.argv and (owner, attribute) in met and attribute not in primary:
                    continue
                expected = [[row[attribute] for row in of if attribute in row] for of in rows]
                count = compare(path, owner, attribute, expected)
                if attribute in primary:
                    compare(current, owner, attribute, expected)
                compared += count
                if count > 0:
                    met.add((owner, attribute))
                else:
                    without.setdefault((owner, attribute), os.path.basename(path))
    for (owner, attribute), deck in sorted(without.items()):
        is_part = any(owner == other and attribute.startswith(whole + " ") for other, whole in without)
        if (owner, attribute) not in met and not is_part:
            print(f"{owner} {attribute} of {deck}: not compared: {UNCOMPARED.get(attribute, DRAFT)}")
    print(f"{compared} values of {len(met)} attributes compared")


with tempfile.TemporaryDirectory() as of_this:
    main(of_this)
