// The place of each thread, as a stack of scopes: a worker begins with that of the thread that made it.
#include "core/data_place.h"

#include <QFileInfo>

#include <utility>

namespace NBrenmark {

static SDataPlace& placeOfThread()
{
    static thread_local SDataPlace place;
    return place;
}

const SDataPlace& placeAtWork() { return placeOfThread(); }

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

CPlaceScope::CPlaceScope(SDataPlace place) : before(std::exchange(placeOfThread(), std::move(place))) {}

CPlaceScope::~CPlaceScope() { placeOfThread() = std::move(before); }

} // namespace NBrenmark
