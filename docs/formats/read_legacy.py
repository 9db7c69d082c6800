#!/usr/bin/env python3
"""Reads decks of the legacy family, file versions 20.0.17 to 30.0.20, by legacy.md and nothing else: no library but
Python's own. It is the page in a form that can be run. It goes through every block from the first byte to the last, checks
that they fill their files and that the index agrees, and prints what it finds; with --positions N it writes number, type,
id, x, y and z of each particle of timestep N.

    read_legacy.py [--positions N] DECK.dem ...
"""

import os
import struct
import sys
import zlib


def version(major, minor, build):
    return major << 16 | minor << 8 | build


class Stream:
    """Scalars are big-endian, arrays little-endian; v is the version of the block at work."""

    def __init__(self, data):
        self.data, self.at, self.v = data, 0, 0

    def raw(self, count):
        if self.at + count > len(self.data):
            raise ValueError(f"byte {self.at}: {count} bytes wanted, {len(self.data) - self.at} there")
        self.at += count
        return self.data[self.at - count:self.at]

    def unpack(self, form):
        return struct.unpack(">" + form, self.raw(struct.calcsize(">" + form)))

    def u32(self):
        return self.unpack("I")[0]

    def i32(self):
        return self.unpack("i")[0]

    def flag8(self):
        return self.unpack("b")[0] != 0

    def f64(self, count=1):
        return self.unpack("d" * count)

    def text(self):
        length = self.u32()
        return "" if length == 0xFFFFFFFF else self.raw(length).decode("utf-16-be")

    def list(self, read):
        return [read() for _ in range(self.i32())]

    def since(self, *triple):
        return self.v >= version(*triple)

    def expect(self, value):
        found = self.u32()
        if found != value:
            raise ValueError(f"byte {self.at - 4}: {found} where {value} is expected")

    def group(self, deflated, total):
        if not deflated:
            return self.raw(total)
        inflater = zlib.decompressobj()
        arrays = inflater.decompress(self.data[self.at:])
        if not inflater.eof or len(arrays) != total:
            raise ValueError(f"byte {self.at}: {len(arrays)} bytes inflated, {total} expected")
        self.at = len(self.data) - len(inflater.unused_data)
        return arrays

    def block(self, tag, read):
        self.expect(tag)
        size = self.u32()
        end = self.at + size
        result = read()
        if self.at != end:
            raise ValueError(f"byte {self.at}: the block with tag {tag} ends at {end}")
        self.expect(size)
        self.expect(tag)
        return result


def row_bytes(columns, mask):
    return sum(size for bit, size in columns if mask >> bit & 1)


def version_record(s):
    s.v = s.u32()
    if s.v >> 16 == 3:
        s.v = s.v & 0xFFFF | 20 << 16
    if s.i32() != 0 and not s.since(21, 0, 3):
        s.i32()
    if s.since(20, 0, 18):
        s.i32(), s.text()


def custom_properties(s):
    lists, items = s.i32(), s.i32()
    if lists and items:
        for _ in range(lists):
            rows, width, deflated = s.i32(), s.i32(), s.flag8()
            s.group(deflated, rows * width * 8)


# ------------------------------------------------------------------------------------------- the creator model

PARTICLE_COLUMNS = [(0, 4), (1, 24), (2, 24), (3, 32), (31, 72), (4, 24), (5, 8), (6, 56), (7, 56), (8, 56), (11, 8),
                    (12, 24)]


def particle_type(s):
    """Name, and id and position of each slot."""
    s.expect(3141)
    name, _, _ = s.text(), s.text(), s.f64(5)
    spheres, _ = s.i32(), s.i32()
    for _ in range(spheres):
        s.text(), s.f64(5)
    rows, fields, particles = s.i32(), s.u32(), []
    if rows and fields:
        arrays = s.group(s.flag8(), rows * row_bytes(PARTICLE_COLUMNS, fields))
        if fields & 5 == 5:
            ids = struct.unpack_from(f"<{rows}i", arrays)
            at = rows * row_bytes(PARTICLE_COLUMNS[:2], fields)
            particles = [(ids[i], struct.unpack_from("<3d", arrays, at + 24 * i)) for i in range(rows)]
    if s.since(21, 0, 0):
        custom_properties(s)
    return name, particles


