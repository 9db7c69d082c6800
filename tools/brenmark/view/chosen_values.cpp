#include "brenmark/view/chosen_values.h"

#include "brenmark/failure.h"
#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"

#include <algorithm>

namespace NBrenmark {

bool CChosenValues::hasAny(const std::vector<std::string>& names)
{
    if (wanted.empty())
        return true;
    offered.insert(names.begin(), names.end());
    return std::any_of(names.begin(), names.end(), [this](const std::string& name) { return wanted.count(name) > 0; });
}

void CChosenValues::keepIn(SViewStep& step)
{
    if (wanted.empty())
        return;
    for (SGrid& grid : step.grids) {
        const auto isOther = [this](const SNamedArray& array) { return wanted.count(array.name) == 0; };
        grid.values.erase(std::remove_if(grid.values.begin(), grid.values.end(), isOther), grid.values.end());
        for (const SNamedArray& array : grid.values)
            shown.insert(array.name);
    }
}

void CChosenValues::requireAll() const
{
    for (const std::string& name : wanted)
        if (shown.count(name) == 0) {
            const std::string nearest =
                offered.count(name) > 0 ? "" : nearestOf(name, {offered.begin(), offered.end()});
            throw CFailure(eExitUsage, "--values: no timestep has values named \"" + oneLine(name) + '"',
                           nearest.empty() ? "A view without --values shows all names."
                                           : "Did you mean " + oneLine(nearest) + "?");
        }
}

} // namespace NBrenmark
