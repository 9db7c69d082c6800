#include "brenmark/view/moved_file.h"

#include "io/hdf5/bulk_arrays.h"
#include "io/hdf5/checked_file_driver.h"
#include "io/hdf5/closed.h"

#include <QFile>

#include <filesystem>

namespace NBrenmark {

static std::string nativeName(const QString& path) { return QFile::encodeName(path).toStdString(); }

CMovedFile::~CMovedFile()
{
    if (!file)
        return;
    file.reset();
    QFile::remove(begun);
}

/// Makes the groups of a path that aren't there.
static H5::Group madeGroup(const H5::H5File& file, const std::string& path)
{
    for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
        if (!file.nameExists(path.substr(0, end)))
            closed(file.createGroup(path.substr(0, end)), [](H5::Group&) {});
    return file.openGroup(path.substr(0, path.rfind('/')));
}

void CMovedFile::add(const std::vector<SMovedVertices>& moved)
{
    for (const SMovedVertices& vertices : moved) {
        if (!written.insert(vertices.dataset).second)
            continue; // of the model, which several timesteps share
        if (!file) {
            H5::FileAccPropList access;
            useCheckedFiles(access);
            QFile::remove(begun);
            file =
                std::make_unique<H5::H5File>(nativeName(begun), H5F_ACC_EXCL, H5::FileCreatPropList::DEFAULT, access);
        }
        closed(madeGroup(*file, vertices.dataset), [&](H5::Group& group) {
            CArrayWriter(group, true)
                .writePlain(vertices.dataset.substr(vertices.dataset.rfind('/') + 1), H5::PredType::NATIVE_DOUBLE,
                            {vertices.points.size(), 3}, vertices.points.data());
        });
        throwIfFailed(*file);
    }
}

bool CMovedFile::finish()
{
    if (!file)
        return false;
    closeChecked(file);
    std::error_code failure;
    std::filesystem::rename(nativeName(begun), nativeName(path), failure);
    if (failure) {
        QFile::remove(begun);
        throw std::runtime_error(path.toStdString() + ": can't be written: " + failure.message());
    }
    return true;
}

} // namespace NBrenmark
