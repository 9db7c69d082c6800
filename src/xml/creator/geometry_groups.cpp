// Geometry groups: a "group" for each, with its motions, its factories, its mesh and, last, its shape.

#include "model/geometry_groups.h"
#include "core/counted.h"
#include "core/log.h"
#include "core/memory_ceiling.h"
#include "core/shortened.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/geometry_factory.h"
#include "model/geometry/polygon.h"
#include "xml/factories.h"
#include "xml/motions.h"

#include <array>
#include <unordered_map>

namespace NBrenmark {

// ---------------------------------------------------------------- the words of a group

namespace {

struct SGeometryTypeWord
{
    qint32 type;
    const char* word;
    const char* oldWord;
};

constexpr std::array<SGeometryTypeWord, 3> geometryTypeWords = {{{eRealGeometry, "real", "Physical"},
                                                                 {eVirtualGeometry, "virtual", "Virtual"},
                                                                 {3, "dynamic_domain", "Dynamic Domain"}}};

const char* wordOf(qint32 geometryType)
{
    for (const SGeometryTypeWord& row : geometryTypeWords)
        if (row.type == geometryType)
            return row.word;
    return "Unknown";
}

qint32 geometryTypeOf(const CXmlAttributes& attributes)
{
    if (!attributes.has("type"))
        return eVirtualGeometry;
    const QString word = attributes.text("type");
    for (const SGeometryTypeWord& row : geometryTypeWords)
        if (word == QLatin1String(row.word) || word == QLatin1String(row.oldWord))
            return row.type;
    return 0;
}

} // namespace

static const char* const materialName = "material";
static const char* const blockLinkName = "material_block_name";

template <class TForm, class TGroup>
static void forceForm(TForm& f, TGroup& g)
{
    f.attribute("gain", g.gain);
    f.xyz("desired_force_", g.desiredForce); // N
}

/// The attributes; mesh and shape come in elements of their own.
void CXmlReader::readGeometryGroup(CGeometryGroup& g)
{
    g.materialName = attributes.text(materialName);
    const QString closure = attributes.text("closure");
    g.closed = closure == QLatin1String(options.version < NDocumentVersion::closureIsWord ? "closed" : "volume");
    g.geometryType = geometryTypeOf(attributes);
    in().attribute("dynamics_time", g.time); // s
    forceForm(in(), g);
    if (attributes.has(blockLinkName)) {
        g.materialBlockRef = std::make_unique<CBlockLink>(&g.bounds);
        g.materialBlockRef->blockName = attributes.text(blockLinkName);
    }
}

/// The mesh as it was made: a document knows no place that a group has moved to.
static void writeMesh(CXmlOutput& out, const CGeometryGroup& g)
{
    const std::vector<C3DPoint>& vertices = g.isStatic ? g.coords : g.originalCoords;
    const auto idOf = [&g](std::size_t vertex) {
        return vertex < g.vertexIds.size() ? g.vertexIds[vertex] : static_cast<quint32>(vertex);
    };
    out.element("nodes", [&] {
        for (std::size_t vertex = 0; vertex < vertices.size(); ++vertex)
            out.element("node", [&] {
                out.attribute("id", idOf(vertex));
                out.shortXyz(vertices[vertex]); // m
            });
    });
    for (std::size_t triangle = 0; triangle < g.triangleNodes.size(); ++triangle)
        out.element("triangle", [&] {
            out.attribute("id",
                          triangle < g.triangleIds.size() ? g.triangleIds[triangle] : static_cast<quint32>(triangle));
            for (std::size_t corner = 0; corner < 3; ++corner)
                out.attribute("node" + QString::number(corner + 1), idOf(g.triangleNodes[triangle][corner]));
        });
}

void CXmlWriter::writeGeometryGroup(const CGeometryGroup& g)
{
    if (g.geometryType == eRealGeometry)
        out().attribute(materialName, g.materialName);
    out().word("closure", g.closed, "volume", "surface");
    out().attribute("type", wordOf(g.geometryType));
    out().attribute("name", g.displayedName);
    out().attribute("dynamics_time", g.time);
    out().attribute("shape", g.typeName());
    if (hasServoControl(g))
        forceForm(out(), g);
    if (g.materialBlockRef != nullptr)
        out().attribute(blockLinkName, g.materialBlockRef->blockName);
    out().attribute("id", g.index);
    g.kinematics.write(*this);
    g.factories->write(*this);
    writeMesh(out(), g);
}

void CXmlWriter::writeGeometryGroups(const GeometryGroups& groups)
{
    out().element("groups", [&] {
        for (const CGeometryGroup* group : groups.groups())
            if (group != nullptr)
                out().element("group", [&] { group->write(*this); });
    });
}

// ---------------------------------------------------------------- reading

namespace {

/// Triangles that a shape will have, for a look before they are made.
quint64 trianglesOf(const CGeometryGroup& group)
{
    constexpr quint64 boxTriangles = 12;
    if (const auto* cylinder = dynamic_cast<const CCylinder*>(&group))
        return quint64(cylinder->detail) * (2 + cylinder->closedStart + cylinder->closedEnd);
    if (const auto* polygon = dynamic_cast<const CPolygon*>(&group))
        return static_cast<quint64>(std::max(polygon->edges, 0));
    return boxTriangles;
}

// What each takes, with what is derived from it and the tables that find it by its id.
constexpr quint64 vertexBytes = 128;
constexpr quint64 triangleBytes = 256;
constexpr quint64 groupBytes = 2048;

void rebuildShape(CGeometryGroup& group)
{
    if (auto* box = dynamic_cast<CBox*>(&group))
        box->rebuildMesh();
    else if (auto* cylinder = dynamic_cast<CCylinder*>(&group))
        cylinder->rebuildMesh();
    else if (auto* polygon = dynamic_cast<CPolygon*>(&group))
        polygon->rebuildMesh();
}

class CGeometryGroupsPart : public CXmlPart<GeometryGroups>
{
public:
    using CXmlPart::CXmlPart;

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions& options) override
    {
        if (attributes.is("groups"))
            return true;
        if (attributes.is("group")) {
            endGroup();
            beginGroup(attributes, options);
            return true;
        }
        if (current == nullptr)
            return isLeftOut; // with all in it
        if (attributes.is("dynamics") || attributes.is("nodes"))
            return true;
        if (attributes.is("node")) {
            addNode(attributes);
            return true;
        }
        if (attributes.is("triangle")) {
            addTriangle(attributes);
            return true;
        }
        if (attributes.is(shape.constData())) {
            CXmlReader reader(attributes, options);
            current->read(reader);
            return true;
        }
        return readMotion(*current, attributes, options, hasMotionOfGain) ||
               factories.startDomElement(*current->factories, attributes, options);
    }