def particle_types(s):
    s.expect(8138)
    s.i32()
    return s.list(lambda: particle_type(s))


def names(s):
    s.list(lambda: (s.text(), s.f64()))


def pairs(s, numbers):
    s.list(lambda: (s.text(), s.text(), s.f64(numbers)))


def bonding(s):
    s.list(lambda: (s.text(), s.f64(5)))
    s.f64(2), s.i32()


def moving_plane(s):
    s.list(lambda: (s.i32(), s.f64(3)))
    if s.since(27, 0, 1):
        s.list(lambda: (s.i32(), s.text(), s.text()))
    s.list(lambda: (s.i32(), s.f64(6)))


MODELS = {
    "Linear Spring": lambda s: s.f64(),
    "Hertz-Mindlin with JKR": lambda s: pairs(s, 1),
    "Linear Cohesion": lambda s: pairs(s, 1),
    "Linear Cohesion V2": lambda s: pairs(s, 1),
    "Hysteretic Spring": lambda s: (pairs(s, 2), names(s)),
    "Hertz-Mindlin with heat conduction": names,
    "Hertz-Mindlin with Archard Wear": names,
    "Tribocharging": lambda s: s.f64(),
    "Hertz-Mindlin with bonding": bonding,
    "Moving Plane": moving_plane,
    "Electrostatics": lambda s: s.f64(),
    "Temperature Update": names,
}


def physics(s):
    def model():
        name, _ = s.text(), s.u32()
        MODELS.get(name, lambda _: None)(s)
        return name

    return [s.list(model) for _ in range(3)]


def motion(s):
    kind, _, _ = s.text(), s.text(), s.f64(2)
    if kind.endswith("Rotation"):
        s.f64(3), s.i32()
    s.f64({"Linear Translation": 8, "Linear Rotation": 8}.get(kind, 5))
    return kind


def velocity(s):
    s.f64({"fixed": 3, "linear": 6, "random": 2, "normal": 5, "spray": 6, "": 0}[s.text()])


def size_law(s):
    kind = s.text()
    if kind == "user defined":
        s.i32(), s.list(lambda: s.f64(2))
    elif kind:
        s.f64({"fixed": 1, "random": 2, "normal": 4, "lognormal": 4}[kind])
        flags = {"fixed": 0, "random": 1 if s.since(27, 0, 0) else 0, "normal": 2, "lognormal": 3}[kind]
        s.unpack("i" * flags)
    return kind


def property_parameter(s):
    _, kind = s.text(), s.text()
    if kind == "initial" and not s.since(25, 0, 0):
        kind = "fixed"
    if kind == "fixed":
        s.f64(s.i32() if s.since(25, 0, 1) else 1)
    elif kind in ("random", "normal"):
        s.f64(2)


def factory(s):
    kind, _, _ = s.text(), s.text(), s.unpack("ii")
    velocity(s)
    sizes = s.list(lambda: (s.text(), size_law(s))[1]) if s.since(30, 0, 0) else [size_law(s)]
    if s.text() == "fixed":
        s.f64(4)
    velocity(s)
    type_kind = s.text()
    if type_kind == "fixed":
        s.text()
    elif type_kind == "binary":
        s.i32()
        for _ in range(s.i32() if s.since(24, 0, 28) else 2):
            s.text()
    position = s.text()
    if position == "random":
        s.i32(), s.f64(10)
    elif position:
        s.f64(27)
    if s.v <= version(26, 0, 0):
        s.f64({"fixed": 1, "random": 2, "normal": 2}.get(s.text(), 0))
    if s.since(21, 0, 1):
        s.list(lambda: property_parameter(s))
    if s.since(20, 0, 23):
        s.list(s.i32)
    if kind == "dynamic":
        s.unpack("iidddi" + ("ii" if s.since(22, 0, 1) else "") + ("d" if s.since(22, 0, 2) else ""))
    else:
        s.unpack("idii" + ("id" if s.since(22, 0, 2) else ""))
    return kind, sizes, type_kind, position


TRIANGLE_COLUMNS = [(0, 4), (1, 12), (2, 56), (3, 8)]


