#pragma once
// Records of contacts' histories: finished collisions in families of their own, and those that go on
// nested in a contact family, one record a row. A family is a structure of arrays, one element a record.

#include "core/save_options.h"
#include "maths/quaternion.h"
#include "maths/vector.h"
#include "results/attribute_container.h"
#include "visitors/attribute_retrieval.h"

#include <mutex>
#include <vector>

namespace NBrenmark {

struct SLogTitle;

class IFileVisitorReader;
class IFileVisitorWriter;

/// Bits of a word that names arrays of a collision family.
enum ECollisionField : quint32
{
    eCollisionIds = 1u << 0,
    eCollisionStartTime = 1u << 1,
    eCollisionEndTime = 1u << 2,
    eCollisionMaxNormalForce = 1u << 3,
    eCollisionMaxTangentialForce = 1u << 4,
    eCollisionUnitCpVector = 1u << 5,
    eCollisionRelativeVelocity = 1u << 6,
    eCollisionPosition = 1u << 7,
    eCollisionIterations = 1u << 8,
    eCollisionNormalEnergy = 1u << 9,
    eCollisionShearEnergy = 1u << 10,
    eCollisionTotalNormalForce = 1u << 11,
    eCollisionTotalTangentialForce = 1u << 12,
    // Of the first end; of the second the same, secondEndShift bits higher.
    eEndIds = 1u << 13,
    eEndVelocity = 1u << 14,
    eEndPosition = 1u << 15,
    eEndRadius = 1u << 16,
    eEndAngularVelocity = 1u << 17,
    eEndOrientation = 1u << 18,
    /// Every array that there is.
    eAllCollisionFields = (1u << 25) - 1,
    /// The family's own mask.
    eOwnCollisionFields = 1u << 25
};
constexpr unsigned secondEndShift = 6;

/// One of the two partners, at the start of the collision.
struct SCollisionEnd
{
    std::vector<quint32> ids;               ///< of particle or triangle
    std::vector<C3DVector> velocity;        ///< m/s
    std::vector<C3DPoint> position;         ///< m
    std::vector<double> radius;             ///< m
    std::vector<C3DVector> angularVelocity; ///< rad/s
    std::vector<CQuaternion> orientation;
};

class CCollisionsBase : public IAttributeRetrieval, public CAttributeContainer<CCollisionsBase>
{
public:
    /// \param mask  the arrays that the family has; the others stay empty
    explicit CCollisionsBase(quint32 mask) : mask(mask) {}
    ~CCollisionsBase() override = default;
    CCollisionsBase(const CCollisionsBase&) = delete;
    CCollisionsBase& operator=(const CCollisionsBase&) = delete;

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Whoever asks for all rows again gets the same column, until forgetColumns().
    bool getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                  quint32 row) const override;
    NAttributes::EAttributeOwner attributeOwner() const override { return NAttributes::eCollisionAttribute; }

    /// The family's bit of the timestep mask.
    virtual quint32 familyMask() const = 0;
    quint32 recordCount() const { return static_cast<quint32>(ids.size()); }
    /// Records with a collision.
    quint32 liveCount() const;
    void reserveRecords(std::size_t count);
    /// New records are zero, quaternions too, and without a collision.
    void resizeRecords(std::size_t count);
    void clear();
    /// \param fieldSet  the arrays that take part
    void copyRecord(quint32 source, quint32 target, quint32 fieldSet);
    /// Empties what a file held beyond the family's mask. \return whether there was any
    bool dropForeignArrays();
    /// Brings a family in order that was read, and reports what didn't fit. Arrays that aren't stored become zeros.
    /// \param count   records of the file
    /// \param fields  ECollisionField: what the file holds of them
    void settle(quint32 count, quint32 fields, const SLogTitle& title);

    std::vector<quint32> ids;       ///< 0 marks a record without a collision
    std::vector<double> startTime;  ///< s
    std::vector<C3DPoint> position; ///< m
    std::vector<C3DVector> unitCpVector;
    std::vector<C3DVector> relativeVelocity; ///< m/s
    SCollisionEnd first;
    SCollisionEnd second;
    std::vector<C3DVector> maxNormalForce;     ///< N
    std::vector<C3DVector> maxTangentialForce; ///< N
    std::vector<quint32> iterations;
    std::vector<double> normalEnergy;            ///< J
    std::vector<double> shearEnergy;             ///< J
    std::vector<C3DVector> totalNormalForce;     ///< N
    std::vector<C3DVector> totalTangentialForce; ///< N
    std::vector<double> endTime;                 ///< s
    const quint32 mask;
    std::mutex lock;

private:
    friend class CAttributeContainer<CCollisionsBase>;
    bool readRows(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                  quint32 row) const;
};

class CSurfaceSurfaceCollisions : public CCollisionsBase
{
public:
    CSurfaceSurfaceCollisions() : CCollisionsBase(0x1FFFFFF) {}
    quint32 familyMask() const override { return eSurfaceSurfaceCollisions; }
};

/// The second end is a triangle: it has neither radius nor rotation.
class CSurfaceGeometryCollisions : public CCollisionsBase
{
public:
    CSurfaceGeometryCollisions() : CCollisionsBase(0x3FFFFF) {}
    quint32 familyMask() const override { return eSurfaceGeometryCollisions; }
};

/// The finished ones.
class CCollisions
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
    void clear();

    CSurfaceSurfaceCollisions surfaceSurface;
    CSurfaceGeometryCollisions surfaceGeometry;
};

} // namespace NBrenmark
