"""The creator model: definitions, geometry with its motions and factories. Most of it is read past."""

import struct

from stream import axis_angle, custom_properties, has_charges, row_bytes, version, version_record


PARTICLE_COLUMNS = [(0, 4), (1, 24), (2, 24), (3, 32), (31, 72), (4, 24), (5, 8), (6, 56), (7, 56), (8, 56), (11, 8),
                    (12, 24)]


def particle_type(s):
    """Name, and id and position of each slot."""
    s.expect(3141)
    name, _, _ = s.text(), s.text(), s.f64(5)
    spheres = s.i32()
    if s.since(20, 0, 4):
        s.i32()
    for _ in range(spheres):
        s.text(), s.f64(5)
    rows, fields, particles = s.i32(), s.u32() if s.since(20, 0, 6) else 511, []
    if s.v <= version(20, 0, 6) and fields & 8:
        fields = fields & ~8 | 1 << 31
    if rows and fields:
        arrays = s.group(s.since(20, 0, 1) and s.flag8(), rows * row_bytes(PARTICLE_COLUMNS, fields))
        if fields & 5 == 5:
            ids = struct.unpack_from(f"<{rows}i", arrays)
            at = rows * row_bytes(PARTICLE_COLUMNS[:2], fields)
            particles = [(ids[i], struct.unpack_from("<3d", arrays, at + 24 * i)) for i in range(rows)]
    if s.stores((13, 0, 5), (21, 0, 0)):
        custom_properties(s)
    return name, particles


def particle_types(s):
    s.expect(8138)
    s.i32()
    return s.list(lambda: particle_type(s))


def prototype_elements(s):
    def element():
        s.text(), s.f64(6)
        prototype_elements(s)
        s.f64(), s.i32(), s.text(), s.f64((1 if s.since(2, 4, 3) else 0) + (3 if s.since(2, 4, 41) else 0))

    s.list(element)


def prototype(s):
    """Name, id and position: before 20.0.0 a type, or a particle with its type in one."""
    axis_angle(s), axis_angle(s)
    position = s.f64(3)
    s.f64(7)
    for first in ((2, 4, 29), (2, 4, 56)):
        if s.since(*first):
            axis_angle(s)
    s.f64(6)
    prototype_elements(s)
    _, identifier, _ = s.text(), s.i32(), s.f64(3)
    if not s.since(2, 4, 19):
        s.i32()
    name = s.text()
    s.f64((1 if s.since(2, 4, 53) else 0) + (4 if has_charges(s) else 0))
    if s.since(13, 0, 5):
        s.list(s.f64)
    return name, identifier, position


def prototype_types(s):
    def entry():
        s.text(), s.since(2, 4, 18) and s.i32(), s.since(2, 4, 54) and s.unpack("6d3i")
        prototype(s)

    s.list(entry)


def particles_of_prototypes(s):
    if s.since(2, 4, 19):
        s.i32()
    types = {}
    for name, identifier, position in s.list(lambda: prototype(s)):
        types.setdefault(name, []).append((identifier, position))
    return list(types.items())


def names(s):
    s.list(lambda: (s.text(), s.f64()))


def pairs(s, numbers, joined=True):
    two = not joined or not version(13, 0, 3) <= s.v < version(20, 0, 0)
    s.list(lambda: (s.text(), two and s.text(), s.f64(numbers)))


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
    "Hysteretic Spring": lambda s: (pairs(s, 2, False), names(s)),
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
        name, _ = s.text(), s.stores((13, 0, 8), (20, 0, 14)) and s.u32()
        MODELS.get(name, lambda _: None)(s)
        return name

    if not s.stores((13, 0, 3), (20, 0, 14)):
        return []
    return [s.list(model) for _ in range(3 if s.stores((13, 0, 6), (20, 0, 14)) else 1)]


def motions_of(s):
    found = []
    for kind in ("Sinusoidal Rotation", "Sinusoidal Translation") if not s.since(20, 0, 0) else ():
        if s.i32() != 0:
            found.append(motion(s, None if s.since(2, 4, 40) else kind))
    return found + s.list(lambda: motion(s))


def motion(s, kind=None):
    kind, _, _ = kind or s.text(), s.text(), s.f64(2)
    if kind.endswith("Rotation"):
        s.f64(3), s.i32()
    s.f64({"Linear Translation": 8, "Linear Rotation": 8}.get(kind, 5))
    return kind


def velocity(s):
    normal = 5 if s.since(2, 4, 22) else 2
    s.f64({"fixed": 3, "linear": 6, "random": 2, "normal": normal, "spray": 6, "": 0}[s.text()])


