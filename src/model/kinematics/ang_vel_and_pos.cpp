// Hands rotations to the visitors.
#include "model/kinematics/ang_vel_and_pos.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CAngVelAndPos::read(IFileVisitorReader& v) { v.readAngVelAndPos(*this); }

void CAngVelAndPos::write(IFileVisitorWriter& v) const { v.writeAngVelAndPos(*this); }

void AngVelAndPosList::read(IFileVisitorReader& v) { v.readAngVelAndPosList(*this); }

void AngVelAndPosList::write(IFileVisitorWriter& v) const { v.writeAngVelAndPosList(*this); }

} // namespace NBrenmark
