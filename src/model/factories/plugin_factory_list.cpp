// No plug-in is loaded here: what a deck names is kept out of the list and reported by its reader.
#include "model/factories/plugin_factory_list.h"

#include "model/factories/plugin_factory.h"
#include "physics/physics_listener.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

CPluginParticleFactoryList::CPluginParticleFactoryList() = default;

CPluginParticleFactoryList::~CPluginParticleFactoryList() { clear(); }

void CPluginParticleFactoryList::read(IFileVisitorReader& v) { v.readPluginParticleFactoryList(*this); }

void CPluginParticleFactoryList::write(IFileVisitorWriter& v) const { v.writePluginParticleFactoryList(*this); }

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
