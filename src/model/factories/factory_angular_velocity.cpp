// Draws angular velocities. The linear kind has a rule of its own, other than that of velocities.
#include "model/factories/factory_angular_velocity.h"

#include "maths/quaternion.h"
#include "platform/random.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

template <>
const CFactoryAngVelRegistry& CFactoryAngVelRegistry::instance()
{
    static const CFactoryAngVelRegistry registry =
        of<CNormalFactoryAngVel, CFixedFactoryAngVel, CRandomFactoryAngVel, CLinearFactoryAngVel>();
    return registry;
}

C3DVector CLinearFactoryAngVel::sample() const
{
    const double u = uniform();
    const double start = startVelocity.length();
    const double end = endVelocity.length();
    if (end <= zeroLength)
        return u * startVelocity;
    if (start <= zeroLength)
        return u * endVelocity;
    // Of parallel vectors the quotient may pass 1 by a rounding, and has no arc then.
    const double cosine = std::clamp(startVelocity.dot(endVelocity) / (start * end), -1.0, 1.0);
    const C3DVector axis = endVelocity.cross(startVelocity).normalised();
    const CQuaternion turn = CQuaternion::fromAxisAngle(axis, std::acos(cosine) * u);
    return (start / end) * u * turn.rotate(endVelocity);
}

void CFixedFactoryAngVel::read(IFileVisitorReader& v) { v.readFixedFactoryAngVel(*this); }

void CFixedFactoryAngVel::write(IFileVisitorWriter& v) const { v.writeFixedFactoryAngVel(*this); }

void CLinearFactoryAngVel::read(IFileVisitorReader& v) { v.readLinearFactoryAngVel(*this); }

void CLinearFactoryAngVel::write(IFileVisitorWriter& v) const { v.writeLinearFactoryAngVel(*this); }

void CRandomFactoryAngVel::read(IFileVisitorReader& v) { v.readRandomFactoryAngVel(*this); }

void CRandomFactoryAngVel::write(IFileVisitorWriter& v) const { v.writeRandomFactoryAngVel(*this); }

void CNormalFactoryAngVel::read(IFileVisitorReader& v) { v.readNormalFactoryAngVel(*this); }

void CNormalFactoryAngVel::write(IFileVisitorWriter& v) const { v.writeNormalFactoryAngVel(*this); }

} // namespace NBrenmark
