#include "brenmark/view/left_out.h"

#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

namespace NBrenmark {

void CLeftOut::add(const std::string& what, quint32 timestep)
{
    SPlaces& place = places[what];
    if (place.timesteps == 0)
        place.first = timestep;
    else if (place.last == timestep)
        return;
    place.last = timestep;
    ++place.timesteps;
}

void CLeftOut::print(const std::string& deck) const
{
    for (const auto& [what, place] : places)
        printError("brenmark: " + oneLine(deck) + ": left out: " + oneLine(what) + ", " +
                   (place.timesteps == 1
                        ? "timestep " + std::to_string(place.first)
                        : countText(place.timesteps, "timestep") + " from " + std::to_string(place.first) + " on") +
                   "\n");
}

Json CLeftOut::json() const
{
    Json list = Json::array();
    for (const auto& [what, place] : places)
        list.push_back({{"what", what}, {"timesteps", place.timesteps}, {"first", place.first}});
    return list;
}

SSimulationFrame* readableTimestep(CDeckReader& reader, quint32 number, CLeftOut& leftOut)
{
    const auto lost = [&](const std::string& cause) {
        leftOut.add("all of it: " + cause, number);
        return nullptr;
    };
    if (reader.format() == eFormatHdf5 && reader.index()[number].offset == 0)
        return lost("its file isn't there");
    try {
        return &reader.loadedTimestep(number);
    }
    catch (const CFailure& failure) {
        if (failure.code != eExitSource)
            throw;
        return lost(failure.what());
    }
}

} // namespace NBrenmark
