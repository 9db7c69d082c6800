#pragma once
// A named triangle mesh with its material, its motions and the factories that fill it. The mesh of
// the base comes from a file; the shapes derived from it make their own from a few parameters.
//
// A group starts static: its mesh is coords. A moving group keeps the mesh as it was made in
// originalCoords, and coords is where the transform has taken it. What follows from the mesh (centres,
// normals, areas, volume) is computed once a change, so that reading a timestep doesn't pay for it.

#include "maths/transform.h"
#include "model/bounding_box.h"
#include "model/geometry/block_link.h"
#include "model/geometry/bounding_shape.h"
#include "model/geometry/geometry_electrostatic.h"
#include "model/geometry/moment_of_inertia.h"
#include "model/kinematics/ang_vel_and_pos.h"
#include "model/kinematics/kinematics.h"
#include "properties/custom_property_data.h"
#include "visitors/attribute_retrieval.h"

#include <QString>
#include <array>
#include <memory>
#include <string>
#include <vector>

namespace NBrenmark {

class CParticleFactoryList;
class GeometryGroups;
class IFileVisitorReader;
class IFileVisitorWriter;

/// A triangle by the indices of its corners in coords. A file may hold any number: whoever looks a
/// corner up tests it.
using TriangleNodes = std::array<quint32, 3>;
static_assert(sizeof(TriangleNodes) == 12, "arrays of triangles are rows of three words");

/// Force (N), torque (N m) and compressive force (N) on a triangle.
using TriangleForce = std::array<double, 7>;
static_assert(sizeof(TriangleForce) == 56, "arrays of force records are rows of seven doubles");

/// Bits of CGeometryGroup::dataMask: which arrays of triangles a file holds.
enum ETriangleField : quint32
{
    eTriangleIds = 1u << 0,
    eTriangleNodes = 1u << 1,
    eTriangleForces = 1u << 2,
    eTriangleCharges = 1u << 3 ///< legacy family only
};

/// Values of CGeometryGroup::geometryType; a file may hold others.
enum EGeometryType : qint32
{
    eRealGeometry = 1,
    eVirtualGeometry = 2
};

/// What display code keeps for each triangle. Nothing here reads it; a new mesh empties it.
struct CTriangleColoringData
{
    std::vector<double> values;
    std::vector<quint32> colours;
    std::vector<quint32> flags;
};

class CGeometryGroup : public IFactoryBoundingShape, public IAttributeRetrieval
{
public:
    static constexpr quint32 notSet = 0xFFFFFFFFu; ///< index or uniqueId
    /// Greatest number of triangles that a shape makes: one for each id that a file may hold.
    static constexpr quint32 mostTriangles = 1000001;

    /// \param propertyManager  of the geometry properties; not owned, may be null
    explicit CGeometryGroup(CCustomPropertyManager* propertyManager);
    ~CGeometryGroup() override;
    CGeometryGroup(const CGeometryGroup&) = delete;
    CGeometryGroup& operator=(const CGeometryGroup&) = delete;

    /// The word that files hold for the shape, and the one that people read.
    virtual QString typeName() const;
    virtual QString displayName() const;
    virtual void read(IFileVisitorReader& visitor);
    virtual void write(IFileVisitorWriter& visitor) const;

    bool getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                  quint32 row) const override;
    NAttributes::EAttributeOwner attributeOwner() const override { return NAttributes::eGeometryAttribute; }

    /// Takes the mesh to matrix x originalCoords and makes the group a moving one. A group that hasn't
    /// moved yet keeps a copy of its mesh first. Bounds and derived data aren't updated: see moveTo.
    virtual void applyTransform(const C3DTransform& matrix);
    /// The box around coords; both corners zero without a vertex.
    virtual void updateBounds();
    /// Takes the mesh that was read to where it is and derives the rest from it. Bounds and magnitudes stay as
    /// stored, for whoever wrote them may have summed in another order; an open group encloses nothing.
    virtual void settle();
    /// What stands for the centre of mass of an open group. Nothing without a shape.
    virtual void defaultCentreOfMass();

    const CBoundingBox& boundingBox() const override { return bounds; }
    bool isClosed() const override { return closed; }
    double enclosedVolume() const override { return closed ? enclosedMagnitude : 0.0; }
    double surfaceArea() const override { return surfaceMagnitude; }