def geometry_group(s):
    _, shape = s.u32(), s.text()
    s.unpack({"box": "9d6i", "cylinder": "8d3i", "polygon": "8di5d", "default": "",
              "cad_geometry": "14d" if s.since(23, 0, 1) else ""}[shape])
    motions, factories = s.list(lambda: motion(s)), s.list(lambda: factory(s))
    s.f64(15)
    name = s.text()
    if s.since(24, 0, 30):
        s.i32()
    vertices, triangles, deflated, static, mask = s.i32(), s.i32(), s.flag8(), s.flag8(), s.i32()
    imported = shape == "cad_geometry" and s.since(23, 0, 4)
    copies = (1 if imported else 0) + (0 if imported and static else 1)
    s.group(deflated, vertices * (4 + 24 * copies) + triangles * row_bytes(TRIANGLE_COLUMNS, mask))
    s.i32(), s.text(), s.unpack("2i4di")
    s.f64(3 + (3 if s.since(25, 0, 0) else 0) + (6 if s.since(25, 0, 2) else 0) + 3)
    s.list(lambda: s.f64(6))
    s.f64(16 + (3 if s.since(25, 0, 3) else 0))
    if s.v <= version(26, 0, 0) or s.since(27, 0, 3):
        s.i32(), s.f64()
    if s.since(23, 0, 0):
        custom_properties(s)
    return name, motions, factories


def creator_model(s):
    """Materials, models and geometry."""
    version_record(s)
    if not s.since(22, 0, 0):
        s.i32()
    s.f64(9), s.unpack("3i")
    models = physics(s)
    particle_types(s)
    materials = s.list(lambda: (s.text(), s.text(), s.f64(4), s.i32() if s.since(30, 0, 4) else 1)[1])
    s.list(lambda: (s.text(), s.f64(3)))
    geometry = s.list(lambda: geometry_group(s))
    title, _, _, _ = s.text(), s.i32(), s.f64(), s.text()
    s.unpack("idid")
    return {"title": title, "materials": materials, "models": models, "geometry": geometry}


# ------------------------------------------------------------------------------------------- timesteps

def factory_state(s, made):
    kind, sizes, type_kind, position = made
    s.i32()
    if s.since(30, 0, 0):
        for size in sizes[:s.i32()]:
            s.text(), size == "user defined" and s.f64(s.i32())
    elif sizes[0] == "user defined":
        s.f64(s.i32())
    if type_kind == "binary":
        s.i32()
    if position:
        s.f64(6 if position == "random" else 9)
    if s.since(22, 0, 1):
        s.f64(3)
    if s.since(20, 0, 23):
        s.list(s.i32)
    s.i32()
    if kind == "dynamic" and s.since(30, 0, 0):
        s.list(lambda: (s.text(), s.f64(3)))


def group_state(s, group):
    _, motions, factories = group
    if not s.flag8():
        if s.since(20, 0, 19):
            s.i32(), s.f64(3), s.list(lambda: s.f64(6))
        s.f64(16 + 3 * (s.since(25, 0, 3) + s.since(24, 0, 29) + s.since(25, 0, 0) + 2 * s.since(25, 0, 2)))
    if s.since(20, 0, 21):
        s.f64()
    triangles, deflated, mask = s.i32(), s.flag8(), s.i32()
    if triangles and row_bytes(TRIANGLE_COLUMNS, mask):
        s.group(deflated, triangles * row_bytes(TRIANGLE_COLUMNS, mask))
    if version(21, 0, 4) <= s.v < version(24, 0, 0):
        s.list(lambda: motion(s))
    else:
        for kind in motions:
            s.f64(3 * kind.endswith("Rotation") + 6 * (kind == "Linear Rotation" and s.since(23, 1, 0)))
    if s.since(23, 0, 0):
        custom_properties(s)
    for made in factories:
        factory_state(s, made)


CONTACT_COLUMNS = [(0, 16), (1, 24), (2, 24), (3, 24), (4, 24), (5, 8), (6, 24), (13, 48), (7, 24), (12, 4), (14, 4),
                   (11, 8)]
COLLISION_COLUMNS = [(0, 4), (1, 8), (7, 24), (3, 24), (4, 24), (5, 24), (6, 24), (2, 8), (8, 4), (9, 8), (10, 8),
                     (11, 24), (12, 24), (13, 4), (14, 24), (15, 24), (16, 8), (17, 24), (18, 32), (19, 4), (20, 24),
                     (21, 24), (22, 8), (23, 24), (24, 32)]


