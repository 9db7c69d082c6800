#pragma once
// Particle factories that come from plug-in libraries. Listeners hear of every change, so that the custom properties
// that a factory works on exist as long as it does. Of a factory that can't be bound name and library are kept, so that
// the deck can be stored again.

#include <QString>

#include <memory>
#include <set>
#include <vector>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;
class IPluginParticleFactoryListChangeListener;
class IPluginParticleFactoryWrapper;

/// What a deck stores of a factory.
struct SPluginFactoryEntry
{
    QString name;
    QString library;

    bool operator==(const SPluginFactoryEntry& other) const { return name == other.name && library == other.library; }
};

class CPluginParticleFactoryList
{
public:
    /// The word by which files tell such factories from those that are built in.
    static constexpr const char* word = "library";

    CPluginParticleFactoryList();
    /// Notifies the listeners as clear does, so they must outlive the factories or be removed before.
    ~CPluginParticleFactoryList();
    CPluginParticleFactoryList(const CPluginParticleFactoryList&) = delete;
    CPluginParticleFactoryList& operator=(const CPluginParticleFactoryList&) = delete;

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Binds a factory of a library and puts it at the end. \return null, and nothing is added, if that can't be bound,
    /// or a listener refuses it
    IPluginParticleFactoryWrapper* addFactory(const QString& fileName, const QString& name);
    /// Keeps what a deck says of a factory that can't be bound.
    void keepUnbound(const QString& fileName, const QString& name) { unbound.push_back({name, fileName}); }
    /// What is to be stored: the factories, then those that aren't bound.
    std::vector<SPluginFactoryEntry> entries() const;
    /// Puts a bound factory at the end. \return false, and the factory is gone, if a listener refuses it
    bool add(std::unique_ptr<IPluginParticleFactoryWrapper> added);
    quint32 count() const { return static_cast<quint32>(factories.size()); }
    /// Null when out of range.
    IPluginParticleFactoryWrapper* factory(quint32 index) const;
    void removeFactory(quint32 index);
    void clear();
    /// Whether a file was asked for the list since it was last cleared.
    bool isRead = false;

    /// Hears of what changes from now on. Not owned.
    void addListener(IPluginParticleFactoryListChangeListener* listener);
    void removeListener(IPluginParticleFactoryListChangeListener* listener);

private:
    std::vector<std::unique_ptr<IPluginParticleFactoryWrapper>> factories;
    std::vector<SPluginFactoryEntry> unbound;
    std::set<IPluginParticleFactoryListChangeListener*> listeners;
};

} // namespace NBrenmark
