#pragma once
// The values of a view that the user chose by their names.

#include "brenmark/view/grids.h"

#include <set>
#include <string>
#include <vector>

namespace NBrenmark {

class CChosenValues
{
public:
    /// \param names  none: all values are shown
    explicit CChosenValues(const std::vector<std::string>& names) : wanted(names.begin(), names.end()) {}

    /// Whether one of the names is to be shown: those of a dataset and of what is made of it.
    bool hasAny(const std::vector<std::string>& names);
    /// Takes out what isn't to be shown.
    void keepIn(SViewStep& step);
    /// \throws CFailure  no timestep had values of a chosen name
    void requireAll() const;

private:
    const std::set<std::string> wanted;
    std::set<std::string> offered; ///< names that a deck may have
    std::set<std::string> shown;
};

} // namespace NBrenmark
