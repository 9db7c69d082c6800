// The records of regions. Each holds parameters of no known layout: where they end follows from what comes after
// them.
#include "analysis/region_selections.h"

#include "analysis/entry_form.h"

#include <QtEndian>

namespace NBrenmark::NSelection {

/// The two editions of the programs grew side by side, and came to these layouts at different versions.
bool CGeometricRegionSelection::hasTurnedBoxes(const IEntryForm& f)
{
    return f.edition == 1 ? f.since(25, 0, 4) : f.since(30, 0, 15);
}

void CGeometricRegionSelection::anchorForm(IEntryForm& f)
{
    f.text("sectionName", sectionName);
    f.text("startPointName", startPointName);
    f.text("endPointName", endPointName);
    if (f.isReading() && !f.since(30, 0, 18)) // until then both meant something else
        f.dropObsolete({&startPointName, &endPointName});
}

static constexpr int integerBytes = 4;
static constexpr int realBytes = 8;
static constexpr int pointBytes = 3 * realBytes;

/// Length of the parameters at the start of bytes that end in a count, a text and so many bytes more; -1 if there is no
/// text in that place. The text is found from its end: of its letters none is 0, so that the word of its length, which
/// begins with one, can't be passed over.
static qint64 lengthBeforeText(const QByteArray& rest, int bytesAfterText)
{
    constexpr int longestText = 0xFFFE;
    const int end = rest.size() - bytesAfterText;
    for (int length = 0; length <= longestText; length += 2) {
        const int at = end - length - integerBytes;
        if (at < integerBytes)
            return -1;
        const auto word = qFromBigEndian<quint32>(rest.constData() + at);
        const bool isNullText = length == 0 && word == 0xFFFFFFFF;
        if (word == quint32(length) || isNullText)
            return at - integerBytes;
        const auto letter = qFromBigEndian<quint16>(rest.constData() + at + 2);
        if (letter == 0 || letter == 0xFFFF)
            return -1;
    }
    return -1;
}

void CGeometricRegionSelection::rest(IEntryForm& f)
{
    frontForm(f);
    f.geometry("ownGeometry", ownGeometry);
    anchorForm(f);
    f.unlaid("parameters", parameters, [&](const QByteArray& following) {
        return lengthBeforeText(following, 2 * realBytes + bytesAfterValues(f));
    });
    f.i32("elementCount", elementCount);
    f.text("source", source);
    f.f64("value1", value1);
    f.f64("value2", value2);
}

bool CGeometricRegionSelection::place(const GeometryGroups& deck, std::string& why)
{
    placed = volumeOf(*this, deck, why);
    return placed != nullptr;
}

// ---------------------------------------------------------------- lattices

static void binForm(IEntryForm& f, std::array<qint32, 3>& bins)
{
    f.i32("binsX", bins[0]);
    f.i32("binsY", bins[1]);
    f.i32("binsZ", bins[2]);
}

/// The layout of a lattice along the axes.
void CLatticeSelection::cornerForm(IEntryForm& f)
{
    frontForm(f);
    anchorForm(f);
    f.unlaid("parameters", parameters, [](const QByteArray& following) {
        return following.size() - (4 * integerBytes + 2 * pointBytes + 2 * realBytes);
    });
    f.i32("elementCount", elementCount);
    binForm(f, bins);
    C3DPoint lowerCorner;
    f.point("lowerCorner", lowerCorner);
    f.point("size", size);
    centre = lowerCorner + size.toVector() * 0.5;
    rotation = C3DPoint();
    f.f64("value1", value1);
    f.f64("value2", value2);
}

int CLatticeSelection::bytesAfterValues(const IEntryForm&) const { return 3 * integerBytes + 3 * pointBytes; }

void CLatticeSelection::rest(IEntryForm& f)
{
    if (!hasTurnedBoxes(f)) {
        cornerForm(f);
    }
    else {
        CGeometricRegionSelection::rest(f);
        binForm(f, bins);
        f.point("centre", centre);
        f.point("size", size);
        f.point("rotation", rotation);
    }
    if (f.isReading())
        isUpToDate = true;
}

// ---------------------------------------------------------------- meshes and primitives

int CCadTemplateSelection::bytesAfterValues(const IEntryForm& f) const
{
    return (hasTurnedBoxes(f) ? 2 : 1) * pointBytes;
}

void CCadTemplateSelection::rest(IEntryForm& f)
{
    CGeometricRegionSelection::rest(f);
    f.point("triple1", triple1);
    if (hasTurnedBoxes(f))
        f.point("triple2", triple2);
}

int CPrimitiveSelection::bytesAfterValues(const IEntryForm&) const
{
    return 2 * integerBytes + 5 * pointBytes + 2 * realBytes;
}

void CPrimitiveSelection::rest(IEntryForm& f)
{
    CGeometricRegionSelection::rest(f);
    f.i32("shape", shape);
    f.point("origin", origin);
    f.point("firstAxis", firstAxis);
    f.point("secondAxis", secondAxis);
    f.f64("length1", length1);
    f.f64("length2", length2);
    f.point("triple1", triple1);
    f.point("triple2", triple2);
    f.i32("facets", facets);
}

} // namespace NBrenmark::NSelection
