#pragma once
// The titles of messages, by what was being done, each with the one who is at fault when that fails.

#include "core/cause.h"

namespace NBrenmark {

struct SLogTitle
{
    const char* text;
    ECause blame; ///< eCauseNone where reads and writes share a title: the message itself has to say
};

namespace NLogTitle {

constexpr SLogTitle legacyRead{"Legacy read", eCauseSource};
constexpr SLogTitle legacyWrite{"Legacy write", eCauseTarget};
constexpr SLogTitle hdf5Read{"HDF5 read", eCauseSource};
constexpr SLogTitle hdf5Write{"HDF5 write", eCauseTarget};
constexpr SLogTitle hdf5Names{"HDF5 names", eCauseNames}; ///< a name or text that the family can't hold
constexpr SLogTitle dataLoss{"POSSIBLE DATA LOSS", eCauseSource};
constexpr SLogTitle settings{"Settings", eCauseNone};
constexpr SLogTitle configuration{"Configuration", eCauseNone};
constexpr SLogTitle conversion{"Conversion", eCauseNone};
constexpr SLogTitle conversionProblem{"CONVERSION", eCauseSource}; ///< what a user should see to
constexpr SLogTitle customProperties{"Custom properties", eCauseSource};
constexpr SLogTitle geometry{"Geometry", eCauseSource};
constexpr SLogTitle textureError{"Texture co-ordinate mapping error", eCauseInternal};
constexpr SLogTitle xmlAnalysis{"Analysing XML File", eCauseSource}; ///< what it holds that nothing here knows
constexpr SLogTitle xmlImport{"Importing XML File", eCauseSource};
constexpr SLogTitle xmlExport{"Exporting XML File", eCauseTarget};
constexpr SLogTitle serialiser{"Serialiser", eCauseInternal};

} // namespace NLogTitle

} // namespace NBrenmark
