#pragma once
// The commands: what each takes, and one function that does it. All of them end with an exit code
// or throw a CFailure.

#include "brenmark/deck_options.h"
#include "brenmark/exit_codes.h"

#include <QString>
#include <QStringList>

#include <string>

namespace NBrenmark {

struct SConvertOptions : SDeckOptions
{
    QString source;
    QString target;
    bool dryRun = false; ///< looks for what would stop it, and writes nothing
    bool quiet = false;
    bool verbose = false; ///< a line for each timestep, and every message by itself
    bool json = false;
    bool xdmf = false;  ///< writes a view beside the new deck
    bool facts = false; ///< puts into the record what a report shows
    std::string page;   ///< file for a report of the conversion; empty for none
    std::string record; ///< file for the run of an archive that started this process; empty for none

    /// A report shows both decks.
    bool wantsComparison() const { return verify || facts || !page.empty(); }
};

struct SCheckOptions
{
    QStringList paths;
    bool json = false;
};

struct SInfoOptions
{
    QString deck;
    bool quick = false;    ///< reads the last timestep only
    bool settings = false; ///< describes the settings file, and reads no timestep
    bool json = false;
};

struct SConfigOptions
{
    QString deck;
    QString key; ///< in text form; empty for all
    bool json = false;
};

struct SDumpOptions
{
    QString deck;
    bool oneTimestep = false;
    quint32 timestep = 0;
    bool full = false;
    bool stored = false;      ///< the records of an old deck in place of the model that they become
    QString timestepDocument; ///< of the definition that is dumped; empty for none
};

struct SVerifyOptions
{
    QString source;
    QString converted;
    QString digest;           ///< file with the digest of the source, in its place; empty for none
    bool parts = false;       ///< reads SOURCE alone, for the process that started this one
    unsigned int limit = 100; ///< differences that are named; 0 for all
    bool json = false;
};

/// Either states, or a deck and a pair.
struct SLawOptions
{
    QString states; ///< a file of contact states, "-" for standard input; empty for none
    QString deck;
    std::string first;                 ///< a particle type
    std::string second;                ///< a particle type or a geometry group
    std::string only;                  ///< a model of the chain; empty for all
    std::string show = "normal force"; ///< the column that is drawn
    double from = 0.0;                 ///< overlaps, m
    double to = 0.0;
    quint32 count = 0;
    double speed = 1e-6; ///< m/s
    bool unloads = false;
    QString csv; ///< files to write; empty for none
    QString svg;
};

struct SValuesOptions
{
    QString deck;
    bool list = false; ///< shows the attributes instead of values
    std::string attribute;
    std::string query;     ///< of the deck's data exports or the selection, in place of an attribute
    std::string owner;     ///< "particle", "contact"...; empty for the first that the attribute serves
    std::string type;      ///< of the particle type, geometry group or family of pairs; empty for all
    std::string selection; ///< of the deck's settings, by its name; empty for all
    bool allTimesteps = true;
    quint32 firstTimestep = 0;
    quint32 lastTimestep = 0;
    std::string units; ///< "length=mm,time=min"; base units for what isn't named
    QString output;    ///< of the table; empty for standard output
    bool summary = false;
    bool json = false;
    quint32 intervals = 0; ///< of a histogram; 0 for none
    QString svg;           ///< files for the histogram; empty for none
    QString csv;
};

/// A deck into a document, or documents into a deck.
struct SXmlOptions
{
    bool exports = true;
    QString source; ///< a deck, or the document of a definition
    QString target; ///< a document, or a deck
    bool force = false;
    // Export.
    bool oneTimestep = false; ///< a timestep's document in place of the definition's
    quint32 timestep = 0;
    bool particles = true;
    bool contacts = false;
    bool bonds = false;
    bool collisions = false;
    // Import.
    QString timestepDocument; ///< empty for none
};

struct SPluginsOptions
{
    bool json = false;
    QString oneLibrary; ///< is asked in this process, for one that lists them; empty for the list
};

/// An XDMF file beside a deck.
struct SViewOptions
{
    QString deck;
    std::string values; ///< names, by commas; none: all
    bool force = false;
    bool json = false;
};

/// Timesteps of a deck as files of other programs.
struct SExportOptions
{
    QString deck;
    std::string format;
    QString output;         ///< a folder
    std::string attributes; ///< with commas between them; empty for the usual ones
    std::string units;
    bool allTimesteps = true;
    quint32 firstTimestep = 0;
    quint32 lastTimestep = 0;
    bool force = false; ///< writes into a folder that isn't empty
    bool json = false;
};

/// Attributes over time.
struct SPlotOptions
{
    QString deck;
    std::string attributes; ///< with commas between them
    std::string reduce = "mean";
    std::string owner; ///< and the rest, as those of the values of an attribute
    std::string type;
    std::string units;
    bool allTimesteps = true;
    quint32 firstTimestep = 0;
    quint32 lastTimestep = 0;
    quint32 intervals = 0; ///< of a histogram instead; 0 for none
    QString svg;           ///< files to write; empty for none
    QString csv;
    bool json = false;
};

/// A picture of a timestep.
struct SSnapshotOptions
{
    QString deck;
    bool lastTimestep = true;
    quint32 timestep = 0;
    std::string attribute = "Velocity Magnitude"; ///< of the colours
    std::string view = "iso";
    std::string units;
    QString svg; ///< files to write; empty for none
    QString png;
    bool json = false;
};

EExitCode runConvert(const SConvertOptions& options);
EExitCode runCheck(const SCheckOptions& options);
EExitCode runInfo(const SInfoOptions& options);
EExitCode runConfig(const SConfigOptions& options);
EExitCode runDump(const SDumpOptions& options);
EExitCode runVerify(const SVerifyOptions& options);
EExitCode runLaw(const SLawOptions& options);
EExitCode runValues(const SValuesOptions& options);
EExitCode runXml(const SXmlOptions& options);
EExitCode runPlugins(const SPluginsOptions& options);
EExitCode runView(const SViewOptions& options);
EExitCode runPlot(const SPlotOptions& options);
EExitCode runSnapshot(const SSnapshotOptions& options);
EExitCode runExport(const SExportOptions& options);

} // namespace NBrenmark