def collisions(s):
    count, deflated, mask = s.i32(), s.flag8(), s.i32()
    if count:
        s.group(deflated, count * row_bytes(COLLISION_COLUMNS, mask))


def contact_records(s):
    kinds = s.list(lambda: (s.i32(), s.i32(), s.text(), s.f64(4))[0])
    rows = s.i32()
    if kinds:
        s.group(s.flag8(), rows * sum(24 if kind == 1 else 8 for kind in kinds))


def contacts(s):
    count, deflated, mask, _ = s.i32(), s.flag8(), s.i32(), s.flag8()
    if count:
        s.group(deflated, count * row_bytes(CONTACT_COLUMNS, mask))
    collisions(s)
    s.block(2, lambda: contact_records(s))
    if s.since(22, 1, 1):
        custom_properties(s)
    return count


def bonds(s):
    count, deflated = s.i32(), s.flag8()
    if count:
        s.group(deflated, count * (16 + 4 * 24 + 4 + 8))
    return count


def timestep(s, geometry):
    version_record(s)
    whole = False
    if s.since(22, 0, 0):
        s.expect(0xBEEFCAFE)
        s.unpack("4i")
    else:
        whole = s.i32() != 0
    if whole:
        s.list(lambda: geometry_group(s))
    else:
        for group in geometry:
            group_state(s, group)
    types = particle_types(s)
    found = s.block(3, lambda: contacts(s) + contacts(s))
    s.block(1, lambda: (collisions(s), collisions(s)))
    bonded = s.block(4, lambda: bonds(s) + bonds(s)) if s.since(21, 0, 2) else 0
    s.list(lambda: (s.text(), s.text(), s.since(23, 0, 0) and s.text()))
    time = s.f64()[0]
    s.f64(), s.i32(), s.text(), s.f64(10)
    s.list(lambda: (s.text(), s.i32()))
    if s.since(23, 0, 0):
        custom_properties(s)
    return {"time": time, "types": types, "contacts": found, "bonds": bonded}


# ------------------------------------------------------------------------------------------- decks

def index_of(path, last):
    with open(os.path.splitext(path)[0] + ".idx", "rb") as file:
        s = Stream(file.read())
    form = "dI" + ("Q" if last >= version(20, 0, 22) else "I") + ("I" if last >= version(22, 0, 0) else "")
    return [s.unpack(form)[:3] for _ in range(s.u32())]


def read_deck(path):
    """All models and timesteps, each timestep with its segment and offset."""
    models, timesteps, segment = [], [], 0
    while segment == 0 or os.path.exists(f"{path}.scn.{segment}"):
        with open(path if segment == 0 else f"{path}.scn.{segment}", "rb") as file:
            s = Stream(file.read())
        if segment == 0:
            last = s.unpack("8I")[1]
        while s.at < len(s.data):
            offset, name = s.at, s.text()
            if name == "class CGenericData":
                models.append(creator_model(s))
            else:
                s.unpack("IQ" if name == "class CTimestepData64" else "II")
                timesteps.append(((segment, offset), timestep(s, models[-1]["geometry"])))
        segment += 1
    if [entry[1:] for entry in index_of(path, last)] != [place for place, _ in timesteps]:
        raise ValueError("the index names other places")
    return last, models, [data for _, data in timesteps]


def main(arguments):
    wanted = None
    if arguments[:1] == ["--positions"]:
        wanted, arguments = int(arguments[1]), arguments[2:]
    for path in arguments:
        last, models, timesteps = read_deck(path)
        if wanted is not None:
            for number, (name, particles) in enumerate(timesteps[wanted]["types"]):
                for identifier, position in particles:
                    if identifier > 0:
                        print(number, f'"{name}"', identifier, *position)
            continue
        print(f"{path}: version {last >> 16}.{last >> 8 & 255}.{last & 255}, \"{models[-1]['title']}\", "
              f"materials {', '.join(models[-1]['materials'])}")
        for number, data in enumerate(timesteps):
            counts = ", ".join(f"{sum(i > 0 for i, _ in particles)} {name}" for name, particles in data["types"])
            print(f"  {number}: t = {data['time']:.6g} s, {counts}; {data['contacts']} contacts, {data['bonds']} bonds")


if __name__ == "__main__":
    main(sys.argv[1:])
