#pragma once
// The ordered list of all particle types, with the lookup from a particle id to type and slot.

#include "model/particle_id_lookup.h"
#include "model/particle_type.h"

#include <QStringList>
#include <memory>
#include <mutex>

namespace NBrenmark {

struct SLogTitle;

class CParticleTypes
{
public:
    static constexpr quint32 noType = 0xFFFFFFFFu;

    /// \param propertyManager  of the particle properties; not owned, may be null
    explicit CParticleTypes(CCustomPropertyManager* propertyManager);
    CParticleTypes(const CParticleTypes&) = delete;
    CParticleTypes& operator=(const CParticleTypes&) = delete;

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Deletes the types, empties the lookups, maxId to 0.
    void clear();
    /// Replaces all types by so many new, empty ones; maxId stays.
    void recreate(quint32 count);
    /// Appends a new, empty type.
    CParticleType& append();

    quint32 count() const { return static_cast<quint32>(types.size()); }
    /// Of the particle properties; may be null.
    CCustomPropertyManager* properties() const { return propertyManager; }
    /// The last type of that exact name, or null.
    CParticleType* find(const QString& name) const;
    /// Of the last type of that exact name. \return false, with nothing changed, if there is none
    bool findIndex(const QString& name, quint32& outIndex) const;
    /// The display names without duplicates, in order.
    QStringList names() const;
    std::vector<std::string> typesOfMaterial(const QString& materialName) const;
    /// Live particles of all types.
    quint32 particleCount() const;
    /// Live particles of the first type of that name; 0 when absent.
    quint32 particleCount(const QString& name) const;
    double maxExtentOfType(const QString& name) const;
    bool radiusRange(double& min, double& max, bool physical) const;
    bool allocateParticle(const QString& typeName, quint32& typeIndex, quint32& slot);

    /// Brings the list in order that was read.
    /// \param storedMaxId  of the file; a negative one asks for a count. One that the particles contradict is reported
    void settle(qint64 storedMaxId, const SLogTitle& title);
    /// Makes locate and its kin answer for the ids from 1 to maxId that are in the store now.
    void rebuildIdLookup();
    /// Raises maxId to the greatest live id; with reset it starts from 0.
    void recomputeMaxId(bool reset);
    /// \return false if the id has no live particle
    bool locate(quint32 id, quint32& typeIndex, quint32& slot) const;
    /// 0 if the id has no live particle.
    double scaleOf(quint32 id) const;
    /// May be called from parallel loops.
    bool setScaleOf(quint32 id, double value);
    void updateAllSpherePositions();

    std::vector<std::unique_ptr<CParticleType>> types; ///< definition order, the order of the file
    quint32 maxId = 0;                                 ///< greatest particle id in use
    const CDomain* domain = nullptr;                   ///< not owned; set before a read

private:
    CCustomPropertyManager* propertyManager;
    CParticleIdLookup lookup;
    std::mutex lock;
};

} // namespace NBrenmark
