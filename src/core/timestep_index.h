#pragma once
// The list of saved timesteps, as both file families fill it.

#include <QtGlobal>
#include <vector>

namespace NBrenmark {

struct STimestepIndexEntry
{
    double time = 0.0;        ///< simulated time, s
    quint32 segment = 0;      ///< legacy: number of the .scn segment; HDF5: number of the timestep's file
    quint64 offset = 0;       ///< legacy: byte offset of the timestep block in its segment; HDF5: 1
    bool isFull = false;      ///< all data, not a partial save
    qint32 reserved = -1;     ///< not stored in any file
    quint32 creatorIndex = 0; ///< HDF5: storageIndex of the timestep's creator block
};

using TimestepIndex = std::vector<STimestepIndexEntry>;

} // namespace NBrenmark
