#include "brenmark/view/deck_heads.h"

#include "brenmark/view/xdmf_text.h"

#include "core/deck/deck_files.h"
#include "io/hdf5/child_names.h"
#include "io/hdf5/deck_layout.h"
#include "io/hdf5/deck_tree.h"
#include "io/hdf5/error_text.h"
#include "io/hdf5/shapes.h"
#include "io/hdf5/soundness.h"
#include "model/geometry/geometry_group.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cmath>

namespace NBrenmark {

/// What deflate can make of a byte.
static constexpr quint64 mostInflated = 1032;

CDeckHeads::CDeckHeads(const QString& deck, const TimestepIndex& index, const SPropertyManagers& properties,
                       std::string extraFile, CChosenValues& chosen, CLeftOut& leftOut)
    : deck(deck),
      index(index),
      folder(QDir(dataFolderPath(deck)).dirName().toStdString() + '/'),
      extraFile(std::move(extraFile)),
      properties(properties),
      chosen(chosen),
      leftOut(leftOut)
{
    catchHdf5Errors();
}

H5::H5File CDeckHeads::open(quint32 number) const
{
    if (number >= index.size() || index[number].offset == 0)
        throw hdf5_error("its model is in timestep " + std::to_string(number) + ", which isn't there");
    // The structure of every file of the index has been checked while it was made.
    return H5::H5File(QFile::encodeName(timestepFilePath(deck, number)).toStdString(), H5F_ACC_RDONLY);
}

// ---------------------------------------------------------------- arrays

static H5::Group ownGroup(const H5::H5Location& location, const std::string& name)
{
    requireOwn(location, "group", name);
    return location.openGroup(name);
}

namespace {

/// A dataset that a view may name, by its header.
struct SStoredArray
{
    bool isThere = false;
    bool isWhole = false; ///< all bytes are in the file, as far as its size says; others are nowhere
    bool hasKind = false; ///< numbers that every reader of views knows. A record isn't: some crash on it
    int rank = 0;
    hsize_t sizes[2] = {0, 0};
};

/// Closes an object of HDF5 by its number. A view asks for many thousands: by the interface's classes it takes twice as
/// long.
struct SClosing
{
    SClosing(hid_t id, herr_t (*close)(hid_t)) : id(id), close(close) {}
    ~SClosing()
    {
        if (id >= 0)
            close(id);
    }
    SClosing(const SClosing&) = delete;
    SClosing& operator=(const SClosing&) = delete;

