#include "brenmark/target_file.h"

#include "brenmark/failure.h"

namespace NBrenmark {

CTargetFile::CTargetFile(const QString& path) : file(path) { require(file.open(QIODevice::WriteOnly)); }

void CTargetFile::write(const char* bytes, std::size_t size)
{
    // A full disk takes a part first, and says why it takes no more when it is asked for the rest.
    for (std::size_t done = 0; done < size;) {
        const qint64 taken = file.write(bytes + done, static_cast<qint64>(size - done));
        require(taken > 0);
        done += static_cast<std::size_t>(taken);
    }
}

void CTargetFile::commit() { require(file.commit()); }

void CTargetFile::require(bool done) const
{
    const std::string cause = utf8(file.errorString());
    if (!done)
        throw CFailure(eExitTarget, utf8(file.fileName()) + ": can't be written: " + cause, adviceForWriting(cause));
}

} // namespace NBrenmark
