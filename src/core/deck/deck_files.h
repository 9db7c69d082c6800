#pragma once
// A deck as files on disk: how its members are called, which family they are, and how a family of
// files is deleted, renamed, copied and cut. Names are compared as they are, never as patterns:
// "run[1].dem" is a deck like any other.

#include "core/cause.h"

#include <QLatin1String>
#include <QString>
#include <QStringList>

#include <string>

class QFile;

namespace NBrenmark {

enum EDeckFormat : int
{
    eFormatUnknown = 0,
    eFormatLegacy = 1,
    eFormatHdf5 = 2
};

/// What the files of a deck are called after its base name.
namespace NDeckFile {

inline const QLatin1String demSuffix(".dem");      ///< first file: legacy data, or the index file of the HDF5 family
inline const QLatin1String segmentInfix(".scn.");  ///< joins the data file's name and a segment's number
inline const QLatin1String indexSuffix(".idx");    ///< legacy timestep index
inline const QLatin1String settingsSuffix(".ess"); ///< simulation settings
inline const QLatin1String legacyPropertySuffix(".ppf"); ///< legacy particle properties
inline const QLatin1String configurationSuffix(".dfg");  ///< configuration
inline const QLatin1String companionSuffix(".ptf");      ///< follows the deck; its content isn't looked at here
inline const QLatin1String dataFolderSuffix("_data");    ///< folder of the numbered files
inline const QLatin1String timestepSuffix(".h5");        ///< a numbered file

// Other files of the applications. The last two name the materials database.
inline const QLatin1String vqxSuffix(".vqx");
inline const QLatin1String xmlSuffix(".xml");
inline const QLatin1String kzlfSuffix(".kzlf");
inline const QLatin1String demConfigurationSuffix(".dem.cfg");
inline const QLatin1String oldMaterialsDatabaseSuffix(".ddb");
inline const QLatin1String materialsDatabaseName("materialsDB");

} // namespace NDeckFile

/// Which family the first file of a deck belongs to, by its first bytes. Headers that no legacy
/// writer ever left, among them those without a timestep, are unknown.
/// \param cause  if given, gets why a plain file couldn't be looked into, which says nothing of its format; else
///               it is left empty
EDeckFormat detectFormat(const QString& path, std::string* cause = nullptr);

/// 0 if a deck can be read from path, 1 if the file doesn't exist, 2 if it is a legacy deck whose
/// index is missing (not asked with skipIndexCheck).
int checkSourceFiles(const QString& path, bool skipIndexCheck);

/// The path without .dfg, .dem, .dem.scn.N or .ess at its end.
QString stripDeckSuffix(const QString& path);
/// The path without .dem, .dem.scn.N or a bare dot at its end.
QString stripLegacySuffix(const QString& path);

/// Paths of the segments beside a legacy data file, "name.dem.scn.*", in no order of their numbers.
/// \param dataFile  path of the "name.dem" that they belong to
QStringList segmentFiles(const QString& dataFile);

/// Folder of a current deck's numbered files, absolute, with a slash at its end: "/decks/pile_data/" for
/// "/decks/pile.dem", and one folder for "/decks/run.1" and "/decks/run.2".
QString dataFolderPath(const QString& mainFile);

/// Why a new deck can't have its folder of numbered files: the folder holds those of another deck, which the new
/// ones would replace or be taken for. What deleteFamily clears for the new deck is no reason.
/// \param mainFile  of the new deck, which need not exist
/// \return a sentence without its full stop; empty if the folder is free
std::string folderConflict(const QString& mainFile);

/// Removes the numbered files of a deck whose name doesn't end as deleteFamily expects, "run.1": older ones would
/// pass for timesteps of a shorter deck that comes in their place. False if one can't be removed.
bool removeNumberedFiles(const QString& mainFile);

/// Removes what exists of a deck, of either family. Stops at the first removal that fails.
/// \param path  any of the deck's files by which stripDeckSuffix finds its base
bool deleteFamily(const QString& path);

/// Gives a deck another name, replacing the deck of that name. Settings and configuration must
/// exist. Nothing is undone after a failure.
bool renameFamily(const QString& from, const QString& to);

/// What stopped a copy.
struct SCopyFailure
{
    std::string text;         ///< file and cause
    ECause side = eCauseNone; ///< eCauseSource or eCauseTarget
};

/// The limit of copyOrTruncateFile that means all of a file.
constexpr qint64 wholeFile = -1;

/// Copies a file: with wholeFile if to doesn't exist yet, and with the file's permissions; else its
/// first limit bytes over whatever to held. False if a file can't be opened or a byte didn't
/// arrive. The source is opened for reading only.
/// \param failure  if given, gets what stopped it
bool copyOrTruncateFile(const QString& from, const QString& to, qint64 limit, SCopyFailure* failure = nullptr);

/// Cuts an open file to length bytes: a cut copy takes its place, so that at no time a half written
/// file is under its name. The file ends open for reading and writing; after a failure it holds
/// what it held.
bool truncateFile(QFile& file, qint64 length);

} // namespace NBrenmark
