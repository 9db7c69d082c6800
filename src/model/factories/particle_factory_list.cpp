// The factories of a group, found by name as timesteps name them.
#include "model/factories/particle_factory_list.h"

#include "model/factories/particle_factory.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

CParticleFactoryList::CParticleFactoryList() = default;

CParticleFactoryList::~CParticleFactoryList() = default;

void CParticleFactoryList::read(IFileVisitorReader& v) { v.readParticleFactoryList(*this); }

void CParticleFactoryList::write(IFileVisitorWriter& v) const { v.writeParticleFactoryList(*this); }

CParticleFactory* CParticleFactoryList::find(const QString& name) const
{
    const auto found =
        std::find_if(factories.begin(), factories.end(),
                     [&](const std::unique_ptr<CParticleFactory>& factory) { return factory->name == name; });
    return found != factories.end() ? found->get() : nullptr;
}

CParticleFactory& CParticleFactoryList::add(std::unique_ptr<CParticleFactory> factory)
{
    factory->sectionName = sectionName;
    if (customProperties != nullptr)
        factory->connectCustomProperties(customProperties);
    factories.push_back(std::move(factory));
    return *factories.back();
}

void CParticleFactoryList::setSectionName(const QString& name)
{
    sectionName = name;
    for (const std::unique_ptr<CParticleFactory>& factory : factories)
        factory->sectionName = name;
}

void CParticleFactoryList::setBoundingShape(IFactoryBoundingShape* shape)
{
    for (const std::unique_ptr<CParticleFactory>& factory : factories)
        factory->setBoundingShape(shape);
}

void CParticleFactoryList::clear() { factories.clear(); }

} // namespace NBrenmark
