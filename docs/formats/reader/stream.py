"""Scalars, arrays, blocks, and what all parts of a deck have in common."""

import struct
import zlib


def version(major, minor, build):
    return major << 16 | minor << 8 | build


class Stream:
    """Scalars are big-endian, arrays little-endian; v is the version of the block at work."""

    def __init__(self, data):
        self.data, self.at, self.v, self.charges = data, 0, 0, False

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

    def stores(self, first, again):
        """From a version of line 13.0 below 20.0.0, and from one of line 20.0."""
        return version(*first) <= self.v < version(20, 0, 0) or self.v >= version(*again)

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
    if s.since(2, 4, 51) and s.i32() != 0 and not s.since(21, 0, 3):
        s.i32()
    if s.since(20, 0, 18):
        s.i32(), s.text()


def has_charges(s):
    """Of old walls and particles; s.charges is of the model that is read or was read last."""
    return s.since(13, 0, 1) and (not s.since(13, 0, 4) or s.charges)


def axis_angle(s):
    s.f64(6 + (3 if s.since(2, 4, 9) and not s.since(2, 4, 17) else 2 if s.since(2, 4, 17) else 0))


def custom_properties(s):
    lists, items = s.i32(), s.i32()
    if lists and items:
        for _ in range(lists):
            rows, width, deflated = s.i32(), s.i32(), s.flag8()
            s.group(deflated, rows * width * 8)
