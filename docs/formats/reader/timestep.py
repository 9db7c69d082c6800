"""A timestep: the state of geometry, the particles, and pairs of them."""

from model import (TRIANGLE_COLUMNS, geometry_group, motion, particle_types, particles_of_prototypes)
from stream import custom_properties, row_bytes, version, version_record


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
    if s.since(20, 0, 16):
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
    for made in factories if s.since(20, 0, 12) else ():
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
    count, deflated = s.i32(), s.flag8()
    mask = s.i32() if s.since(20, 0, 6) else 255
    if s.since(20, 0, 17):
        s.flag8()
    else:
        mask = 0x40FF | (0 if s.since(20, 0, 9) else 0x2000)
    if count:
        s.group(deflated, count * row_bytes(CONTACT_COLUMNS, mask))
    if s.since(20, 0, 17):
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


def old_contacts(s):
    numbers = 16 + 3
    again = ("i" if s.since(2, 4, 48) else "") + ("6d" if s.since(2, 4, 52) else "")
    return sum(len(s.list(lambda: s.unpack(f"{ids}i{numbers}d" + again))) for ids in (4, 3))


def old_collisions(s):
    def collision():
        kind = s.i32()
        if kind in (0, 1):
            s.unpack("21d2di2di")
            s.unpack("13d2i"), s.text(), s.f64()
            if kind == 0:
                s.unpack("13d2i"), s.text(), s.f64()
            else:
                s.unpack("6di"), s.text()

    known = s.since(2, 4, 37)
    if known:
        s.i32()
    for _ in range(2):
        s.list(collision if known else lambda: s.unpack("2i"))


def pairs_of_timestep(s):
    """How many contacts and bonds."""
    found = bonded = 0
    if not s.since(20, 0, 0):
        found = old_contacts(s)
    elif s.since(20, 0, 17):
        found = s.block(3, lambda: contacts(s) + contacts(s))
    elif s.since(20, 0, 2):
        s.i32()
        found = contacts(s) + contacts(s)
    if not s.since(20, 0, 7):
        old_collisions(s)
    if s.since(20, 0, 17):
        s.block(1, lambda: (collisions(s), collisions(s)))
    if s.since(2, 4, 41) and not s.since(2, 4, 57):
        old_contacts(s)
    if s.since(21, 0, 2):
        bonded = s.block(4, lambda: bonds(s) + bonds(s))
    elif s.since(13, 0, 9) and not s.since(20, 0, 0):
        bonded = len(s.list(lambda: s.unpack("4i12did")))
    return found, bonded


def timestep(s, geometry):
    version_record(s)
    whole = not s.since(20, 0, 10)
    if s.since(22, 0, 0):
        s.expect(0xBEEFCAFE)
        s.unpack("4i")
    elif not whole:
        whole = s.i32() != 0
    if whole:
        s.list(lambda: geometry_group(s))
    else:
        for group in geometry:
            group_state(s, group)
    types = particle_types(s) if s.since(20, 0, 0) else particles_of_prototypes(s)
    found, bonded = pairs_of_timestep(s)
    if s.since(2, 4, 1):
        s.list(lambda: (s.text(), s.text(), s.since(23, 0, 0) and s.text()))
    balance = 7 if s.since(2, 4, 55) else 6
    if s.since(2, 4, 30) and not s.since(2, 4, 32):
        s.f64(balance)
    time = s.f64()[0]
    s.f64(), s.i32(), s.text()
    s.f64(balance + 3 if s.since(2, 4, 32) else 3 if s.since(2, 4, 30) else 1)
    if s.since(2, 4, 36) and not s.since(2, 4, 38):
        s.i32()
    if s.since(2, 4, 38):
        s.list(lambda: (s.text(), s.i32()))
    if s.since(23, 0, 0):
        custom_properties(s)
    return {"time": time, "types": types, "contacts": found, "bonds": bonded}
