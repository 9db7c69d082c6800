#pragma once
// The doors of the two file families. They are declared here and defined in io/, so that what
// drives a deck includes nothing of a format: a further family is one more namespace.

#include <memory>

class QIODevice;

namespace H5 {
class H5File;
}

namespace NBrenmark {

class CDemDataStream;
class CSimulation;
class CSimulationData;
class CVersionedStream;
class GeometryGroups;
class IFileFormatManager;
struct SSaveOptions;

namespace NLegacyFamily {
/// Whether a file begins as the family's main files do. Leaves the device anywhere.
bool isOwnHeader(QIODevice& device);
std::unique_ptr<IFileFormatManager> makeManager(CSimulation& simulation);
/// Move one root through a stream that is after the block's name and creator pair. An object
/// that is neither a creator model nor a timestep is left alone.
void readObject(CDemDataStream& stream, CSimulationData& object);
void writeObject(CDemDataStream& stream, CSimulationData& object);
/// Geometry that a selection keeps for itself in the settings file: groups in the form of creator data, bound to no
/// properties of the deck.
/// \throws std::exception  what follows isn't geometry
std::shared_ptr<GeometryGroups> readOwnGeometry(CVersionedStream& stream);
void writeOwnGeometry(CVersionedStream& stream, const GeometryGroups& groups);
} // namespace NLegacyFamily

namespace NHdf5Family {
/// As above.
bool isOwnHeader(QIODevice& device);
/// Starts the library below, which is done once for the process.
void openLibrary();
std::unique_ptr<IFileFormatManager> makeManager(CSimulation& simulation);
/// As above, below the groups of the file's roots. Exceptions of the HDF5 interface leave these doors as
/// std::runtime_error with their detail message: nothing outside knows that library.
void readObject(H5::H5File& file, SSaveOptions& options, CSimulationData& object);
void writeObject(H5::H5File& file, SSaveOptions& options, CSimulationData& object);
} // namespace NHdf5Family

} // namespace NBrenmark
