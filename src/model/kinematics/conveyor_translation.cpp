// The velocity of a belt's surface, along its axis as it is turned now.
#include "model/kinematics/conveyor_translation.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

std::unique_ptr<CTimeDepAction> CConveyorTranslation::clone() const
{
    return std::make_unique<CConveyorTranslation>(*this);
}

void CConveyorTranslation::read(IFileVisitorReader& v) { v.readConveyorTranslation(*this); }

void CConveyorTranslation::write(IFileVisitorWriter& v) const { v.writeConveyorTranslation(*this); }

C3DVector CConveyorTranslation::velocityAt(double time) const
{
    const CAxisLine moved(conveyorTransform * axis.startPoint, conveyorTransform * axis.endPoint);
    return velocityAlong(moved.direction(), time);
}

C3DVector CConveyorTranslation::displacementBetween(double, double) const { return C3DVector(); }

} // namespace NBrenmark
