// Rows of collision records. Each family has some of the arrays; all that it has are of one length.
#include "results/collisions.h"

#include "core/counted.h"
#include "core/log.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

// ---------------------------------------------------------------- every array, once

template <class TEnd, class TVisit>
static void forEachEndArray(TEnd& end, quint32 fields, const TVisit& visit)
{
    const auto visitIf = [&](quint32 field, auto& array) {
        if ((fields & field) != 0)
            visit(array);
    };
    visitIf(eEndIds, end.ids);
    visitIf(eEndVelocity, end.velocity);
    visitIf(eEndPosition, end.position);
    visitIf(eEndRadius, end.radius);
    visitIf(eEndAngularVelocity, end.angularVelocity);
    visitIf(eEndOrientation, end.orientation);
}

template <class TVisit>
static void forEachArray(CCollisionsBase& c, quint32 fields, const TVisit& visit)
{
    const auto visitIf = [&](quint32 field, auto& array) {
        if ((fields & field) != 0)
            visit(array);
    };
    visitIf(eCollisionIds, c.ids);
    visitIf(eCollisionStartTime, c.startTime);
    visitIf(eCollisionPosition, c.position);
    visitIf(eCollisionUnitCpVector, c.unitCpVector);
    visitIf(eCollisionRelativeVelocity, c.relativeVelocity);
    forEachEndArray(c.first, fields, visit);
    forEachEndArray(c.second, fields >> secondEndShift, visit);
    visitIf(eCollisionMaxNormalForce, c.maxNormalForce);
    visitIf(eCollisionMaxTangentialForce, c.maxTangentialForce);
    visitIf(eCollisionIterations, c.iterations);
    visitIf(eCollisionNormalEnergy, c.normalEnergy);
    visitIf(eCollisionShearEnergy, c.shearEnergy);
    visitIf(eCollisionTotalNormalForce, c.totalNormalForce);
    visitIf(eCollisionTotalTangentialForce, c.totalTangentialForce);
    visitIf(eCollisionEndTime, c.endTime);
}

// ---------------------------------------------------------------- a family

void CCollisionsBase::read(IFileVisitorReader& v) { v.readCollisionsBase(*this); }

void CCollisionsBase::write(IFileVisitorWriter& v) const { v.writeCollisionsBase(*this); }

quint32 CCollisionsBase::liveCount() const
{
    return static_cast<quint32>(ids.size()) - static_cast<quint32>(std::count(ids.begin(), ids.end(), 0u));
}

void CCollisionsBase::reserveRecords(std::size_t count)
{
    forEachArray(*this, mask, [count](auto& array) { array.reserve(count); });
}

template <class T>
static void resizeWithZeros(std::vector<T>& array, std::size_t count)
{
    array.resize(count);
}

static void resizeWithZeros(std::vector<CQuaternion>& array, std::size_t count)
{
    array.resize(count, CQuaternion(0.0, 0.0, 0.0, 0.0));
}

void CCollisionsBase::resizeRecords(std::size_t count)
{
    forgetColumns();
    forEachArray(*this, mask, [count](auto& array) { resizeWithZeros(array, count); });
}

void CCollisionsBase::clear()
{
    forgetColumns();
    forEachArray(*this, eAllCollisionFields, [](auto& array) { array.clear(); });
}

void CCollisionsBase::copyRecord(quint32 source, quint32 target, quint32 fieldSet)
{
    forgetColumns();
    const quint32 fields = fieldSet == eOwnCollisionFields ? mask : fieldSet & mask;
    forEachArray(*this, fields, [=](auto& array) { array[target] = array[source]; });
}

bool CCollisionsBase::dropForeignArrays()
{
    bool dropped = false;
    forEachArray(*this, eAllCollisionFields & ~mask, [&dropped](auto& array) {
        dropped = dropped || !array.empty();
        array.clear();
    });
    return dropped;
}

void CCollisionsBase::settle(quint32 count, quint32 fields, const SLogTitle& title)
{
    if (dropForeignArrays())
        report(eLost, title, counted(count, "collision") + " with more of the second end than a triangle has: dropped.",
               count);
    const bool hasData = (fields & mask) != 0;
    if (!hasData && count > 0)
        report(eLost, title, counted(count, "collision") + " without data dropped.", count);
    resizeRecords(hasData ? count : 0);
}

// ---------------------------------------------------------------- both

void CCollisions::read(IFileVisitorReader& v) { v.readCollisions(*this); }

void CCollisions::write(IFileVisitorWriter& v) const { v.writeCollisions(*this); }

void CCollisions::clear()
{
    surfaceSurface.clear();
    surfaceGeometry.clear();
}

// ---------------------------------------------------------------- values by the names of attributes

bool CCollisionsBase::getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                               quint32 row) const
{
    out = NAttributes::SAttributeValue();
    return attribute != nullptr && row == allRows ? columnOf(out, *attribute) : readRows(out, attribute, row);
}

bool CCollisionsBase::readRows(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                               quint32 row) const
{
    return valueOfRows(
        out, row, recordCount(), attribute, [this](quint32 i) { return ids[i] != 0; },
        [&](NAttributes::SAttributeValue& one, quint32 i) { return attribute->valueForCollision(one, *this, i); });
}

} // namespace NBrenmark
