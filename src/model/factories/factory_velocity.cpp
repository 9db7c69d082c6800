// Draws velocities.
#include "model/factories/factory_velocity.h"

#include "maths/quaternion.h"
#include "platform/random.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

template <>
const CFactoryVelocityRegistry& CFactoryVelocityRegistry::instance()
{
    static const CFactoryVelocityRegistry registry =
        of<CNormalFactoryVelocity, CFixedFactoryVelocity, CRandomFactoryVelocity, CLinearFactoryVelocity,
           CSprayFactoryVelocity>();
    return registry;
}

C3DVector CLinearFactoryVelocity::sample() const
{
    const double u = uniform();
    const bool starts = startVelocity.length() > zeroLength;
    const bool ends = endVelocity.length() > zeroLength;
    if (starts && ends)
        return startVelocity + u * (endVelocity - startVelocity);
    return u * (starts ? startVelocity : endVelocity);
}

C3DVector CSprayFactoryVelocity::sample() const
{
    const CRandomDistribution component(-1.0, 1.0);
    const double a = component.sample();
    const double b = component.sample();
    component.sample(); // unused, but the sequence goes on after it
    const double angle = CRandomDistribution(-sprayAngle, sprayAngle).sample();
    const CQuaternion turn = CQuaternion::fromAxisAngle(C3DVector(0.0, a, -b), angle);
    return turn.rotate(direction.normalised()).normalised() * magnitude.sample();
}

void CSprayFactoryVelocity::takeRecord(const CSprayVelocityParamData& data)
{
    direction = data.direction;
    sprayAngle = data.sprayAngle;
    magnitude.mean = data.mean;
    magnitude.deviation = data.deviation;
}

CSprayVelocityParamData CSprayFactoryVelocity::record() const
{
    CSprayVelocityParamData data;
    data.direction = direction;
    data.sprayAngle = sprayAngle;
    data.mean = magnitude.mean;
    data.deviation = magnitude.deviation;
    data.unitsType = quantity;
    return data;
}

void CFixedFactoryVelocity::read(IFileVisitorReader& v) { v.readFixedFactoryVelocity(*this); }

void CFixedFactoryVelocity::write(IFileVisitorWriter& v) const { v.writeFixedFactoryVelocity(*this); }

void CLinearFactoryVelocity::read(IFileVisitorReader& v) { v.readLinearFactoryVelocity(*this); }

void CLinearFactoryVelocity::write(IFileVisitorWriter& v) const { v.writeLinearFactoryVelocity(*this); }

void CRandomFactoryVelocity::read(IFileVisitorReader& v) { v.readRandomFactoryVelocity(*this); }

void CRandomFactoryVelocity::write(IFileVisitorWriter& v) const { v.writeRandomFactoryVelocity(*this); }

void CNormalFactoryVelocity::read(IFileVisitorReader& v) { v.readNormalFactoryVelocity(*this); }

void CNormalFactoryVelocity::write(IFileVisitorWriter& v) const { v.writeNormalFactoryVelocity(*this); }

void CSprayFactoryVelocity::read(IFileVisitorReader& v) { v.readSprayFactoryVelocity(*this); }

void CSprayFactoryVelocity::write(IFileVisitorWriter& v) const { v.writeSprayFactoryVelocity(*this); }

} // namespace NBrenmark
