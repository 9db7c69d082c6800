// Keeps the quaternion of a file beside the matrix that follows from it, so that what is written is what was read.
#include "model/factories/factory_orientation.h"

#include "model/factories/factory_vectors.h"
#include "platform/random.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

template <>
const CFactoryOrientationRegistry& CFactoryOrientationRegistry::instance()
{
    static const CFactoryOrientationRegistry registry = of<CRandomFactoryOrientation, CFixedFactoryOrientation>();
    return registry;
}

CQuaternion CRandomFactoryOrientation::sample() const
{
    constexpr double halfTurn = 3.14159265358979323846; // rad
    // Each in a statement of its own: the order of the draws is part of the sequence.
    C3DVector axis;
    axis.z = uniform();
    axis.y = uniform();
    axis.x = uniform();
    const double angle = CRandomDistribution(-halfTurn, halfTurn).sample();
    return CQuaternion::fromAxisAngle(unitUnlessZero(axis), angle);
}

CQuaternion CFixedFactoryOrientation::quaternion() const
{
    const C3DMatrix own = taken.toMatrix();
    const bool isTaken = std::equal(own.data(), own.data() + 9, orientation.data());
    return isTaken ? taken : CQuaternion::fromMatrix(orientation);
}

void CFixedFactoryOrientation::setQuaternion(const CQuaternion& turn)
{
    taken = turn;
    orientation = turn.toMatrix();
}

void CFixedFactoryOrientation::read(IFileVisitorReader& v) { v.readFixedFactoryOrientation(*this); }

void CFixedFactoryOrientation::write(IFileVisitorWriter& v) const { v.writeFixedFactoryOrientation(*this); }

} // namespace NBrenmark
