// Keeps a list of what was asked for while a deck is examined, and compares it with what is there.
#include "io/hdf5/read_audit.h"

#include "core/log.h"
#include "core/shortened.h"
#include "io/hdf5/child_names.h"
#include "io/hdf5/deck_tree.h"
#include "io/hdf5/form.h"

#include <algorithm>
#include <vector>

namespace NBrenmark {

static thread_local CReadAudit* audit = nullptr;

static std::string withoutSlashes(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

static std::string pathOf(const H5::H5Location& location)
{
    const auto length = H5Iget_name(location.getId(), nullptr, 0);
    if (length <= 0)
        return std::string();
    std::string path(static_cast<std::size_t>(length), '\0');
    H5Iget_name(location.getId(), path.data(), path.size() + 1);
    return withoutSlashes(path);
}

static std::string joined(const std::string& group, const std::string& name)
{
    return withoutSlashes((group == "/" ? "" : group) + '/' + name);
}

static void reportPart(const std::string& what)
{
    report(eLost, NLogTitle::hdf5Read, what + " is there, and no reader knows it.");
}

static std::vector<std::string> attributesOf(const H5::H5Object& object)
{
    const int count = object.getNumAttrs();
    std::vector<std::string> names;
    names.reserve(static_cast<size_t>(std::clamp(count, 0, 64))); // the count is the file's word
    for (int i = 0; i < count; ++i)
        names.push_back(object.openAttribute(static_cast<unsigned>(i)).getName());
    return names;
}

static std::string inQuotes(const std::string& name) { return '"' + shortened(name) + '"'; }

/// Reports the children and attributes of a group that aren't among the expected ones.
static void reportOthers(const H5::Group& group, const std::string& path, const std::set<std::string>& children,
                         const std::set<std::string>& attributes)
{
    for (const std::string& name : attributesOf(group))
        if (attributes.count(name) == 0)
            reportPart("The attribute " + inQuotes(name) + " of " + path);
    for (const std::string& name : childNames(group))
        if (children.count(name) == 0)
            reportPart("The object " + shortened(joined(path, name)));
}

CReadAudit::CReadAudit(bool isWanted) : isWanted(isWanted)
{
    if (isWanted)
        audit = this;
}

CReadAudit::~CReadAudit()
{
    if (isWanted)
        audit = nullptr;
}

void CReadAudit::askedForObject(const H5::H5Location& location, const std::string& name)
{
    if (audit != nullptr)
        audit->asked.insert(joined(pathOf(location), name));
}

void CReadAudit::askedForAttribute(const H5::H5Location& location, const std::string& name)
{
    if (audit != nullptr)
        audit->asked.insert(pathOf(location) + '@' + name);
}

void CReadAudit::gaveUp(const H5::H5Location& location, const std::string& name)
{
    if (audit != nullptr)
        audit->givenUp.insert(joined(pathOf(location), name));
}

void CReadAudit::compareTypes(const H5::DataType& stored, const H5::DataType& wanted, const char* kind,
                              const std::string& name)
{
    if (audit == nullptr || wanted.getClass() != H5T_INTEGER) // a real number holds every whole one of 32 bits
        return;
    const std::string what = std::string("The ") + kind + ' ' + inQuotes(name) + " holds ";
    if (stored.getClass() == H5T_FLOAT)
        report(eRepaired, NLogTitle::hdf5Read, what + "real numbers, which are read as whole ones.");
    else if (stored.getSize() > wanted.getSize())
        report(eRepaired, NLogTitle::hdf5Read,
               what + "numbers of " + std::to_string(stored.getSize()) + " bytes, which are read into " +
                   std::to_string(wanted.getSize()) + '.');
}

void CReadAudit::compareFlag(unsigned char stored, const char* kind, const std::string& name)
{
    if (audit != nullptr && stored > 1)
        report(eRepaired, NLogTitle::hdf5Read,
               std::string("The ") + kind + ' ' + inQuotes(name) + " holds " + std::to_string(stored) +
                   ", which is read as 1.");
}

void CReadAudit::reportUnread(const H5::H5File& file, const std::string& group)
{
    if (!isWanted)
        return;
    asked.insert(group + '@' + creatorIndexName); // the manager has read it
    reportUnreadIn(file.openGroup(group), withoutSlashes(group));
}

void CReadAudit::reportUnreadIn(const H5::Group& group, const std::string& path)
{
    if (givenUp.count(path) > 0)
        return;
    const std::vector<std::string> attributes = attributesOf(group);
    const std::vector<std::string> children = childNames(group);
    const auto isAttributeRead = [&](const std::string& name) { return asked.count(path + '@' + name) > 0; };
    const auto isChildRead = [&](const std::string& name) { return asked.count(joined(path, name)) > 0; };
    if (attributes.size() + children.size() > 0 &&
        std::none_of(attributes.begin(), attributes.end(), isAttributeRead) &&
        std::none_of(children.begin(), children.end(), isChildRead)) {
        reportPart("What is in the group " + shortened(path));
        return;
    }
    for (const std::string& name : attributes)
        if (!isAttributeRead(name))
            reportPart("The attribute " + inQuotes(name) + " of " + shortened(path));
    for (const std::string& name : children) {
        const std::string child = joined(path, name);
        const CPlaceScope scope(placeInGroup(name + '/'));
        const bool isGroup = group.childObjType(name) == H5O_TYPE_GROUP;
        if (!isChildRead(name))
            reportPart((isGroup ? "The group " : "The dataset ") + shortened(child));
        else if (isGroup)
            reportUnreadIn(group.openGroup(name), child);
        else if (group.childObjType(name) == H5O_TYPE_DATASET)
            for (const std::string& attribute : attributesOf(group.openDataSet(name)))
                reportPart("The attribute " + inQuotes(attribute) + " of " + shortened(child));
    }
}

void reportStrayParts(const H5::H5File& file, quint32 number, quint32 model)
{
    const std::string own = std::to_string(number);
    reportOthers(file.openGroup("/"), "/", {"CreatorData", "TimestepData"}, {});
    reportOthers(file.openGroup(creatorGroup), "/CreatorData",
                 number == model ? std::set<std::string>{own} : std::set<std::string>(), {});
    reportOthers(file.openGroup(timestepGroup), "/TimestepData", {openOnlyTimestepName(file)}, {});
}

void reportStrayParts(const H5::H5File& mainFile, const std::set<std::string>& headerNames)
{
    reportOthers(mainFile.openGroup("/"), "/", {"CreatorData", "TimestepData"}, headerNames);
    for (const char* group : {creatorGroup, timestepGroup})
        if (mainFile.nameExists(group))
            reportOthers(mainFile.openGroup(group), withoutSlashes(group), {}, {});
}

} // namespace NBrenmark
