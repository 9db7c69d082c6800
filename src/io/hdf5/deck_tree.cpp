// The header and the links between timestep and model, read and written outside of the visitors.
#include "io/hdf5/deck_tree.h"

#include "core/log.h"
#include "core/shortened.h"
#include "io/hdf5/error_text.h"
#include "io/hdf5/shapes.h"
#include "io/hdf5/soundness.h"

namespace NBrenmark {

H5::Group openOnlyTimestep(const H5::H5File& file)
{
    requireOwn(file, "group", timestepGroup);
    const H5::Group timesteps = file.openGroup(timestepGroup);
    const hsize_t count = timesteps.getNumObjs();
    if (count != 1)
        throwAt(file, "group", timestepGroup, std::to_string(count) + " timesteps where one is needed");
    const std::string name = timesteps.getObjnameByIdx(0);
    requireOwn(timesteps, "group", name);
    return timesteps.openGroup(name);
}

std::string openOnlyTimestepName(const H5::H5File& file)
{
    openOnlyTimestep(file);
    return file.openGroup(timestepGroup).getObjnameByIdx(0);
}

quint32 creatorIndexOf(const H5::H5File& file)
{
    quint32 index = 0;
    readAttribute(creatorIndexName, index, openOnlyTimestep(file));
    return index;
}

void checkOwnNumber(const H5::H5File& file, quint32 number)
{
    requireOwn(file, "group", creatorGroup);
    const H5::Group models = file.openGroup(creatorGroup);
    if (models.getNumObjs() == 0)
        return;
    const std::string stored = models.getObjnameByIdx(0);
    if (stored != std::to_string(number))
        reportOnce(eLost, NLogTitle::hdf5Read,
                   "the model in this file is number " + shortened(stored) + ": it is the file of another timestep");
}

} // namespace NBrenmark
