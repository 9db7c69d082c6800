// Copying a factory that fills its section once, and handing it to the visitors.
#include "model/factories/static_particle_factory.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

std::unique_ptr<CParticleFactory> CStaticParticleFactory::clone() const
{
    auto copy = std::make_unique<CStaticParticleFactory>();
    copyCommonTo(*copy);
    copy->completed = completed;
    copy->creationTime = creationTime;
    copy->fillShape = fillShape;
    copy->numToCreate = numToCreate;
    copy->massCreation = massCreation;
    copy->massToCreate = massToCreate;
    return copy;
}

void CStaticParticleFactory::read(IFileVisitorReader& v)
{
    CParticleFactory::read(v);
    v.readStaticParticleFactory(*this);
}

void CStaticParticleFactory::write(IFileVisitorWriter& v) const
{
    CParticleFactory::write(v);
    v.writeStaticParticleFactory(*this);
}

} // namespace NBrenmark
