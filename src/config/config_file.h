#pragma once
// The configuration file beside a deck: the whole tree as text, a line for each node with a value.

#include <functional>
#include <set>
#include <string>

class QIODevice;

namespace NBrenmark::NConfig {

class CConfigHandle;

/// Results of reading and of writing. There is no other number.
enum EConfigFileResult : int
{
    eConfigDone = 0,
    eConfigInvalidValue = 1, ///< a value that can't be taken over
    eConfigNotOpened = 2,    ///< no file name, or no such file
    eConfigNoFormatLine = 4, ///< line 1 is missing or wrong
    eConfigLaterFormat = 5,  ///< the format is later than this build's
    eConfigInvalidLine = 6   ///< a wrong version line or entry, an unknown kind, or a failure of the file itself
};

/// Told how many lines were read, at each hundred.
using ConfigLineObserver = std::function<void(int)>;

/// Reads a file into the tree, below the base path of the handle. What was read before a failure stays.
/// \param fileName          UTF-8
/// \param excludedElements  a line whose key has one of these elements is passed over
int readConfigurationFile(const std::string& fileName, const CConfigHandle& handle,
                          const std::set<std::string>& excludedElements, const ConfigLineObserver& observer = {});

/// Writes the tree from the handle on, in the form of the file. A value that the form can't hold as it is is reported
/// in the log, with what becomes of it: the text is such that reading and writing it again gives the same bytes.
int writeConfiguration(QIODevice& device, const CConfigHandle& handle);

/// Does so to a file. When this returns the file may still be on its way to its place:
/// waitForCopies (config/file_replacer.h) returns when it is there.
/// \param fileName  UTF-8
int writeConfigurationFile(const std::string& fileName, const CConfigHandle& handle);

} // namespace NBrenmark::NConfig
