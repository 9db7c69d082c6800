// The cells of the lattices, and how an editor's record becomes a definition.
#include "model/factories/factory_position.h"

#include "maths/quaternion.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <cstring>

namespace NBrenmark {

template <>
const CFactoryPositionRegistry& CFactoryPositionRegistry::instance()
{
    static const CFactoryPositionRegistry registry =
        of<CRandomFactoryPosition, CCubicFactoryPosition, CBCCFactoryPosition, CFCCFactoryPosition>();
    return registry;
}

C3DPoint unsetPoint()
{
    // Files hold these bits, so they are given, not left to a conversion at run time.
    constexpr quint64 bits = 0x7FF8000020000000u;
    double component = 0.0;
    static_assert(sizeof(component) == sizeof(bits));
    std::memcpy(&component, &bits, sizeof(component));
    return C3DPoint(component, component, component);
}

// ---------------------------------------------------------------- random

/// By EStyle.
static const QLatin1String styleWords[] = {QLatin1String("random"), QLatin1String("random_walk")};

bool CRandomFactoryPosition::setParamData(const IParamData& data)
{
    const auto* const record = dynamic_cast<const CRandomPositionParamData*>(&data);
    if (record == nullptr || (record->style != styleWords[eRandom] && record->style != styleWords[eRandomWalk]))
        return false;
    return CEditedAs::setParamData(data);
}

void CRandomFactoryPosition::takeRecord(const CRandomPositionParamData& data)
{
    style = data.style == styleWords[eRandomWalk] ? eRandomWalk : eRandom;
    maxAngle = data.maxAngle;
    multiFactor = data.multiFactor;
    densityFactor = data.densityFactor;
}

CRandomPositionParamData CRandomFactoryPosition::record() const
{
    CRandomPositionParamData data;
    data.style = styleWords[style == eRandomWalk ? eRandomWalk : eRandom];
    data.maxAngle = maxAngle;
    data.multiFactor = multiFactor;
    data.densityFactor = densityFactor;
    return data;
}

// ---------------------------------------------------------------- lattices

void C3DLattice::takeRecord(const C3DLatticePositionParamData& data)
{
    rotation = data.rotation;
    start = data.start;
    const CQuaternion turn = CQuaternion::fromEuler(rotation);
    axisA = turn.rotate(C3DVector(data.separations.x, 0.0, 0.0));
    axisB = turn.rotate(C3DVector(0.0, data.separations.y, 0.0));
    axisC = turn.rotate(C3DVector(0.0, 0.0, data.separations.z));
}

C3DLatticePositionParamData C3DLattice::record() const
{
    C3DLatticePositionParamData data;
    data.separations = C3DVector(axisA.length(), axisB.length(), axisC.length());
    data.rotation = rotation;
    data.start = start;
    return data;
}

std::vector<C3DPoint> CCubicFactoryPosition::cellOffsets() const { return {}; }

std::vector<C3DPoint> CBCCFactoryPosition::cellOffsets() const { return {C3DPoint(0.5 * (axisA + axisB + axisC))}; }

std::vector<C3DPoint> CFCCFactoryPosition::cellOffsets() const
{
    return {C3DPoint(0.5 * (axisA + axisB)), C3DPoint(0.5 * (axisB + axisC)), C3DPoint(0.5 * (axisA + axisC))};
}

// ---------------------------------------------------------------- visitors

void CRandomFactoryPosition::read(IFileVisitorReader& v) { v.readRandomFactoryPosition(*this); }

void CRandomFactoryPosition::write(IFileVisitorWriter& v) const { v.writeRandomFactoryPosition(*this); }

void C3DLattice::read(IFileVisitorReader& v) { v.read3DLattice(*this); }

void C3DLattice::write(IFileVisitorWriter& v) const { v.write3DLattice(*this); }

void CCubicFactoryPosition::read(IFileVisitorReader& v) { v.readCubicFactoryPosition(*this); }

void CCubicFactoryPosition::write(IFileVisitorWriter& v) const { v.writeCubicFactoryPosition(*this); }

void CBCCFactoryPosition::read(IFileVisitorReader& v) { v.readBCCFactoryPosition(*this); }

void CBCCFactoryPosition::write(IFileVisitorWriter& v) const { v.writeBCCFactoryPosition(*this); }

void CFCCFactoryPosition::read(IFileVisitorReader& v) { v.readFCCFactoryPosition(*this); }

void CFCCFactoryPosition::write(IFileVisitorWriter& v) const { v.writeFCCFactoryPosition(*this); }

} // namespace NBrenmark
