#pragma once
// The short-lived worker threads through which model data moves between memory and a file.

#include "core/cause.h"
#include "core/data_place.h"
#include "core/save_options.h"
#include "core/worker.h"

#include <QString>

namespace H5 {
class H5File;
}

namespace NBrenmark {

class CDemDataStream;
class CSimulationData;
class IProgressController;

enum ESerialiserFormat : quint32
{
    eNoFormat = 0,
    eLegacyStream = 1,
    eHdf5File = 2
};

/// Moves one root. An error inside sets errorFlag and errorText; nothing else leaves the thread.
class CSimDataSerialiser : public CWorker
{
public:
    explicit CSimDataSerialiser(SSaveOptions& options);
    ~CSimDataSerialiser() override;

    CSimulationData* object = nullptr; ///< not owned
    SSaveOptions& options;
    CDemDataStream* stream = nullptr; ///< format eLegacyStream; not owned
    bool errorFlag = false;
    QString errorText;
    ECause errorCause = eCauseNone; ///< of the error; eCauseNone for one that leaves it to the operation
    ESerialiserFormat format = eNoFormat;
    H5::H5File* hdf5File = nullptr; ///< format eHdf5File; not owned

protected:
    void run() override;
    /// The move itself, in the direction of the class.
    virtual void move() = 0;

private:
    /// Notes why the move failed, also where there is no memory for the text.
    void fail(ECause cause, const char* text) noexcept;

    const SDataPlace place = placeAtWork(); // of the thread that made this
};

class CSimDataReader : public CSimDataSerialiser
{
public:
    using CSimDataSerialiser::CSimDataSerialiser;

    /// Runs the thread and waits for it, for 20 minutes at most. The controller, if any, is ticked
    /// once a second and asked whether to stop. Flushes the log modules at the end.
    /// \return true exactly when the read ended by itself without an error
    bool runAndWait(IProgressController* progress);

protected:
    void move() override;
};

class CSimDataWriter : public CSimDataSerialiser
{
public:
    using CSimDataSerialiser::CSimDataSerialiser;

    /// Runs the thread and waits for it without limit; flushes the log modules at the end.
    bool runAndWait();

protected:
    void move() override;
};

/// The serialiser at work in the process, or null.
CSimDataSerialiser* currentSerialiser();

} // namespace NBrenmark
