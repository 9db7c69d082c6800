#pragma once
// The formats of an export. Each writes the timesteps one after the other into a folder, under names of its own, so that
// no name of a deck becomes the name of a file.

#include "brenmark/export/pieces.h"

#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace NBrenmark {

struct SExportStep
{
    quint32 number = 0;
    double time = 0.0; ///< in the unit of times
    std::string timeUnit;
    std::vector<SPiece> pieces;
};

class IExportWriter
{
public:
    virtual ~IExportWriter() = default;
    /// The file that shows all of the export, by its name in the folder.
    virtual const char* mainFile() const = 0;
    /// \param step  what it holds may be taken
    /// \throws CFailure  it can't be written, or an earlier one couldn't; so does finish
    virtual void write(SExportStep& step) = 0;
    virtual void finish() {}
};

/// \param format  "vtp", "vtu", "csv", "xyz" or "ensight"; null for any other
/// \param folder  that exists, with a slash at its end
std::unique_ptr<IExportWriter> exportWriter(const std::string& format, const QString& folder);

/// VTK's XML files, binary, appended and compressed, with a .pvd for their times.
std::unique_ptr<IExportWriter> vtkWriter(const QString& folder, bool unstructured);
/// Tables with commas, one for each kind and timestep.
std::unique_ptr<IExportWriter> csvWriter(const QString& folder);
/// Particles as extended XYZ, all timesteps in one file.
std::unique_ptr<IExportWriter> xyzWriter(const QString& folder);
/// EnSight Gold, binary.
std::unique_ptr<IExportWriter> ensightWriter(const QString& folder);

} // namespace NBrenmark