    void endDomElement(const QString& tagName, const CXmlIoOptions&) override
    {
        if (tagName == QLatin1String("group"))
            endGroup();
        else
            factories.endDomElement(tagName);
    }

private:
    void leaveOut(const QString& name, const std::string& why)
    {
        isLeftOut = true;
        report(eLost, NLogTitle::xmlImport,
               "Geometry group \"" + shortened(name) + "\" is left out with all in it: " + why + '.', 1,
               shortened(name));
    }

    void beginGroup(const CXmlAttributes& attributes, const CXmlIoOptions& options)
    {
        const QString name = attributes.text("name");
        const quint32 id = attributes.has("id") ? attributes.count("id") : CGeometryGroup::notSet;
        const quint32 there = object.indexOf(name);
        if (name.isEmpty()) {
            attributes.passOver();
            leaveOut(name, "it has no name");
            return;
        }
        if (there != GeometryGroups::notFound && there != id) {
            attributes.passOver();
            leaveOut(name, "another group has its name");
            return;
        }
        if (there != GeometryGroups::notFound)
            beginAnew(*object.at(there));
        else if (!make(attributes, name, id))
            return;
        shape = current->typeName().toLatin1();
        CXmlReader reader(attributes, options);
        reader.readGeometryGroup(*current);
        hasMotionOfGain = hasServoControl(*current);
        if (hasMotionOfGain)
            addServoMotion(*current); // which a motion of the document may replace
    }

