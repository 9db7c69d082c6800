#pragma once
// The manager of the legacy family. A deck is name.dem (segment 0: a header, then creator blocks and
// timesteps), further segments name.dem.scn.N with blocks alone, and the index name.idx.
//
// The sources say where to look: dem_io_manager.cpp (files and opening), dem_blocks.cpp (one block in or out),
// dem_tiling.cpp (what lies between blocks), dem_index_rebuild.cpp, dem_append.cpp (appending, cutting, creating),
// dem_copy.cpp (whole decks).

#include "core/deck/file_format_manager.h"

#include <QFile>
#include <memory>
#include <set>
#include <tuple>
#include <vector>

namespace NBrenmark {

class CDemDataStream;
class CTimestepData;
struct SDataPlace;
class CInflateAhead;
struct SLogTitle;

class CDemIoManager : public IFileFormatManager
{
public:
    /// A segment that has reached so many bytes takes no further block: 1.5 GiB.
    static constexpr qint64 fullSegment = 0x60000000;

    explicit CDemIoManager(CSimulation& simulation, qint64 segmentLimit = fullSegment);
    ~CDemIoManager() override;

    void flush() override;
    void reset() override;
    int setOutputName(const QString& path) override;
    int open(const QString& path, SSimulationFrame& frame, TimestepIndex& index, bool regenerateIndex) override;
    bool saveCopyUpToCurrent(SSimulationFrame& frame, TimestepIndex& index, const QString& newName,
                             const QString& tempBase) override;
    bool saveSubset(const QString& newName, quint32 first, quint32 last, quint32 stride,
                    IProgressController* progress) override;
    bool truncateAfterCurrent(SSimulationFrame& frame, TimestepIndex& index, bool discardCurrent) override;
    bool appendTimestep(SSimulationFrame& frame, TimestepIndex& index, bool creatorChanged, bool isFull) override;
    bool readCreatorData(SSimulationFrame& frame) override;
    bool readTimestep(SSimulationFrame& frame, TimestepIndex& index, bool restorePosition,
                      IProgressController* progress) override;
    bool createSimulation(const QString& path, SSimulationFrame& frame, bool switchToNew,
                          TimestepIndex& index) override;

    /// name, or name + ".scn." + n for n above 0.
    static QString segmentPath(const QString& name, quint32 n);

private:
    /// Where a block is.
    struct SPlace
    {
        quint32 segment;
        quint64 offset;

        bool operator<(const SPlace& o) const { return std::tie(segment, offset) < std::tie(o.segment, o.offset); }
        bool operator==(const SPlace& o) const { return segment == o.segment && offset == o.offset; }
    };
    enum EMissing
    {
        eIsError,  ///< a deck without one of its segments can't be read
        eIsCreated ///< the segment that new data goes to
    };

    // Files. A deck that is only read is opened for reading only; the first operation that changes it
    // opens its files again. Failures are reported.
    bool openDataFile(const QString& name, quint32 n, QFile& file, EMissing missing);
    bool ensureSegment(quint32 n, EMissing missing = eIsError);
    bool ensureIndexFile();
    bool startWriting();
    /// Older decks have fewer words in it than are written today.
    bool hasFullHeader() const;
    void closeFiles();
    SPlace presentPlace() const { return SPlace{openSegment, static_cast<quint64>(dataFile.pos())}; }
    bool goTo(const SPlace& place);

    // The header and the index.
    bool readHeader();
    /// Bytes of all files that the index names.
    quint64 bytesOfSegments(const TimestepIndex& index) const;
    bool rewriteHeader();
    bool readIndexFile(const QString& name, TimestepIndex& index);
    bool writeIndexFile(const TimestepIndex& index);
    bool appendIndexEntry(const TimestepIndex& index, quint32 timestep);
    bool regenerateIndexFile(const QString& name, SSimulationFrame& frame, TimestepIndex& index);
    bool scanSegment(SSimulationFrame& frame, TimestepIndex& index, quint32& found);

    // One block, at the present position of the file.
    bool readCreatorBlock(SSimulationFrame& frame, IProgressController* progress);
    bool readCreatorAt(SSimulationFrame& frame, const SPlace& place, bool restore, IProgressController* progress);
    /// Inflates what a later read of the timestep will ask for, if there is a pool that does it.
    void beginAhead(const TimestepIndex& index, quint32 number);
    bool readTimestepBlock(SSimulationFrame& frame, TimestepIndex& index, IProgressController* progress);
    bool writeCreatorBlock(QFile& file, SSimulationFrame& frame);
    bool writeTimestepBlock(QFile& file, CTimestepData& timestep, const SPlace& creator);

    // The gaps that mustn't be between blocks; what is found is reported as lost (dem_tiling.cpp). False where the
    // device can't be read, which is logged.
    void noteBlockStarts(const TimestepIndex& index);
    /// \param place  in the open segment
    bool checkFirstBlock(qint64 place);
    /// \param start  of the block that was read up to the present position
    bool checkBlockEnd(const SPlace& start);

    qint64 segmentLimit;
    std::set<SPlace> readModels;     // creator blocks of which all has been said that there is to say
    std::vector<SPlace> blockStarts; // of the timesteps in the index that was read, in their order in the files
    QFile dataFile;
    QFile indexFile;
    bool indexRewriteNeeded = false;
    bool writing = false;    // the files are, or will be, open for changes
    quint32 lastSegment = 0; // that new data goes to
    quint32 openSegment = 0; // that dataFile has open
    SPlace aheadPlace{0, 0}; // of the timestep that ahead is for
    std::unique_ptr<CInflateAhead> ahead;
    std::unique_ptr<CInflateAhead> present; // of the timestep that is being read
};

namespace NDemBlockName {
constexpr const char* creatorData = "class CGenericData";
constexpr const char* timestep = "class CTimestepData64";  ///< u64 offset of the creator block
constexpr const char* oldTimestep = "class CTimestepData"; ///< u32 offset
} // namespace NDemBlockName

/// The place of the work on a file.
SDataPlace placeIn(const QFile& file);
/// Whether all that was written to a file has gone out; else the log says which file and why.
bool flushed(QFile& file);
/// Logs that a file couldn't be opened, read, written or removed, and why.
/// \return false
bool fileFailed(const SLogTitle& title, const char* what, const QFile& file);

} // namespace NBrenmark
