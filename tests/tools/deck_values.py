"""What docs/formats/reader passes over when it reads a deck: the numbers of geometry, particles, pairs and custom
properties, by timestep. The reader cuts the bytes up; this listens to it, and shares no line with brenmark."""
import copy
import os
import struct

import model
import read_legacy
import stream
import timestep

FORMS = {4: "<I", 8: "<d", 12: "<3I", 16: "<4I", 24: "<3d", 32: "<4d", 48: "<6d", 56: "<7d", 72: "<9d"}
BOND_COLUMNS = [("ends", 16), ("normal force", 24), ("tangential force", 24), ("normal moment", 24),
                ("tangential moment", 24), ("state", 4), ("end time", 8)]
OWNER_BLOCKS = {3: "contact", 4: "particle", 5: "geometry", 6: "simulation"}

log = []  # what the reader took, in order: (operation, value)
deck = {}  # of the model that was read last: gravity, groups, bonding
now = {}  # of the timestep that is read


def rows_of(columns, count, data):
    """Each row as a dictionary: the numbers of its columns by their names."""
    arrays, at = [], 0
    for _, size in columns:
        arrays.append(struct.iter_unpack(FORMS.get(size, f"<{size}s"), data[at:at + count * size]))
        at += count * size
    return [dict(zip((name for name, _ in columns), row)) for row in zip(*arrays)]


def logged(name, read):
    def reading(*arguments):
        value = read(*arguments)
        log.append((name, value))
        return value
    return reading


def heard(read):
    """read, with what it took of each operation."""
    def hearing(s, *arguments):
        start = len(log)
        result = read(s, *arguments)
        taken = {}
        for name, value in log[start:]:
            taken.setdefault(name, []).append(value)
        return result, taken
    return hearing


def row_bytes(columns, mask):
    held = [(bit, size) for bit, size in columns if mask >> bit & 1]
    log.append(("columns", held))
    return sum(size for _, size in held)


def custom_properties(s):
    """The lists of values, each with its rows."""
    lists, items, found = s.i32(), s.i32(), []
    for _ in range(lists if items else 0):
        rows, width, deflated = s.i32(), s.i32(), s.flag8()
        found.append(list(struct.iter_unpack(f"<{width}d", s.group(deflated, rows * width * 8))))
    log.append(("properties", found))


