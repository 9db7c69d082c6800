#pragma once
// Decks on disk for the tests of the legacy manager.

#include "io/dem/dem_io_manager.h"
#include "support/legacy_deck.h"
#include "support/log_capture.h"
#include "support/managed_deck.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace NBrenmark {

class CManagedDeck : public CManaged<CDemIoManager>
{
public:
    explicit CManagedDeck(qint64 segmentLimit = CDemIoManager::fullSegment) : CManaged(segmentLimit) {}

    bool hasFile(quint32) const { return true; }
    /// Adds the frame's timestep, with another time, after the others.
    bool append(double time, bool creatorChanged = false)
    {
        timestep().time = time;
        timestep().timestepIndex = static_cast<quint32>(index.size());
        index.emplace_back();
        index.back().time = time;
        return manager->appendTimestep(frame(), index, creatorChanged, true);
    }
};

inline std::string storyOf(const QString& path) { return storyOf<CManagedDeck>(path, 72); }

/// Five timesteps in three segments: two of one model, two of the next, and one that has both a
/// segment and a model of its own.
inline CLegacyDeck segmentedDeck(quint32 version = makeVersion(27, 0, 3))
{
    SDeckCreator model = sampleCreator();
    CLegacyDeck deck(version);
    model.title = "A";
    deck.creator(model).timestep(sampleTimestep(0.1)).timestep(sampleTimestep(0.2));
    model.title = "B";
    deck.nextSegment().creator(model).timestep(sampleTimestep(0.3)).timestep(sampleTimestep(0.4));
    model.title = "C";
    deck.nextSegment().creator(model).timestep(sampleTimestep(0.5));
    return deck;
}

} // namespace NBrenmark
