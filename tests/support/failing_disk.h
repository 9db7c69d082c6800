#pragma once
// A disk that fails under the command line, by a module that is preloaded into it (failing_calls.c).

#include "support/paths.h"
#include "support/tool_run.h"

#include <QDir>
#include <QFile>
#include <QString>

#include <string>

namespace NBrenmark {

class CFailingDisk
{
public:
    /// \param folder  whose writes count, and fail
    /// \param notes   path for the module's notes; outside of the folder
    CFailingDisk(const QString& folder, const QString& notes) : folder(folder), notes(notes) {}

    /// Lets the so-many-th write fail, from 1 on; 0 lets all pass.
    void fail(long write, int errorNumber, bool staysFull)
    {
        failingWrite = write;
        error = errorNumber;
        stays = staysFull;
    }

    void preloadInto(CToolRun& run) const
    {
        QFile::remove(notes);
        QFile::remove(notes + ".count");
        run.environment("LD_PRELOAD", failingCallsModule());
        run.environment("FAILING_CALLS_BELOW", argument(folder));
        run.environment("FAILING_CALLS_KINDS", "write");
        run.environment("FAILING_CALLS_NOTE", argument(notes));
        run.environment("FAILING_CALLS_AT", std::to_string(failingWrite));
        run.environment("FAILING_CALLS_ERRNO", std::to_string(error));
        if (stays)
            run.environment("FAILING_CALLS_STAY", "1");
    }

    /// Call and file of the first write that failed, "pwrite /out/0.h5"; empty if none did.
    std::string failedWrite() const { return firstLine(notes); }
    /// How many writes the last program made.
    long countedWrites() const { return std::stol("0" + firstLine(notes + ".count")); }

private:
    static std::string firstLine(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readLine().trimmed().toStdString() : std::string();
    }

    QString folder;
    QString notes;
    long failingWrite = 0;
    int error = 0;
    bool stays = false;
};

} // namespace NBrenmark