def particle_type(s, read=heard(model.particle_type)):
    t = copy.copy(s)
    t.expect(3141)
    found = {"name": t.text(), "material": t.text(), "numbers": t.f64(5), "spheres": [], "rows": []}
    spheres = t.i32()
    if t.since(20, 0, 4):
        t.i32()
    found["spheres"] = [(t.text(), t.f64(5))[1] for _ in range(spheres)]
    result, taken = read(s)
    columns = taken.get("columns", [[]])[0]
    if columns:
        data = taken["group"][0]
        found["rows"] = rows_of(columns, len(data) // sum(size for _, size in columns), data)
    found["properties"] = taken.get("properties", [[]])[-1]
    now.setdefault("types", []).append(found)
    return result


def bonding(s, read=heard(model.bonding)):
    result, taken = read(s)
    deck["bonding"] = taken.get("text", [])
    return result


def geometry_group(s, read=heard(model.geometry_group)):
    """From version 20.0.16 on."""
    start = len(log)
    result, taken = read(s)
    mesh = next(i for i in range(start, len(log)) if log[i][0] == "group")
    ints = [value for name, value in log[start:mesh] if name == "i32"]
    numbers = [value for name, value in log[mesh:] if name == "f64"]
    vertices, triangles = ints[-3:-1]
    columns, data = next(value for name, value in log[start:mesh] if name == "columns"), taken["group"][0]
    corners = len(data) - triangles * sum(size for _, size in columns)
    place = next(value for value in numbers if len(value) >= 16)
    group = {"name": result[0], "static": [value for name, value in log[start:mesh] if name == "flag8"][-1],
             "points": list(struct.iter_unpack("<3d", data[corners - 24 * vertices:corners])),
             "triangles": rows_of(columns, triangles, data[corners:]), "centre": numbers[0][:3],
             "velocity": numbers[0][-3:], "rotations": [value for value in numbers[1:] if len(value) == 6],
             "place": place[:16], "properties": taken.get("properties", [[]])[-1]}
    deck["groups"].append(group)
    return result


def group_state(s, made, read=heard(timestep.group_state)):
    group = dict(deck["groups"][len(now["groups"])])
    still = copy.copy(s).flag8()
    result, taken = read(s, made)
    numbers = taken.get("f64", [])
    group["static"] = still
    if not still:
        place = next(i for i, value in enumerate(numbers) if len(value) >= 16)
        group["velocity"], group["rotations"] = numbers[0], numbers[1:place]
        group["place"], after = numbers[place][:16], numbers[place][16:]
        if s.since(24, 0, 29):
            group["centre"] = after[3:6] if s.since(25, 0, 3) else after[:3]
    columns = taken.get("columns", [[]])[-1]
    group["forces"] = []
    if taken.get("group") and columns:
        group["forces"] = rows_of(columns, len(group["triangles"]), taken["group"][0])
    group["properties"] = taken.get("properties", [[]])[0]
    now["groups"].append(group)
    return result


def contacts(s, read=heard(timestep.contacts)):
    before = len(now["collisions"])
    result, taken = read(s)
    now["active"] += now["collisions"][before:]
    del now["collisions"][before:]
    columns, data = taken.get("columns", [[]])[0], taken.get("group", [b""])[0]
    found = rows_of(columns, result, data) if result and columns else []
    for row, values in zip(found, zip(*taken.get("properties", [[]])[0])):
        row["properties"] = values
    now["contacts"].append([row for row in found if row[5][0] >= 0])
    return result


def collisions(s, read=heard(timestep.collisions)):
    result, taken = read(s)
    if taken.get("group"):
        columns, data = taken["columns"][0], taken["group"][0]
        now["collisions"] += rows_of(columns, len(data) // sum(size for _, size in columns), data)
    return result


def bonds(s, read=heard(timestep.bonds)):
    result, taken = read(s)
    now["bonds"].append(rows_of(BOND_COLUMNS, result, taken["group"][0]) if result else [])
    return result


def creator_model(s, read=read_legacy.creator_model):
    t = copy.copy(s)
    stream.version_record(t)
    if not t.since(22, 0, 0):
        t.stores((13, 0, 4), (20, 0, 16)) and t.i32()
    deck.clear()
    deck.update(gravity=t.f64(3), groups=[], bonding=[])
    return read(s)


def whole_timestep(s, geometry, read=heard(read_legacy.timestep)):
    log.clear()
    now.clear()
    now.update(groups=[], types=[], contacts=[], collisions=[], active=[], bonds=[])
    result, taken = read(s, geometry)
    states.append({"time": result["time"], "gravity": deck["gravity"], "bonding": deck["bonding"],
                   "simulation": taken["properties"][-1] if s.since(23, 0, 0) else [], **now})
    return result


for module in (model, timestep):
    module.row_bytes, module.custom_properties = row_bytes, custom_properties
for operation in ("f64", "i32", "flag8", "text", "group"):
    setattr(stream.Stream, operation, logged(operation, getattr(stream.Stream, operation)))
model.particle_type, model.geometry_group = particle_type, geometry_group
model.MODELS["Hertz-Mindlin with bonding"] = bonding
timestep.group_state, timestep.contacts, timestep.collisions = group_state, contacts, collisions
timestep.bonds, read_legacy.creator_model, read_legacy.timestep = bonds, creator_model, whole_timestep
states = []


def definitions(path):
    """By owner: name, elements and initial values of each custom property, and whether decks hold values of it."""
    found = {}

    def read(s, each=False):
        last = s.i32()
        for number in range(s.i32()):
            name, kind, elements, _ = s.text(), s.i32(), s.i32(), s.i32()
            first = [s.i32() if each and kind else s.f64()[0] for _ in range(elements if each else 1)]
            yield name, elements, first if each else first * elements, number <= last

    base = os.path.splitext(path)[0]
    with open(base + ".ess", "rb") as file:
        s = stream.Stream(file.read())
    s.text()
    version = s.u32()
    if version >= stream.version(27, 0, 2):
        s.i32()
    while s.at < len(s.data):
        s.raw(10)
        length, block = s.unpack("ii")
        content = stream.Stream(s.raw(length - 8))
        s.raw(10)
        if block in OWNER_BLOCKS:
            found[OWNER_BLOCKS[block]] = list(read(content, version >= stream.version(23, 0, 0)))
    if os.path.exists(base + ".ppf"):
        with open(base + ".ppf", "rb") as file:
            s = stream.Stream(file.read())
        s.text(), s.i32()
        found["particle"] = list(read(s))
    return found


def timesteps_of(path):
    """What each timestep of a deck holds; none of one with the mesh or the pairs in an older form."""
    states.clear()
    with open(path, "rb") as file:
        if stream.Stream(file.read(4)).u32() < stream.version(20, 0, 16):
            return []
    read_legacy.read_deck(path)
    return list(states)
