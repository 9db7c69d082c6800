// The factories of libraries in the order in which they were added, and what is known of those that aren't there.
#include "model/factories/plugin_factory_list.h"

#include "model/factories/plugin_factory.h"
#include "model/factories/plugins/particle_factories.h"
#include "physics/physics_listener.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

CPluginParticleFactoryList::CPluginParticleFactoryList() = default;

CPluginParticleFactoryList::~CPluginParticleFactoryList() { clear(); }

void CPluginParticleFactoryList::read(IFileVisitorReader& v) { v.readPluginParticleFactoryList(*this); }

void CPluginParticleFactoryList::write(IFileVisitorWriter& v) const { v.writePluginParticleFactoryList(*this); }

IPluginParticleFactoryWrapper* CPluginParticleFactoryList::addFactory(const QString& fileName, const QString& name)
{
    std::unique_ptr<IPluginParticleFactoryWrapper> factory = NApiFactory::bindParticleFactory(fileName, name, this);
    return factory != nullptr && add(std::move(factory)) ? factories.back().get() : nullptr;
}

std::vector<SPluginFactoryEntry> CPluginParticleFactoryList::entries() const
{
    std::vector<SPluginFactoryEntry> all;
    for (const std::unique_ptr<IPluginParticleFactoryWrapper>& factory : factories)
        all.push_back({factory->name, factory->libraryName});
    all.insert(all.end(), unbound.begin(), unbound.end());
    return all;
}

bool CPluginParticleFactoryList::add(std::unique_ptr<IPluginParticleFactoryWrapper> added)
{
    for (IPluginParticleFactoryListChangeListener* listener : listeners) {
        if (listener->modelAdded(*added))
            continue;
        added->unloadPlugin();
        return false;
    }
    factories.push_back(std::move(added));
    for (IPluginParticleFactoryListChangeListener* listener : listeners)
        listener->modelPlaced(*factories.back());
    return true;
}

IPluginParticleFactoryWrapper* CPluginParticleFactoryList::factory(quint32 index) const
{
    return index < factories.size() ? factories[index].get() : nullptr;
}

void CPluginParticleFactoryList::removeFactory(quint32 index)
{
    IPluginParticleFactoryWrapper* const removed = factory(index);
    if (removed == nullptr)
        return;
    for (IPluginParticleFactoryListChangeListener* listener : listeners)
        listener->modelRemoved(*removed);
    removed->unloadPlugin();
    factories.erase(factories.begin() + static_cast<std::ptrdiff_t>(index));
}

void CPluginParticleFactoryList::clear()
{
    while (!factories.empty())
        removeFactory(count() - 1);
    unbound.clear();
    isRead = false;
}

void CPluginParticleFactoryList::addListener(IPluginParticleFactoryListChangeListener* listener)
{
    listeners.insert(listener);
}

void CPluginParticleFactoryList::removeListener(IPluginParticleFactoryListChangeListener* listener)
{
    listeners.erase(listener);
}

} // namespace NBrenmark
