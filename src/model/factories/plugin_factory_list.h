#pragma once
// Particle factories that come from plug-in libraries. Listeners hear of every change, so that the custom properties
// that a factory works on exist as long as it does. Readers report what can't be bound and leave it out.

#include <QString>

#include <memory>
#include <set>
#include <vector>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;
class IPluginParticleFactoryListChangeListener;
class IPluginParticleFactoryWrapper;

class CPluginParticleFactoryList
{
public:
    CPluginParticleFactoryList();
    /// Tells the listeners as clear does, so they must outlive the factories or be removed before.
    ~CPluginParticleFactoryList();
    CPluginParticleFactoryList(const CPluginParticleFactoryList&) = delete;
    CPluginParticleFactoryList& operator=(const CPluginParticleFactoryList&) = delete;

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Binds a factory of a library. No library can be bound yet. \return false, and nothing is added
    bool addFactory(const QString& /*fileName*/, const QString& /*name*/) { return false; }
    /// Puts a bound factory at the end. \return false, and the factory is gone, if a listener refuses it
    bool add(std::unique_ptr<IPluginParticleFactoryWrapper> added);
    quint32 count() const { return static_cast<quint32>(factories.size()); }
    /// Null when out of range.
    IPluginParticleFactoryWrapper* factory(quint32 index) const;
    void removeFactory(quint32 index);
    void clear();

    /// Hears of what changes from now on. Not owned.
    void addListener(IPluginParticleFactoryListChangeListener* listener);
    void removeListener(IPluginParticleFactoryListChangeListener* listener);

private:
    std::vector<std::unique_ptr<IPluginParticleFactoryWrapper>> factories;
    std::set<IPluginParticleFactoryListChangeListener*> listeners;
};

} // namespace NBrenmark
