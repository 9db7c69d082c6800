#pragma once
// What belongs to the storing of a converted deck: version records, masks, the header. It has no counterpart in the source
// to be compared with, but one program writes a deck, and the same everywhere in it.

#include "brenmark/deck_reader.h"
#include "brenmark/text_diff.h"

#include <string>
#include <vector>

namespace NBrenmark {

class CSimulationData;
class CParticleTypes;

/// Gathers from the parts of a deck of the HDF5 family what was stored with them.
class CStoringCheck
{
public:
    /// \param number  of the timestep in the frame
    /// \param isNew   whether the frame's model is the first that is seen of it
    void look(const SSimulationFrame& frame, quint32 number, bool isNew);
    void lookAtHeader(const IFileFormatManager& manager);

    /// What doesn't agree.
    /// \param sourceEdition  word of the source's header; it goes over into a deck of the same family
    /// \param isConversion   from the legacy family: everything was written anew
    std::vector<SDifference> differences(quint32 sourceEdition, bool isConversion) const;

    quint32 edition() const { return header.edition; }

    struct SHeader
    {
        quint32 firstVersion = 0;
        quint32 lastVersion = 0;
        quint32 edition = 0;
    };
    const SHeader& storedHeader() const { return header; }
    void setHeader(const SHeader& stored) { header = stored; }

    struct SRecord
    {
        std::string root;
        quint32 version = 0;
        quint32 revision = 0;
        QString branch;
    };
    const std::vector<SRecord>& records() const { return versions; }
    /// Adds those of later parts, which were looked at elsewhere.
    void add(const std::vector<SRecord>& later);
    /// Whether each part holds what its masks say.
    bool masksAgree() const { return masks.empty(); }

private:
    void lookAtRecord(const CSimulationData& data, const std::string& root);
    void lookAtMasks(const CParticleTypes& types, quint32 particleMask, const std::string& root);

    SHeader header;
    std::vector<SRecord> versions; ///< in the order of the timesteps
    std::vector<SDifference> masks;
};

} // namespace NBrenmark