    /// Renames the group, its place in the owner's table and the section of its factories.
    void setName(const QString& newName);
    /// Replaces the mesh, gives it ids and computes what follows from it.
    void setMesh(std::vector<C3DPoint> meshCoords, std::vector<TriangleNodes> triangles);
    /// Drops the mesh with all that goes with it, and gives its ids back.
    void clearMesh();
    void reserveTriangles(std::size_t count);
    /// Centres, normals, areas and, of a closed group, the volume; brings all arrays of triangles and the
    /// custom properties to the number of triangles. A triangle with a corner that isn't there or is no
    /// number counts as a point of no area; the log says how many there are.
    void recomputeDerivedData();
    /// Of a closed group from its mesh, as if its volume were filled evenly.
    void computeCentreOfMass();

    /// Texture co-ordinates of a point, from 0 to 1 across the bounding box, as the box is seen through one
    /// of its sides: 0 and 1 along x give y and z, 2 and 3 along y give z and x, 4 and 5 along z x and y.
    /// Across a box without extent they are 0; a point outside of the box counts as on its border.
    /// \return false, with both 0 and an error in the log, once a deck, for no such side or no such box
    bool correctCoordinatesFromCubicSide(const C3DPoint& point, quint32 side, double& u, double& v) const;

    /// Makes matrix the transform of the group: mesh, bounds and derived data follow.
    void moveTo(const C3DTransform& matrix);
    /// Makes the group static: a moving one goes back to where it was made.
    void standStill();

    std::string name; ///< always equal to displayedName; set both by setName
    QString displayedName;
    quint32 index = notSet; ///< position in the owner
    quint32 uniqueId = notSet;
    GeometryGroups* owner = nullptr; ///< not owned

    // The mesh.
    bool isStatic = true;
    std::vector<C3DPoint> coords;         ///< m
    std::vector<C3DPoint> originalCoords; ///< as it was made, m; empty in a group that never moved
    std::vector<quint32> vertexIds;       ///< one for each vertex
    std::vector<quint32> triangleIds;     ///< one for each triangle
    std::vector<TriangleNodes> triangleNodes;
    std::vector<TriangleForce> triangleForces;
    C3DTransform transform; ///< from originalCoords to coords
    C3DVector translation;  ///< m
    quint32 dataMask = 0;   ///< ETriangleField

    // What follows from it.
    std::vector<C3DPoint> triangleCentres;  ///< m
    std::vector<C3DVector> triangleNormals; ///< of length 1, by the order of the corners
    std::vector<double> triangleAreas;      ///< m^2
    std::vector<double> cumulativeAreas;    ///< running sum, by which a triangle is picked evenly, m^2
    CBoundingBox bounds;
    bool closed = false;
    double enclosedMagnitude = 0.0; ///< volume, m^3
    double surfaceMagnitude = 0.0;  ///< area, m^2
    CTriangleColoringData coloring;

    // The body.
    QString materialName;
    qint32 geometryType = eRealGeometry;
    std::array<double, 3> colour{0.5, 0.5, 0.5}; ///< red, green, blue, 0 to 1
    C3DPoint centreOfMass;                       ///< m
    C3DPoint originalCentreOfMass;               ///< m
    C3DPoint pointOfAction;                      ///< m
    C3DPoint originalPointOfAction;              ///< m
    CMomentOfInertia momentOfInertia;
    CGeometryGroupElectrostatic electrostatic;
    CCustomPropertyData customProperties; ///< one item for each triangle
    CCustomPropertyData previousCustomProperties;

    // Its motion.
    CKinematics kinematics;
    C3DVector velocity; ///< m/s
    bool resetVelocities = true;
    AngVelAndPosList motionHistory; ///< what the rotations of the last step did
    double time = 0.0;              ///< s; carried
    C3DVector desiredForce;         ///< N
    double gain = 0.0;              ///< carried

    std::unique_ptr<CParticleFactoryList> factories; ///< never null
    std::unique_ptr<CBlockLink> materialBlockRef;    ///< null unless a material block fills the group

protected:
    /// How every shape takes over its new mesh: a moving group keeps it as the original one and goes where
    /// its transform takes it.
    void replaceMesh(std::vector<C3DPoint> unmoved, std::vector<TriangleNodes> triangles);
    /// Centre of mass and point of action, original and present.
    void setCentreOfMass(const C3DPoint& centre);
    /// False, with a line in the log, for more triangles than ids.
    bool canHold(quint64 triangles) const;

private:
    void reportBrokenTriangles(std::size_t outside, std::size_t noNumbers);

    std::array<std::size_t, 2> reportedBroken{}; ///< so that a mesh is reported once, not once a timestep
};

} // namespace NBrenmark