    /// A group that comes once more replaces what was read of it.
    void beginAnew(CGeometryGroup& group)
    {
        current = &group;
        current->clearMesh();
        current->kinematics.clear();
        current->factories->clear();
    }

    bool make(const CXmlAttributes& attributes, const QString& name, quint32 id)
    {
        admitMemory(groupBytes, "geometry groups");
        std::unique_ptr<CGeometryGroup> group = createGeometry(attributes.text("shape"), object.managers.geometry);
        if (group == nullptr) {
            attributes.passOver();
            leaveOut(name, "no shape \"" + shortened(attributes.text("shape")) + "\" is known");
            return false;
        }
        group->index = id;
        group->factories->customProperties = object.managers.particle;
        group->setName(name);
        current = group.get();
        object.add(group.release(), false);
        return true;
    }

    /// One whose id isn't a number is skipped.
    static bool readId(const CXmlAttributes& attributes, quint32& id)
    {
        bool isNumber = false;
        id = attributes.text("id").toUInt(&isNumber);
        return isNumber;
    }

    void addNode(const CXmlAttributes& attributes)
    {
        quint32 id = 0;
        if (!readId(attributes, id) || !vertexOfId.emplace(id, static_cast<quint32>(current->coords.size())).second) {
            attributes.passOver();
            ++skipped;
            return;
        }
        admitMemory(vertexBytes, "vertices");
        C3DPoint point;
        CXmlFormReader(attributes).xyz("", point);
        current->coords.push_back(point);
        current->vertexIds.push_back(id);
    }

    void addTriangle(const CXmlAttributes& attributes)
    {
        quint32 id = 0;
        TriangleNodes nodes{};
        bool isWhole = readId(attributes, id);
        for (std::size_t corner = 0; corner < nodes.size(); ++corner) {
            const auto vertex = vertexOfId.find(attributes.count("node" + QString::number(corner + 1)));
            isWhole = isWhole && vertex != vertexOfId.end();
            if (isWhole)
                nodes[corner] = vertex->second;
        }
        if (!isWhole) {
            attributes.passOver();
            ++skipped;
            return;
        }
        admitMemory(triangleBytes, "triangles");
        current->triangleNodes.push_back(nodes);
        current->triangleIds.push_back(id);
    }

    /// What follows from the mesh isn't in the document.
    void endGroup()
    {
        isLeftOut = false;
        factories.leave();
        if (current == nullptr)
            return;
        CGeometryGroup& group = *current;
        current = nullptr;
        vertexOfId.clear();
        if (hasMotionOfGain)
            report(eRemark, NLogTitle::xmlImport,
                   "Geometry group \"" + shortened(group.name) +
                       "\" has a gain, and gets the translation for its control.",
                   1, shortened(group.name));
        hasMotionOfGain = false;
        report(eLost, NLogTitle::xmlImport,
               counted(static_cast<qint64>(skipped), "vertex or triangle") + " of geometry group \"" +
                   shortened(group.name) + "\" skipped: the id is no number or met twice, or a corner isn't there.",
               skipped, shortened(group.name));
        skipped = 0;
        if (auto* cad = dynamic_cast<CCADGeometry*>(&group))
            cad->importedCoords = group.coords;
        else if (group.coords.empty()) {
            admitMemory(trianglesOf(group) * triangleBytes, "the mesh of a shape");
            rebuildShape(group);
        }
        group.kinematics.recomputeTimes();
        group.settle();
        group.updateBounds();
        group.recomputeDerivedData();
        group.computeCentreOfMass();
    }

    CGeometryGroup* current = nullptr; ///< not owned; null where what follows belongs to no group
    bool isLeftOut = false;            ///< the group around what follows
    bool hasMotionOfGain = false;
    QByteArray shape;                                ///< the tag of its shape
    std::unordered_map<quint32, quint32> vertexOfId; ///< of the group
    quint64 skipped = 0;
    CXmlFactories factories;
};

} // namespace

std::unique_ptr<CXmlSerialiser> geometryGroupsPart(GeometryGroups& groups)
{
    return std::make_unique<CGeometryGroupsPart>(groups);
}

} // namespace NBrenmark
