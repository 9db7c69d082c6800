#include "model/geometry_groups.h"
#include "io/text/text_writer.h"
#include "results/ang_vel_and_pos.h"

namespace NBrenmark {

void CTextWriter::writeGeometryGroups(const GeometryGroups& groups) { out.value("count", groups.count()); }

void CTextWriter::writeAngVelAndPosList(const AngVelAndPosList& list)
{
    for (size_t i = 0; i < list.size(); ++i)
        out.group(std::to_string(i), [&] { list[i].write(*this); });
}

void CTextWriter::writeAngVelAndPos(const CAngVelAndPos& rotation)
{
    out.value("angularVelocity", rotation.angularVelocity);
    out.value("pointOfAction", rotation.pointOfAction);
}

} // namespace NBrenmark
