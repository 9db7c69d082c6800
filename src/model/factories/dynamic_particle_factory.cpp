// When a factory that creates over time is complete, and what a new rate starts from.
#include "model/factories/dynamic_particle_factory.h"

#include "model/factories/factory_size.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

std::unique_ptr<CParticleFactory> CDynamicParticleFactory::clone() const
{
    auto copy = std::make_unique<CDynamicParticleFactory>();
    copyCommonTo(*copy);
    copy->creationTime = creationTime;
    copy->rateChangeTime = rateChangeTime;
    copy->unlimited = unlimited;
    copy->numToCreate = numToCreate;
    copy->massCreation = massCreation;
    copy->massToCreate = massToCreate;
    copy->massGeneration = massGeneration;
    copy->creationRate = creationRate;
    copy->createdSinceRateChange = createdSinceRateChange;
    return copy;
}

bool CDynamicParticleFactory::isComplete() const
{
    if (unlimited)
        return false;
    if (massCreation)
        return massToCreate <= accounting.massCreated;
    return creationCount >= numToCreate;
}

void CDynamicParticleFactory::changeCreationRate(double rate, double time)
{
    creationRate = rate;
    rateChangeTime = time;
    createdSinceRateChange = 0;
    accounting.startRate();
    for (auto& [typeName, account] : typeAccounting)
        account.startRate();
    for (auto& [typeName, size] : sizes)
        if (auto* const byBands = dynamic_cast<CUserDefinedFactorySize*>(size.get()))
            byBands->startRate();
}

void CDynamicParticleFactory::read(IFileVisitorReader& v)
{
    CParticleFactory::read(v);
    v.readDynamicParticleFactory(*this);
}

void CDynamicParticleFactory::write(IFileVisitorWriter& v) const
{
    CParticleFactory::write(v);
    v.writeDynamicParticleFactory(*this);
}

} // namespace NBrenmark