def size_law(s):
    kind = s.text()
    if kind == "user defined":
        s.i32(), s.list(lambda: s.f64(2))
    elif kind:
        capped = "2di" if s.since(2, 4, 28) else ""
        s.unpack({"fixed": "d", "random": "2d" + ("i" if s.since(27, 0, 0) else ""), "lognormal": "4d3i",
                  "normal": "2d" + capped + ("i" if s.since(2, 4, 49) else "")}[kind])
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
    kind, _, _ = s.text(), s.text(), s.unpack("ii" if s.since(2, 4, 27) else "i")
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
        s.i32(), s.f64(3 + (1 if s.since(2, 4, 33) else 0) + (6 if s.since(2, 4, 22) else 0))
    elif position:
        s.f64(12 + (9 if s.since(2, 4, 21) else 0) + (6 if s.since(2, 4, 31) else 0))
    if s.stores((13, 0, 1), (20, 0, 16)) and s.v <= version(26, 0, 0):
        s.f64({"fixed": 1, "random": 2, "normal": 2}.get(s.text(), 0))
    if s.stores((13, 0, 7), (21, 0, 1)):
        s.list(lambda: property_parameter(s))
    if s.since(20, 0, 23):
        s.list(s.i32)
    if kind == "dynamic":
        s.unpack("iidd" + ("i" if s.since(2, 4, 20) and not s.since(2, 4, 27) else "") +
                 ("di" if s.since(2, 4, 52) else "") + ("ii" if s.since(22, 0, 1) else "") +
                 ("d" if s.since(22, 0, 2) else ""))
    else:
        s.unpack("id" + ("ii" if s.since(2, 4, 50) else "") + ("id" if s.since(22, 0, 2) else ""))
    return kind, sizes, type_kind, position


TRIANGLE_COLUMNS = [(0, 4), (1, 12), (2, 56), (3, 8)]


def old_mesh(s):
    def triangle():
        s.text()
        axis_angle(s)
        s.f64(3), s.list(lambda: s.f64(6))
        if s.since(2, 4, 2):
            s.list(lambda: (s.i32(), s.f64(3)))
        s.text(), s.i32(), s.list(s.u32), s.list(s.u32)
        s.f64((1 if has_charges(s) else 0) + (3 if s.v == version(13, 0, 1) else 0))

    s.list(triangle)
    s.i32(), s.text(), s.i32()
    if s.v <= version(2, 4, 6):
        s.text()
    s.unpack("iddi" + ("d" if s.since(2, 4, 4) else "") + ("d" if s.since(2, 4, 12) else "") +
             ("i" if s.since(2, 4, 34) else "") + ("3d" if s.since(2, 4, 59) else "") +
             ("id" if s.since(13, 0, 1) else "") + ("i" if s.since(13, 0, 3) else ""))


def geometry_group(s):
    _, shape = s.u32(), s.text() if s.since(2, 4, 5) else "default"
    if shape == "polygon" and s.v <= version(2, 4, 25):
        polygon = "3di3di3di3d2di"
    else:
        polygon = "3d" + ("" if s.since(20, 0, 0) else "i") + "5di5d"
    s.unpack({"box": "9d6i", "cylinder": "8d3i" if s.since(2, 4, 15) else "7d3i", "polygon": polygon, "default": "",
              "cad_geometry": "14d" if s.since(23, 0, 1) else ""}[shape])
    motions, factories = motions_of(s), s.list(lambda: factory(s))
    s.f64(12 + (3 if s.since(2, 4, 31) else 0))
    name = s.text() if s.since(2, 4, 7) else ""
    if s.since(24, 0, 30):
        s.i32()
    if not s.since(20, 0, 0):
        old_mesh(s)
        return name, motions, factories
    vertices = s.i32()
    triangles, deflated = (s.i32(), s.flag8()) if s.since(20, 0, 3) else (0, False)
    static = s.flag8() if s.since(20, 0, 10) else True
    mask = s.i32() if s.since(20, 0, 16) else 7
    imported = shape == "cad_geometry" and s.since(23, 0, 4)
    copies = (1 if imported else 0) + (0 if imported and static else 1)
    s.group(deflated, vertices * (4 + 24 * copies) + triangles * row_bytes(TRIANGLE_COLUMNS, mask))
    if not s.since(20, 0, 3):
        s.group(False, s.i32() * row_bytes(TRIANGLE_COLUMNS, mask))
    s.i32(), s.text(), s.unpack("2i4di")
    s.f64(3 + (3 if s.since(25, 0, 0) else 0) + (6 if s.since(25, 0, 2) else 0) + 3)
    s.list(lambda: s.f64(6))
    s.f64((16 if s.since(20, 0, 10) else 0) + (3 if s.since(25, 0, 3) else 0))
    if version(20, 0, 16) <= s.v <= version(26, 0, 0) or s.since(27, 0, 3):
        s.i32(), s.f64()
    if s.since(23, 0, 0):
        custom_properties(s)
    return name, motions, factories


def creator_model(s):
    """Materials, models and geometry."""
    version_record(s)
    if not s.since(22, 0, 0):
        s.charges = s.stores((13, 0, 4), (20, 0, 16)) and s.i32() == 1
    s.f64(9), s.unpack("3i")
    models = physics(s) if s.since(20, 0, 14) else []
    if s.since(20, 0, 0):
        particle_types(s)
    else:
        prototype_types(s)
        models = physics(s)
    materials = []
    if s.since(2, 4, 39):
        numbers = 4 if s.stores((13, 0, 1), (20, 0, 16)) else 3
        materials = s.list(lambda: (s.text(), s.text(), s.f64(numbers), s.since(30, 0, 4) and s.i32())[1])
        s.list(lambda: (s.text(), s.f64(3)))
    geometry = s.list(lambda: geometry_group(s)) if s.since(20, 0, 10) else []
    title = s.text()
    kind = s.i32() if not s.since(2, 4, 19) else 0
    s.i32(), s.f64(1 + (0 if s.since(2, 4, 16) else 2) + (2 if kind == 2 else 0))
    if s.since(2, 4, 8):
        s.text()
    if s.stores((13, 0, 3), (20, 0, 13)):
        s.unpack("idid")
    return {"title": title, "materials": materials, "models": models, "geometry": geometry}
