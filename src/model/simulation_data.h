#pragma once
// The base of the two roots of stored data: the creator model and a timestep.

#include "core/version.h"

#include <QObject>
#include <QString>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

/// Holds the version record that a read finds in a file and a write leaves there.
class CSimulationData : public QObject
{
    Q_OBJECT
public:
    virtual void clear() = 0;
    virtual void read(IFileVisitorReader& visitor) = 0;
    virtual void write(IFileVisitorWriter& visitor) = 0;

    /// Takes the version record of this build, as every writer does before it writes.
    void stampVersion();

    quint32 fileVersion = 0;
    quint32 buildRevision = currentBuildRevision;
    QString buildBranch = currentBuildBranch;
};

} // namespace NBrenmark
