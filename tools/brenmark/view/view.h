#pragma once
// The XDMF view of a deck, for the commands that write one.

#include "brenmark/deck_reader.h"
#include "brenmark/view/left_out.h"

#include <QString>

#include <string>
#include <vector>

namespace NBrenmark {

struct SViewResult
{
    QString path;
    QString moved; ///< file with the vertices of walls that have moved; empty for none
    quint32 timesteps = 0;
    bool damaged = false; ///< a timestep couldn't be read
    CLeftOut leftOut;
};

/// Writes NAME.xmf beside a deck of the HDF5 family, and NAME_view.h5 if walls have moved.
/// \param force   replaces files of these names that no view has made
/// \param values  names of those that are shown; none: all
/// \throws CFailure  among others if no timestep has a value of such a name
SViewResult writeView(CDeckReader& reader, const QString& deck, bool force,
                      const std::vector<std::string>& values = {});

} // namespace NBrenmark
