#pragma once
// The geometry of a simulation: its groups by position and by name, and the ids of all their vertices
// and triangles.

#include "model/bounding_box.h"
#include "model/geometry/element_ids.h"
#include "model/geometry_state.h"
#include "properties/custom_property_manager.h"

#include <QMap>
#include <QString>
#include <map>
#include <vector>

namespace NBrenmark {

class CGeometryGroup;
class IFileVisitorReader;
class IFileVisitorWriter;

class GeometryGroups
{
public:
    static constexpr quint32 notFound = 0xFFFFFFFFu;
    /// Greatest ids and index that are believed. A triangle id for each group is the least that a deck can
    /// hold, so a group's index is bounded by them.
    static constexpr quint32 greatestVertexId = 3000000;
    static constexpr quint32 greatestTriangleId = 1000000;
    static constexpr quint32 greatestIndex = greatestTriangleId;

    /// \param managers  of the deck's properties; not owned
    explicit GeometryGroups(const SPropertyManagers& managers = SPropertyManagers());
    ~GeometryGroups();
    GeometryGroups(const GeometryGroups&) = delete;
    GeometryGroups& operator=(const GeometryGroups&) = delete;

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Takes a group: to the place of its index if that is free, else to the first gap, else to the end.
    /// The group gets its index, and a uniqueId unless it has one. Null is ignored.
    /// \param registerElements  gives ids to its vertices and triangles; a reader, whose groups bring their
    ///                          own, calls rebuildElementIds after the last of them
    void add(CGeometryGroup* group, bool registerElements);
    void clear();

    /// Groups that are there, gaps left out.
    quint32 count() const { return present; }
    /// By position; null where there is a gap.
    const std::vector<CGeometryGroup*>& groups() const { return places; }
    /// Null for a gap and beyond the end.
    CGeometryGroup* at(quint32 index) const;
    /// notFound if there is none of that name; of several the one that got the name last.
    quint32 indexOf(const QString& name) const { return nameToIndex.value(name, notFound); }
    /// A null text for a gap and beyond the end.
    QString nameOf(quint32 index) const;
    /// Enters a group under a new name. The group itself is renamed by its setName.
    void rename(quint32 index, const QString& oldName, const QString& newName);

    /// Keeps the state of all groups as that of the definition, until the list is emptied.
    void keepState();
    /// Gives the groups what was kept: the read of a timestep starts from here.
    void restoreState();
    /// Exchanges what was kept with the present state.
    void exchangeState();

    /// Brings the list in order that was read with a model: ids, counters and bounds.
    void settle();
    /// The same after the read of a timestep.
    /// \param newIds  whether it brought meshes or ids of its own
    void settleState(bool newIds);

    /// The box around all groups.
    void updateTotalBounds();

    /// New ids for all vertices and triangles of a group.
    void registerElements(CGeometryGroup& group);
    /// Gives the ids of a group back, so that the next mesh gets them in the same order.
    void releaseElements(const CGeometryGroup& group);
    /// Enters the ids that the groups hold. When one is met twice, is beyond the greatest, or missing, all
    /// groups are numbered anew.
    /// \return false if they were
    bool rebuildElementIds();

    /// The process-wide counter of uniqueIds.
    static quint32 nextUniqueId();
    static void setNextUniqueId(quint32 value);
    /// Sets the counter after the greatest uniqueId of the groups; to 0 without one.
    static void syncUniqueIds(const GeometryGroups& groups);

    bool ownsGroups = true; ///< clear and the destructor delete the groups
    CBoundingBox totalBounds;
    CElementIds vertexIds;
    CElementIds triangleIds;
    const SPropertyManagers managers; ///< of geometry for new groups, of particles for their factories

private:
    quint32 placeFor(const CGeometryGroup& group);
    void numberAnew();

    std::vector<CGeometryGroup*> places;
    std::map<quint32, CGeometryState> ownStates; ///< by position
    QMap<QString, quint32> nameToIndex;
    quint32 present = 0;
    std::size_t firstGap = 0; ///< no gap is before it
};

} // namespace NBrenmark
