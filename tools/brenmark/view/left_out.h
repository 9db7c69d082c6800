#pragma once
// What a picture or an export of a deck doesn't show, counted and reported once for all timesteps.

#include "brenmark/deck_reader.h"
#include "brenmark/json_text.h"

#include <QtGlobal>

#include <map>
#include <string>

namespace NBrenmark {

class CLeftOut
{
public:
    /// \param what  "velocity of particles Ball: not saved"; comes from a deck and may hold any character
    void add(const std::string& what, quint32 timestep);
    bool empty() const { return places.empty(); }
    /// On standard error, a line for each: how often, and from which timestep on.
    void print(const std::string& deck) const;
    /// An object for each: what, in how many timesteps, and the first of them.
    Json json() const;

private:
    struct SPlaces
    {
        quint32 first = 0;
        quint32 last = 0;
        quint32 timesteps = 0;
    };
    std::map<std::string, SPlaces> places;
};

/// Loads a timestep. \return null, with the reason among what is left out, if the deck lacks it or it can't be read
/// \throws CFailure  for any other reason
SSimulationFrame* readableTimestep(CDeckReader& reader, quint32 number, CLeftOut& leftOut);

} // namespace NBrenmark
