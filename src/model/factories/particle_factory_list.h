#pragma once
// The factories of a geometry group.

#include <QString>
#include <memory>
#include <vector>

namespace NBrenmark {

class CCustomPropertyManager;
class CParticleFactory;
class IFactoryBoundingShape;
class IFileVisitorReader;
class IFileVisitorWriter;

class CParticleFactoryList
{
public:
    CParticleFactoryList();
    ~CParticleFactoryList();
    CParticleFactoryList(const CParticleFactoryList&) = delete;
    CParticleFactoryList& operator=(const CParticleFactoryList&) = delete;

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// The first factory of that name, or null.
    CParticleFactory* find(const QString& name) const;
    /// Appends; the factory takes the list's section name and listens to its property manager.
    CParticleFactory& add(std::unique_ptr<CParticleFactory> factory);
    /// The name of the geometry group, for the list and each of its factories.
    void setSectionName(const QString& name);
    /// What the factories fill.
    /// \param shape  not owned
    void setBoundingShape(IFactoryBoundingShape* shape);
    void clear();

    std::vector<std::unique_ptr<CParticleFactory>> factories; ///< in the order of creation
    QString sectionName;
    CCustomPropertyManager* customProperties = nullptr; ///< of the particles, for new factories; not owned
};

} // namespace NBrenmark
