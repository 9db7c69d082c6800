#pragma once
// A file that a command writes beside its results.

#include <QSaveFile>

#include <cstddef>
#include <string>

namespace NBrenmark {

/// A file that gets its name once it is whole.
class CTargetFile
{
public:
    /// \throws CFailure  it can't be opened; so do all others where something isn't written
    explicit CTargetFile(const QString& path);
    void write(const std::string& text) { write(text.data(), text.size()); }
    void write(const char* bytes, std::size_t size);
    std::size_t position() const { return static_cast<std::size_t>(file.pos()); }
    /// Where the next bytes are written, which may replace earlier ones.
    void seek(std::size_t position) { require(file.seek(static_cast<qint64>(position))); }
    void commit();

private:
    void require(bool done) const;

    QSaveFile file;
};

} // namespace NBrenmark
