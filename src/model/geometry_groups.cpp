// The list of groups, with gaps where one was removed: an index names a group for as long as the deck lives.
#include "model/geometry_groups.h"

#include "core/log.h"
#include "core/shortened.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/geometry_group.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>
#include <atomic>

namespace NBrenmark {

// Two workers may read two decks at a time.
static std::atomic<quint32> uniqueIdCounter{0};

/// Two values mark a group that has no uniqueId yet.
static bool hasUniqueId(const CGeometryGroup& group) { return group.uniqueId < CGeometryGroup::notSet - 1; }

GeometryGroups::GeometryGroups(const SPropertyManagers& managers) : managers(managers) {}

GeometryGroups::~GeometryGroups() { clear(); }

void GeometryGroups::read(IFileVisitorReader& v) { v.readGeometryGroups(*this); }

void GeometryGroups::write(IFileVisitorWriter& v) const { v.writeGeometryGroups(*this); }

// ---------------------------------------------------------------- places and names

quint32 GeometryGroups::placeFor(const CGeometryGroup& group)
{
    const quint32 wanted = group.index;
    if (wanted <= greatestIndex && at(wanted) == nullptr)
        return wanted;
    while (firstGap < places.size() && places[firstGap] != nullptr)
        ++firstGap;
    const auto place = static_cast<quint32>(firstGap);
    if (wanted != CGeometryGroup::notSet)
        report(eRepaired, NLogTitle::geometry,
               "Geometry group \"" + shortened(group.name) + "\" can't have index " + std::to_string(wanted) +
                   (wanted <= greatestIndex ? ", which \"" + shortened(at(wanted)->name) + "\" has"
                                            : ", which is beyond " + std::to_string(greatestIndex)) +
                   "; it gets " + std::to_string(place) + ".",
               1, shortened(group.name));
    return place;
}

void GeometryGroups::add(CGeometryGroup* group, bool registerElements)
{
    if (group == nullptr)
        return;
    const quint32 place = placeFor(*group);
    if (place >= places.size())
        places.resize(std::size_t(place) + 1, nullptr);
    places[place] = group;
    ++present;
    group->index = place;
    group->owner = this;
    nameToIndex.insert(group->displayedName, place);
    if (registerElements)
        this->registerElements(*group);
    const quint32 nextId = uniqueIdCounter++; // counts groups, whoever brings an id of its own
    if (!hasUniqueId(*group))
        group->uniqueId = nextId;
}

void GeometryGroups::clear()
{
    for (CGeometryGroup* group : places) {
        if (ownsGroups)
            delete group;
        else if (group != nullptr)
            group->owner = nullptr; // it may outlive the list
    }
    places.clear();
    ownStates.clear();
    nameToIndex.clear();
    present = 0;
    firstGap = 0;
    vertexIds.clear();
    triangleIds.clear();
    totalBounds = CBoundingBox();
}

CGeometryGroup* GeometryGroups::at(quint32 index) const { return index < places.size() ? places[index] : nullptr; }

QString GeometryGroups::nameOf(quint32 index) const
{
    const CGeometryGroup* const group = at(index);
    return group != nullptr ? group->displayedName : QString();
}

void GeometryGroups::rename(quint32 index, const QString& oldName, const QString& newName)
{
    if (at(index) == nullptr)
        return;
    const auto entry = nameToIndex.find(oldName);
    if (entry != nameToIndex.end() && entry.value() == index) // not that of a namesake
        nameToIndex.erase(entry);
    nameToIndex.insert(newName, index);
}

// ---------------------------------------------------------------- state

void GeometryGroups::keepState()
{
    ownStates.clear();
    for (const CGeometryGroup* group : places)
        if (group != nullptr)
            ownStates.emplace(group->index, *group);
}

void GeometryGroups::restoreState()
{
    for (const auto& [index, state] : ownStates)
        if (CGeometryGroup* const group = at(index))
            state.restore(*group);
}

void GeometryGroups::exchangeState()
{
    for (auto& [index, state] : ownStates)
        if (CGeometryGroup* const group = at(index))
            state.exchange(*group);
}

// ---------------------------------------------------------------- after a read

void GeometryGroups::settle()
{
    syncUniqueIds(*this);
    settleState(true);
}

void GeometryGroups::settleState(bool newIds)
{
    if (newIds)
        rebuildElementIds();
    updateTotalBounds();
}

void GeometryGroups::updateTotalBounds()
{
    totalBounds = CBoundingBox();
    bool isFirst = true;
    for (const CGeometryGroup* group : places) {
        if (group == nullptr)
            continue;
        if (isFirst)
            totalBounds = group->bounds;
        else
            totalBounds.merge(group->bounds.upper, group->bounds.lower);
        isFirst = false;
    }
}

// ---------------------------------------------------------------- ids

static void takeIds(CElementIds& table, std::vector<quint32>& ids, std::size_t elements, quint32 group)
{
    ids.resize(elements);
    for (std::size_t element = 0; element < elements; ++element)
        ids[element] = table.take(group, static_cast<quint32>(element));
}

void GeometryGroups::registerElements(CGeometryGroup& group)
{
    takeIds(vertexIds, group.vertexIds, group.coords.size(), group.index);
    takeIds(triangleIds, group.triangleIds, group.triangleNodes.size(), group.index);
}

/// From the last to the first: the head of the chain is then the first again.
static void giveIdsBack(CElementIds& table, const std::vector<quint32>& ids, quint32 group)
{
    std::for_each(ids.rbegin(), ids.rend(), [&](quint32 id) { table.giveBack(id, group); });
}

void GeometryGroups::releaseElements(const CGeometryGroup& group)
{
    giveIdsBack(vertexIds, group.vertexIds, group.index);
    giveIdsBack(triangleIds, group.triangleIds, group.index);
}

static bool enterIds(CElementIds& table, const std::vector<quint32>& ids, std::size_t elements, quint32 group,
                     quint32 limit)
{
    if (ids.size() != elements)
        return false;
    for (std::size_t element = 0; element < elements; ++element)
        if (!table.enter(ids[element], group, static_cast<quint32>(element), limit))
            return false;
    return true;
}

bool GeometryGroups::rebuildElementIds()
{
    vertexIds.clear();
    triangleIds.clear();
    for (const CGeometryGroup* group : places) {
        if (group == nullptr)
            continue;
        if (!enterIds(vertexIds, group->vertexIds, group->coords.size(), group->index, greatestVertexId) ||
            !enterIds(triangleIds, group->triangleIds, group->triangleNodes.size(), group->index, greatestTriangleId)) {
            report(eRepaired, NLogTitle::geometry,
                   "The ids of the vertices or triangles of geometry group \"" + shortened(group->name) +
                       "\" are missing, met twice or too great: the elements of all " + std::to_string(present) +
                       " groups are numbered anew.",
                   1, shortened(group->name));
            numberAnew();
            return false;
        }
    }
    vertexIds.chainFreeIds();
    triangleIds.chainFreeIds();
    return true;
}

void GeometryGroups::numberAnew()
{
    vertexIds.clear();
    triangleIds.clear();
    for (CGeometryGroup* group : places)
        if (group != nullptr)
            registerElements(*group);
}

quint32 GeometryGroups::nextUniqueId() { return uniqueIdCounter; }

void GeometryGroups::setNextUniqueId(quint32 value) { uniqueIdCounter = value; }

void GeometryGroups::syncUniqueIds(const GeometryGroups& groups)
{
    quint32 next = 0;
    for (const CGeometryGroup* group : groups.places)
        if (group != nullptr && hasUniqueId(*group))
            next = std::max(next, group->uniqueId + 1);
    uniqueIdCounter = next;
}

} // namespace NBrenmark
