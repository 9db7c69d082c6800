// The place of each thread, as a stack of scopes: a worker begins with that of the thread that made it.
#include "core/data_place.h"

#include <QFileInfo>

#include <utility>

namespace NBrenmark {

// A pointer: an object with a destructor would be registered with each thread, which ends the process where there is no
// memory for that.
static thread_local const SDataPlace* placeOfThread = nullptr;

const SDataPlace& placeAtWork()
{
    static const SDataPlace nowhere;
    return placeOfThread ? *placeOfThread : nowhere;
}

SDataPlace placeIn(const QString& path)
{
    SDataPlace place;
    place.file = QFileInfo(path).fileName().toStdString();
    return place;
}

SDataPlace SDataPlace::inTimestep(quint32 number) const
{
    SDataPlace place{file, number, {}, {}};
    return place;
}

SDataPlace SDataPlace::inBlock(const std::string& name) const
{
    SDataPlace place = *this;
    place.block = name;
    place.object.clear();
    return place;
}

std::string SDataPlace::text() const
{
    if (file.empty())
        return std::string();
    if (timestep)
        return file + ", timestep " + std::to_string(*timestep);
    return block.empty() ? file : file + ", " + block;
}

CPlaceScope::CPlaceScope(SDataPlace where) : place(std::move(where)), before(placeOfThread) { placeOfThread = &place; }

CPlaceScope::~CPlaceScope() { placeOfThread = before; }

} // namespace NBrenmark
