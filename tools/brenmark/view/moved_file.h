#pragma once
// The small HDF5 file beside a view: the vertices of walls where they have moved to, which the deck holds only as they
// were made.

#include "brenmark/view/deck_heads.h"

#include <QString>

#include <memory>
#include <set>
#include <vector>

namespace NBrenmark {

/// Made with the first vertices that it is given; gets its name when it is whole, and leaves nothing if it isn't.
class CMovedFile
{
public:
    explicit CMovedFile(const QString& path) : path(path), begun(path + QLatin1String(".part")) {}
    ~CMovedFile();
    CMovedFile(const CMovedFile&) = delete;
    CMovedFile& operator=(const CMovedFile&) = delete;

    /// \throws std::exception, H5::Exception  it can't be written
    void add(const std::vector<SMovedVertices>& moved);
    /// \return whether there is such a file
    bool finish();

private:
    QString path;
    QString begun;
    std::unique_ptr<H5::H5File> file;
    std::set<std::string> written;
};

} // namespace NBrenmark
