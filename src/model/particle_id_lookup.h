#pragma once
// From a particle's id to its type and slot.

#include <QtGlobal>
#include <memory>
#include <vector>

namespace NBrenmark {

class CParticleType;

/// Direct indexing by id, at eight bytes an id. Where the ids are few among many numbers, as the ids of
/// a damaged file or of a long run that lost most of its particles, a sorted list instead: memory goes
/// with the particles that there are and not with the greatest number that a file holds.
class CParticleIdLookup
{
public:
    using Types = std::vector<std::unique_ptr<CParticleType>>;

    /// Takes the live ids from 1 to maxId. Of slots with one id one in the last type is found.
    void rebuild(const Types& types, quint32 maxId);
    void clear();
    bool find(quint32 id, quint32& typeIndex, quint32& slot) const;

private:
    struct SEntry
    {
        quint32 id;
        quint32 typeIndex;
        quint32 slot;
    };

    void fillTables(const Types& types, quint32 greatest);
    void fillList(const Types& types, quint32 greatest);

    std::vector<quint32> typeOfId;
    std::vector<quint32> slotOfId;
    std::vector<SEntry> entries; ///< by id; in place of the two tables
};

} // namespace NBrenmark