    const hid_t id;
    herr_t (*const close)(hid_t);
};

} // namespace

static bool isOfKind(hid_t type, EArrayKind kind)
{
    if (kind == eFloats)
        return H5Tget_class(type) == H5T_FLOAT && H5Tget_size(type) == sizeof(double);
    return H5Tget_class(type) == H5T_INTEGER && H5Tget_size(type) == sizeof(qint32) &&
           (H5Tget_sign(type) == H5T_SGN_2) == (kind == eSigned);
}

/// \param name  of a dataset in the group itself
static SStoredArray storedArray(const H5::Group& group, const char* name, EArrayKind kind)
{
    SStoredArray array;
    H5L_info_t link = {};
    // Most are there, and the first question answers the second.
    const bool isLink = H5Lget_info(group.getId(), name, &link, H5P_DEFAULT) >= 0;
    if (!isLink && H5Lexists(group.getId(), name, H5P_DEFAULT) <= 0)
        return array;
    if (!isLink || link.type != H5L_TYPE_HARD)
        throwAt(group, "dataset", name, "it is a link to something elsewhere, which isn't followed");
    array.isThere = true;
    const SClosing dataset(H5Dopen2(group.getId(), name, H5P_DEFAULT), H5Dclose);
    const SClosing type(H5Dget_type(dataset.id), H5Tclose);
    const SClosing space(H5Dget_space(dataset.id), H5Sclose);
    if (space.id < 0 || type.id < 0)
        return array; // no dataset, or a damaged one
    array.rank = H5Sget_simple_extent_ndims(space.id);
    if (array.rank != 1 && array.rank != 2)
        return array;
    H5Sget_simple_extent_dims(space.id, array.sizes, nullptr);
    array.hasKind = isOfKind(type.id, kind);
    const quint64 most = quint64(H5Dget_storage_size(dataset.id)) * mostInflated;
    const quint64 columns = array.rank == 1 ? 1 : array.sizes[1];
    array.isWhole = columns != 0 && array.sizes[0] <= most / H5Tget_size(type.id) / columns;
    return array;
}

/// Of an array that says itself how many rows it has.
static constexpr quint64 anyRows = ~quint64(0);

bool CDeckHeads::found(const SPlace& place, const SWanted& wanted, quint64 rows, SNamedArray& array)
{
    const std::string what = std::string(wanted.shown) + " of " + place.owner + ": ";
    const SStoredArray stored = storedArray(place.group, wanted.dataset, wanted.kind);
    if (!stored.isThere) {
        lose(what + "not saved");
        return false;
    }
    array = {wanted.shown, place.file, place.path + '/' + wanted.dataset, wanted.kind, stored.sizes[0], wanted.columns};
    const bool hasShape = stored.rank == (wanted.columns == 0 ? 1 : 2) && stored.sizes[1] == wanted.columns &&
                          (rows == anyRows || array.rows == rows);
    if (!stored.hasKind || !hasShape) {
        lose(what + "of another shape or type than every deck has");
        return false;
    }
    if (!stored.isWhole)
        lose(what + "its values aren't all in the file");
    return stored.isWhole && array.rows > 0;
}

void CDeckHeads::addValues(SGrid& grid, const SPlace& place, const std::vector<SWanted>& wanted, quint64 rows)
{
    for (const SWanted& one : wanted) {
        std::vector<std::string> names = one.made;
        names.emplace_back(one.shown);
        if (!chosen.hasAny(names))
            grid.passedOver.insert(names.begin(), names.end());
        else if (SNamedArray array; found(place, one, rows, array))
            grid.values.push_back(array);
    }
}

/// Null for none.
static const SNamedArray* valuesOf(const SGrid& grid, const std::string& name)
{
    const auto found =
        std::find_if(grid.values.begin(), grid.values.end(), [&](const SNamedArray& one) { return one.name == name; });
    return found == grid.values.end() ? nullptr : &*found;
}

/// A property may have the name of an array.
static std::string freeName(const SGrid& grid, std::string name)
{
    while (valuesOf(grid, name) != nullptr || grid.passedOver.count(name) > 0)
        name += " (property)";
    return name;
}

/// The vectors of an array of forces. Some readers know no parts of datasets: they have the array as it is.
static void addForces(SGrid& grid)
{
    const SNamedArray* const stored = valuesOf(grid, "force torque");
    if (stored == nullptr)
        return;
    SNamedArray part = *stored;
    part.shownColumns = 3;
    for (const auto& [name, column] : {std::pair("force", 0), std::pair("torque", 3)}) {
        part.name = name;
        part.firstColumn = static_cast<quint64>(column);
        grid.values.push_back(part);
    }
}

void CDeckHeads::addProperties(SGrid& grid, const SPlace& place, const CCustomPropertyManager& manager, quint64 rows)
{
    if (manager.finalizedCount() == 0)
        return;
    const bool isAny = place.group.nameExists("CustomProperties");
    const H5::Group values = isAny ? ownGroup(place.group, "CustomProperties") : H5::Group();
    for (unsigned int index = 0; index < manager.finalizedCount(); ++index) {
        const CCustomPropertyMetaData& property = *manager.property(index);
        const std::string number = std::to_string(index), name = freeName(grid, property.name);
        if (!chosen.hasAny({name})) {
            grid.passedOver.insert(name);
            continue;
        }
        if (!isAny || !values.nameExists(number)) {
            lose(property.name + " of " + place.owner + ": not saved");
            continue;
        }
        const H5::Group group = ownGroup(values, number);
        const SPlace where{group, place.file, place.path + "/CustomProperties/" + number, place.owner};
        SNamedArray array;
        if (!found(where, {"data", property.name.c_str(), eFloats, property.numberOfElements}, rows, array))
            continue;
        array.name = name;
        grid.values.push_back(array);
    }
}

// ---------------------------------------------------------------- particles and contacts

/// Of the sphere about the particle's centre that bounds its spheres, at scale 1, m.
static double boundingRadius(const H5::Group& type, quint32 version)
{
    double radius = 0.0;
    for (const CSphere& sphere : readTable<HDF5DATATYPES::SSphereType>("spheres", version, type))
        radius = std::max(radius, sphere.position.toVector().length() + sphere.physicalRadius);
    return radius;
}

void CDeckHeads::addParticles(SViewStep& step, const SPlace& timestep)
{
    const H5::Group types = ownGroup(timestep.group, "ParticleTypes");
    quint32 version = 0;
    readAttribute("file version", version, timestep.group);
    std::map<quint32, std::string> named;
    for (const std::string& name : childNames(types)) {
        bool isNumber = false;
        const quint32 index = QString::fromStdString(name).toUInt(&isNumber);
        if (isNumber)
            named[index] = name;
    }
    for (const auto& [index, child] : named) {
        const H5::Group type = ownGroup(types, child);
        std::string name;
        readAttribute("name", name, type);
        const SPlace place{type, timestep.file, timestep.path + "/ParticleTypes/" + child, "particles " + name};
        SGrid grid;
        grid.name = place.owner;
        quint32 slotCount = 0;
        readAttribute("size", slotCount, type);
        if (slotCount == 0) {
            lose(place.owner + ": none");
            continue;
        }
        if (!found(place, {"position", "position", eFloats, 3}, anyRows, grid.points))
            continue;
        const quint64 rows = grid.points.rows;
        addValues(grid, place,
                  {{"ids", "id", eSigned, 0},
                   {"velocity", "velocity", eFloats, 3},
                   {"angular velocity", "angular velocity", eFloats, 3},
                   {"force torque", "force torque", eFloats, 7, {"force", "torque"}},
                   {"scale", "scale", eFloats, 0, {"radius"}}},
                  rows);
        addForces(grid);
        if (const SNamedArray* const scale = valuesOf(grid, "scale")) {
            SNamedArray radius = *scale;
            radius.name = "radius";
            radius.factor = boundingRadius(type, version);
            grid.values.push_back(radius);
        }
        addProperties(grid, place, *properties.particle, rows);
        step.grids.push_back(grid);
    }
}

void CDeckHeads::addContacts(SViewStep& step, const SPlace& timestep)
{
    const H5::Group contacts = ownGroup(timestep.group, "Contacts");
    for (const auto& [child, name] : {std::pair("SurfaceSurface", "contacts between particles"),
                                      std::pair("SurfaceGeometry", "contacts with geometry")}) {
        const H5::Group family = ownGroup(contacts, child);
        quint32 size = 0;
        readAttribute("size", size, family);
        if (size == 0)
            continue; // a timestep without contacts is nothing to report
        const SPlace place{family, timestep.file, timestep.path + "/Contacts/" + child, name};
        SGrid grid;
        grid.name = name;
        if (!found(place, {"position", "position", eFloats, 3}, anyRows, grid.points))
            continue;
        addValues(grid, place,
                  {{"normal overlap", "normal overlap", eFloats, 0},
                   {"normal force", "normal force", eFloats, 3},
                   {"tangential force", "tangential force", eFloats, 3}},
                  grid.points.rows);
        addProperties(grid, place, *properties.contact, grid.points.rows);
        step.grids.push_back(grid);
    }
}

// ---------------------------------------------------------------- walls

/// Vertices before any motion.
/// \param stored  the dataset that holds them; null of an import that was placed somewhere else
/// \return false if the group has none
static bool readBase(const H5::Group& group, std::vector<C3DPoint>& base, const char*& stored)
{
    const bool isImport = group.nameExists("imported coords");
    bool isStatic = true;
    readAttribute("static", isStatic, group);
    const char* const name = !isStatic ? "original coords" : isImport ? "imported coords" : "coords";
    if (!group.nameExists(name))
        return false;
    CArrayReader(group).read(name, H5::PredType::NATIVE_DOUBLE, 3, [&](const SArrayShape& shape) {
        base.resize(shape.rows);
        return static_cast<void*>(base.data());
    });
    stored = name;
    if (!isStatic || !isImport)
        return true;
    double length = 0.0, angle = 0.0;
    C3DPoint from, to, start, end;
    readAttribute("cad translation", length, group);
    readAttribute("cad translation axis start", from, group);
    readAttribute("cad translation axis end", to, group);
    readAttribute("cad rotation", angle, group);
    readAttribute("cad rotation axis start", start, group);
    readAttribute("cad rotation axis end", end, group);
    C3DTransform transform;
    transform.translate((to - from).normalised() * length);
    transform.rotateAboutLine(start, end, angle);
    if (transform.isIdentity())
        return true;
    stored = nullptr;
    std::transform(base.begin(), base.end(), base.begin(), [&](const C3DPoint& point) { return transform * point; });
    return true;
}

/// Whether each corner is there.
static bool hasCorners(const H5::Group& group, std::size_t vertices)
{
    std::vector<TriangleNodes> triangles;
    CArrayReader(group).read("triangle nodes", H5::PredType::NATIVE_UINT, 3, [&](const SArrayShape& shape) {
        triangles.resize(shape.rows);
        return static_cast<void*>(triangles.data());
    });
    const auto isThere = [vertices](quint32 node) { return node < vertices; };
    return std::all_of(triangles.begin(), triangles.end(), [&isThere](const TriangleNodes& nodes) {
        return std::all_of(nodes.begin(), nodes.end(), isThere);
    });
}

bool CDeckHeads::readWall(const H5::Group& group, const SPlace& where, SWall& wall)
{
    readAttribute("name", wall.name, group);
    const SPlace place{group, where.file, where.path, "geometry " + wall.name};
    if (!found(place, {"triangle nodes", "triangles", eUnsigned, 3}, anyRows, wall.triangles))
        return false;
    found(place, {"triangle ids", "id", eUnsigned, 0}, wall.triangles.rows, wall.ids);
    const char* stored = nullptr;
    if (!readBase(group, wall.base, stored)) {
        lose(place.owner + ": its vertices aren't there");
        return false;
    }
    if (!hasCorners(group, wall.base.size())) {
        lose(place.owner + ": triangles have corners that aren't there");
        return false;
    }
    if (stored != nullptr)
        found(place, {stored, "vertices", eFloats, 3}, wall.base.size(), wall.points);
    return true;
}

void CDeckHeads::readDomain(const H5::Group& root, SModel& model)
{
    if (root.nameExists("Domain")) {
        const H5::Group domain = ownGroup(root, "Domain");
        C3DPoint lower, upper;
        readAttribute("domain min", lower, domain);
        readAttribute("domain max", upper, domain);
        const SBoxOutline box{{lower.x, lower.y, lower.z}, {upper.x, upper.y, upper.z}};
        const auto isFinite = [](double value) { return std::isfinite(value); };
        if (std::all_of(box.lower, box.lower + 3, isFinite) && std::all_of(box.upper, box.upper + 3, isFinite))
            model.domain.push_back(box);
    }
    if (model.domain.empty())
        lose("the domain: its corners aren't numbers, or are stored in a record");
}

const CDeckHeads::SModel& CDeckHeads::model(quint32 number)
{
    if (const auto known = models.find(number); known != models.end())
        return known->second;
    models.clear();
    const H5::H5File file = open(number);
    const std::string path = creatorGroup + std::to_string(number);
    requireOwn(file, "group", path);
    const H5::Group root = file.openGroup(path);
    SModel model;
    const H5::Group groups = ownGroup(root, "GeometryGroups");
    const std::string fileName = folder + std::to_string(number) + ".h5", groupsPath = path + "/GeometryGroups/";
    for (const std::string& child : childNames(groups)) {
        bool isNumber = false;
        const quint32 index = QString::fromStdString(child).toUInt(&isNumber);
        const SPlace place{root, fileName, groupsPath + child, child};
        SWall wall;
        if (isNumber && readWall(ownGroup(groups, child), place, wall))
            model.walls[index] = std::move(wall);
    }
    readDomain(root, model);
    return models[number] = std::move(model);
}

void CDeckHeads::addWalls(SViewStep& step, const SPlace& timestep, quint32 modelNumber,
                          std::vector<SMovedVertices>& moved)
{
    const SModel& known = model(modelNumber);
    const H5::Group groups = ownGroup(timestep.group, "GeometryGroups");
    for (const auto& [index, wall] : known.walls) {
        const std::string child = std::to_string(index);
        SGrid grid;
        grid.name = "geometry " + wall.name;
        grid.points = wall.points;
        grid.triangles = wall.triangles;
        if (wall.ids.rows > 0 && chosen.hasAny({wall.ids.name}))
            grid.values.push_back(wall.ids);
        bool isStatic = true;
        C3DTransform transform;
        if (groups.nameExists(child)) {
            const H5::Group group = ownGroup(groups, child);
            const SPlace place{group, timestep.file, timestep.path + "/GeometryGroups/" + child, grid.name};
            readAttribute("static", isStatic, group);
            if (!isStatic)
                readAttribute("xform", transform, group);
            addValues(grid, place, {{"force torque", "force torque", eFloats, 7, {"force", "torque"}}},
                      grid.triangles.rows);
            addForces(grid);
            addProperties(grid, place, *properties.geometry, grid.triangles.rows);
        }
        if (!isStatic || grid.points.rows == 0) {
            SMovedVertices vertices;
            vertices.dataset = isStatic ? "/models/" + std::to_string(modelNumber) + '/' + child
                                        : "/timesteps/" + std::to_string(step.number) + '/' + child;
            vertices.points = wall.base;
            if (!isStatic)
                std::transform(wall.base.begin(), wall.base.end(), vertices.points.begin(),
                               [&](const C3DPoint& point) { return transform * point; });
            grid.points = {"vertices", extraFile, vertices.dataset, eFloats, vertices.points.size(), 3};
            moved.push_back(std::move(vertices));
        }
        step.grids.push_back(grid);
    }
    step.domain = known.domain;
}

// ---------------------------------------------------------------- a timestep

SViewStep CDeckHeads::step(quint32 number, std::vector<SMovedVertices>& moved)
{
    current = number;
    beginStorageCount();
    const H5::H5File file = open(number);
    const H5::Group timestep = openOnlyTimestep(file);
    const SPlace place{timestep, folder + std::to_string(number) + ".h5", timestep.getObjName(), std::string()};
    if (!isXdmfPath(place.path))
        throw hdf5_error("its group has a name that a view can't hold");
    SViewStep step;
    step.number = number;
    readAttribute("time", step.time, timestep);
    quint32 modelNumber = 0;
    readAttribute(creatorIndexName, modelNumber, timestep);
    addParticles(step, place);
    addContacts(step, place);
    addWalls(step, place, modelNumber, moved);
    return step;
}

} // namespace NBrenmark
