#include "brenmark/target_file.h"

#include "brenmark/failure.h"

namespace NBrenmark {

CTargetFile::CTargetFile(const QString& path) : file(path) { require(file.open(QIODevice::WriteOnly)); }

void CTargetFile::write(const char* bytes, std::size_t size)
{
    const auto length = static_cast<qint64>(size);
    require(file.write(bytes, length) == length);
}

void CTargetFile::commit() { require(file.commit()); }

void CTargetFile::require(bool done) const
{
    const std::string cause = utf8(file.errorString());
    if (!done)
        throw CFailure(eExitTarget, utf8(file.fileName()) + ": can't be written: " + cause, adviceForWriting(cause));
}

} // namespace NBrenmark
