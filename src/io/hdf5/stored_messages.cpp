// The sizes inside header messages that HDF5 multiplies and follows without a test.
#include "io/hdf5/stored_messages.h"

#include <algorithm>
#include <limits>

namespace NBrenmark {

static constexpr quint64 mostElements = std::numeric_limits<quint64>::max();

static quint64 product(quint64 a, quint64 b) { return a != 0 && b > mostElements / a ? mostElements : a * b; }

/// What old forms fill a part up to.
static quint64 toEights(quint64 bytes) { return (bytes + 7) / 8 * 8; }

// ---------------------------------------------------------------- types

enum ETypeClass : quint8
{
    eFixedPoint,
    eFloat,
    eTime,
    eText,
    eBitField,
    eOpaque,
    eCompound,
    eReference,
    eEnumeration,
    eVariableLength,
    eArray
};

static constexpr int deepestType = 16;

static SStoredType takeType(CFileBytes& bytes, int depth);

/// Bytes that an offset below a size is stored in, in the newest form.
static int offsetBytes(quint64 size)
{
    int count = 1;
    for (; size > 0xFF; size >>= 8)
        ++count;
    return count;
}

static void takeMember(CFileBytes& bytes, int version, quint64 size, int depth)
{
    bytes.text(version < 3 ? 8 : 1);
    quint64 offset = 0;
    if (version < 3)
        offset = bytes.u32();
    else
        for (int i = 0; i < offsetBytes(size); ++i)
            offset |= quint64(bytes.u8()) << (8 * i);
    quint64 elements = 1;
    if (version == 1) { // arrays were no types of their own
        const int rank = bytes.u8();
        bytes.require(rank <= 4, "a member has too many dimensions");
        bytes.skip(3 + 4 + 4); // reserved, an order of dimensions that no one used, reserved
        for (int i = 0; i < 4; ++i) {
            const quint32 extent = bytes.u32();
            elements = i < rank ? product(elements, extent) : elements;
        }
    }
    const quint64 memberSize = product(elements, takeType(bytes, depth + 1).size);
    bytes.require(offset <= size && memberSize <= size - offset, "a member is larger than its record");
}

static void takeArray(CFileBytes& bytes, int version, quint64 size, int depth)
{
    const int rank = bytes.u8();
    bytes.require(rank >= 1 && rank <= 32, "an array has too many dimensions");
    bytes.skip(version < 3 ? 3 : 0); // reserved
    quint64 elements = 1;
    for (int i = 0; i < rank; ++i)
        elements = product(elements, bytes.u32());
    bytes.skip(version < 3 ? 4 * quint64(rank) : 0); // an order of dimensions that no one used
    bytes.require(product(elements, takeType(bytes, depth + 1).size) == size, "an array has another size");
}

static void takeEnumeration(CFileBytes& bytes, int version, quint32 count, quint64 size, int depth)
{
    bytes.require(takeType(bytes, depth + 1).size == size, "an enumeration has another size");
    for (quint32 i = 0; i < count; ++i)
        bytes.text(version < 3 ? 8 : 1);
    bytes.skip(count * size);
}

static SStoredType takeType(CFileBytes& bytes, int depth)
{
    bytes.require(depth <= deepestType, "types are nested too deeply");
    const quint8 head = bytes.u8();
    const int version = head >> 4;
    bytes.require(version >= 1 && version <= 3, "a type is of an unknown version");
    quint32 bits = bytes.u8();
    bits |= quint32(bytes.u8()) << 8;
    bits |= quint32(bytes.u8()) << 16;
    SStoredType type;
    type.size = bytes.u32();
    bytes.require(type.size > 0, "a type has no size");
    switch (head & 0xF) {
    case eFixedPoint:
    case eBitField: {
        const quint64 offset = bytes.u16();
        bytes.require(offset + bytes.u16() <= 8 * type.size, "a number has more bits than bytes");
        break;
    }
    case eFloat: bytes.skip(12); break; // where sign, exponent and mantissa are
    case eTime: bytes.skip(2); break;   // bits
    case eText:
    case eReference: break;
    case eOpaque: bytes.skip(toEights(bits & 0xFF)); break; // a tag
    case eCompound:
        for (quint32 i = 0; i < (bits & 0xFFFF); ++i)
            takeMember(bytes, version, type.size, depth);
        break;
    case eEnumeration: takeEnumeration(bytes, version, bits & 0xFFFF, type.size, depth); break;
    case eVariableLength:
        type.isVariableLength = true;
        takeType(bytes, depth + 1);
        break;
    case eArray: takeArray(bytes, version, type.size, depth); break;
    default: bytes.require(false, "a type is of an unknown class");
    }
    return type;
}

SStoredType takeType(CFileBytes& bytes) { return takeType(bytes, 0); }

// ---------------------------------------------------------------- extents, layouts, filters

quint64 takeExtent(CFileBytes& bytes)
{
    const int version = bytes.u8();
    bytes.require(version == 1 || version == 2, "an extent is of an unknown version");
    const int rank = bytes.u8();
    bytes.require(rank <= 32, "an extent has too many dimensions");
    const quint8 flags = bytes.u8();
    const quint8 kind = bytes.u8();
    if (version == 1)
        bytes.skip(4);
    quint64 elements = version == 2 && kind == 2 ? 0 : 1; // kind 2 has no element, whatever its rank
    for (int i = 0; i < rank; ++i)
        elements = product(elements, bytes.u64());
    if ((flags & 1) != 0) // the greatest extents follow
        bytes.skip(8 * quint64(rank));
    return elements;
}

SStoredLayout takeLayout(CFileBytes& bytes)
{
    SStoredLayout layout;
    const int version = bytes.u8();
    if (version == 4)
        throw hdf5_error("Values of a dataset are stored in another file or as no deck has them, which isn't followed");
    bytes.require(version == 3, "a layout is of an unknown version");
    const quint8 kind = bytes.u8();
    bytes.require(kind < SStoredLayout::eNone, "a layout is of an unknown class");
    layout.kind = static_cast<SStoredLayout::EClass>(kind);
    if (kind == SStoredLayout::eCompact) {
        layout.size = bytes.u16();
        layout.address = bytes.place();
        bytes.skip(layout.size);
    }
    else if (kind == SStoredLayout::eContiguous) {
        layout.address = bytes.u64();
        layout.size = bytes.u64();
    }
    else {
        const int dimensions = bytes.u8(); // one more than the rank: the last is the element's size
        bytes.require(dimensions >= 2 && dimensions <= 33, "chunks have too many dimensions");
        layout.address = bytes.u64();
        for (int i = 0; i < dimensions; ++i)
            layout.extents.push_back(bytes.u32());
        bytes.require(std::find(layout.extents.begin(), layout.extents.end(), 0u) == layout.extents.end(),
                      "chunks are empty");
    }
    return layout;
}

void checkFillValue(CFileBytes bytes, bool isOldForm)
{
    if (!isOldForm) {
        const int version = bytes.u8();
        bytes.require(version >= 1 && version <= 3, "a fill value is of an unknown version");
        const quint8 flags = bytes.u8();
        if (version == 3) {
            if ((flags & 0x20) == 0)
                return;
        }
        else {
            bytes.skip(1);
            const bool isDefined = bytes.u8() != 0;
            if (version == 2 && !isDefined)
                return;
        }
    }
    const auto size = bytes.number<qint32>();
    bytes.skip(quint64(std::max(size, 0)));
}

void checkFilters(CFileBytes bytes)
{
    const int version = bytes.u8();
    bytes.require(version == 1 || version == 2, "filters are of an unknown version");
    const int count = bytes.u8();
    bytes.require(count <= 32, "there are too many filters");
    if (version == 1)
        bytes.skip(6); // reserved
    for (int i = 0; i < count; ++i) {
        const quint16 identifier = bytes.u16();
        const quint16 nameBytes = version == 1 || identifier >= 256 ? bytes.u16() : 0;
        bytes.skip(2);
        const quint16 parameters = bytes.u16();
        if (nameBytes > 0) {
            CFileBytes name = bytes.part(version == 1 ? toEights(nameBytes) : nameBytes);
            name.text(1);
        }
        bytes.skip(4 * quint64(parameters));
        if (version == 1 && parameters % 2 != 0) // filled up to eight bytes
            bytes.skip(4);
    }
}

void checkAttribute(CFileBytes bytes)
{
    const int version = bytes.u8();
    bytes.require(version >= 1 && version <= 3, "an attribute is of an unknown version");
    const quint8 flags = bytes.u8();
    const auto stored = [&](quint16 size) -> quint64 { return version == 1 ? toEights(size) : size; };
    const quint64 nameBytes = stored(bytes.u16());
    const quint64 typeBytes = stored(bytes.u16());
    const quint64 extentBytes = stored(bytes.u16());
    if (version == 3)
        bytes.skip(1);
    CFileBytes name = bytes.part(nameBytes);
    name.text(1);
    CFileBytes typePart = bytes.part(typeBytes);
    CFileBytes extentPart = bytes.part(extentBytes);
    if (version > 1 && (flags & 3) != 0) // its type is shared with others, which no deck does
        return;
    const quint64 size = takeType(typePart).size;
    const quint64 elements = takeExtent(extentPart);
    bytes.require(product(elements, size) <= bytes.left(), "an attribute's values end early");
}

} // namespace NBrenmark
