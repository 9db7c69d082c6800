#pragma once
// Version words: three numbers packed so that versions compare as integers.

#include <QString>
#include <QtGlobal>

namespace NBrenmark {

/// (major << 16) | (minor << 8) | build.
constexpr quint32 makeVersion(quint32 major, quint32 minor, quint32 build)
{
    return (major << 16) | (minor << 8) | build;
}

/// The version that this library writes.
constexpr quint32 currentFileVersion() { return makeVersion(30, 0, 20); }

/// Old numbering: a version with major number 3 counts as major 20 in every comparison.
constexpr quint32 mendOldNumbering(quint32 version)
{
    return (version >> 16) == 3 ? (version & 0xFFFFu) | (20u << 16) : version;
}

/// "27.0.3" for makeVersion(27, 0, 3).
QString versionText(quint32 version);

/// Revision and branch that a writer of this build leaves in a file.
constexpr quint32 currentBuildRevision = 28438;
constexpr const char* currentBuildBranch = "Brenmark/trunk";

} // namespace NBrenmark
