#pragma once
// A particle type: a rigid clump of spheres, and the store of all live particles of that type.
// The state is held in arrays, one element per slot, so that a whole array moves as one dataset.
//
// A reader fills the arrays that its file holds, each to the count of rows that is proven to be there,
// then calls resizeSlots with that count and rebuildFreeList: resizeSlots gives the arrays that the file
// lacks their zeros and leaves a full array alone. So no array is allocated twice and none by a number
// that was only announced.

#include "maths/quaternion.h"
#include "maths/vector.h"
#include "properties/custom_property_data.h"
#include "visitors/attribute_retrieval.h"

#include <QString>
#include <array>
#include <string>
#include <vector>

namespace NBrenmark {

class CDomain;
class IFileVisitorReader;
class IFileVisitorWriter;

/// Force (N), torque (N m) and compressive force (N) of a particle or triangle.
using ForceTorque = std::array<double, 7>;
static_assert(sizeof(ForceTorque) == 56, "arrays of force records are rows of seven doubles");

/// Bits of CParticleType::dataMask: which arrays hold data of the timestep.
enum EParticleField : quint32
{
    eIds = 1u << 0,
    eVelocity = 1u << 1,
    ePosition = 1u << 2,
    eOrientation = 1u << 3,
    eAngularVelocity = 1u << 4,
    eScale = 1u << 5,
    eForceTorque = 1u << 6,
    eUnscaledForceTorque = 1u << 7,
    eExternalForceTorque = 1u << 8,
    eCharge = 1u << 11,             ///< legacy family only
    eElectrostaticForce = 1u << 12, ///< legacy family only
    eCreationTime = 1u << 13,       ///< HDF5 family only
    eMatrixOrientation = 1u << 31   ///< oldest legacy form of eOrientation
};

/// What a writer starts from: everything but the legacy family's own arrays.
constexpr quint32 allParticleFields = 0x21FF;

/// The stored-fields word of a write or read: allParticleFields or a word that a file holds,
/// without what the particle mask of SSaveOptions takes out.
quint32 reduceParticleFields(quint32 fields, quint32 particleMask);

struct CSphere
{
    QString name;
    C3DPoint position;             ///< in the particle's frame, m
    double contactRadius = 0.001;  ///< m
    double physicalRadius = 0.001; ///< m
    bool radiiDiffer = false;      ///< derived, never stored

    /// Sets both radii and derives radiiDiffer by the fuzzy test.
    void setRadii(double contact, double physical);
};

/// Charges that old files store beside the particles: arrays of one element per slot, or empty ones.
class CParticleTypeElectrostatic
{
public:
    virtual ~CParticleTypeElectrostatic() = default;

    /// Copy the rows, one double or three for each slot, to the front of the values of a custom property,
    /// as many as it has room for.
    void copyCharges(std::vector<double>& values) const;
    void copyForces(std::vector<double>& values) const;

    std::vector<double> charge;                ///< C
    std::vector<C3DVector> electrostaticForce; ///< N
    std::vector<qint32> words;                 ///< beside the charges; never stored
};

/// All of one particle, for a new slot.
struct SParticleState
{
    qint32 id = 0;
    C3DVector velocity; ///< m/s
    C3DPoint position;  ///< m
    CQuaternion orientation;
    C3DVector angularVelocity; ///< rad/s
    double scale = 1.0;
    ForceTorque forceTorque{};
    ForceTorque unscaledForceTorque{};
    ForceTorque externalForceTorque{};
    /// Of the finalized properties one after the other; those that are missing get their initial values.
    std::vector<double> customValues;
};

class CParticleType : public IAttributeRetrieval
{
public:
    /// \param propertyManager  of the particle properties; not owned, may be null
    explicit CParticleType(CCustomPropertyManager* propertyManager);

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    bool getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                  quint32 row) const override;
    NAttributes::EAttributeOwner attributeOwner() const override { return NAttributes::eParticleAttribute; }

    /// Sets both forms of the name.
    void setName(const QString& text);
    /// Derives what follows from the spheres that were read.
    void settleSpheres();

    quint32 slotCount() const { return static_cast<quint32>(ids.size()); }
    bool isLive(quint32 slot) const { return slot < ids.size() && ids[slot] >= 1; }
    quint32 liveCount() const { return slotCount() - freeCount; }

    /// The slot released last, or a new one at the end. It has scale 1, id 0 and initial custom values,
    /// and holds nothing of the particle that was there before.
    quint32 allocateSlot();
    /// A slot with a particle in it.
    quint32 addParticle(const SParticleState& state);
    /// With shrinkIfLast the last slot is taken off, and the free list stays as it is; any other joins the
    /// free list, its id then being the link to the next free one. Not for a slot that is free already.
    void releaseSlot(quint32 slot, bool shrinkIfLast);
    /// Brings every per-slot array to so many elements; new ones are zero, quaternions too, and no
    /// particle is live in them. The charges and the places of spheres, which most timesteps don't have,
    /// stay empty until something fills them.
    void resizeSlots(quint32 count);
    void reserveSlots(quint32 capacity);
    /// Releases every slot whose id is below 1, in ascending order: how a store is brought in order
    /// after a read. The slot released last is the first that allocateSlot gives.
    void rebuildFreeList();
    /// Empties the slots and the spheres.
    void clear();

    /// Greatest reach of a sphere from the particle's centre, physical radii, m; 0 without spheres.
    double maxExtent(double scaleFactor) const;
    /// Box of the spheres with their physical radii, particle frame, m.
    void localBounds(C3DPoint& min, C3DPoint& max) const;
    /// \return false without spheres
    bool radiusRange(double& min, double& max, bool physical) const;
    /// Places the spheres of a live slot, wrapped into the domain; nothing for a single sphere, whose
    /// place is the particle's.
    void updateSpherePositions(quint32 slot, const CDomain& domain);
    /// \return false if the slot isn't live
    bool sphereCentreAndRadius(quint32 slot, quint32 sphere, C3DPoint& centre, double& radius) const;
    /// Name, material, mass properties and all spheres agree.
    bool sameDefinition(const CParticleType& other) const;
    /// Deletes each sphere whose name was met before. \return true when the count changed
    bool removeDuplicateSpheres();
    /// Takes the definition of another type, and none of its particles.
    void copyDefinition(const CParticleType& other);
    /// Exchanges the definition and all arrays between two types of one manager, the previous custom
    /// values aside.
    void swapContents(CParticleType& other);

    // The definition.
    std::string name; ///< always set together with displayName
    QString displayName;
    QString materialName;
    qint32 surfaceBased = 1;
    bool autoCenterParticle = true;
    QString templateName;
    bool autoProperties = false;
    double rawMass = 0.0;   ///< of the unscaled template, kg
    double rawVolume = 0.0; ///< m^3
    C3DPoint rawInertia;    ///< Ixx, Iyy, Izz, kg m^2
    bool calculateProperties = true;
    std::vector<CSphere> spheres;

    // The store, one element per slot.
    std::vector<qint32> ids; ///< 1 or more: a live particle's id; below 1: a free slot, see releaseSlot
    std::vector<double> scale;
    std::vector<C3DVector> velocity; ///< m/s
    std::vector<C3DPoint> position;  ///< m
    std::vector<CQuaternion> orientation;
    std::vector<C3DVector> angularVelocity; ///< rad/s
    std::vector<ForceTorque> forceTorque;
    std::vector<ForceTorque> unscaledForceTorque;
    std::vector<ForceTorque> externalForceTorque;
    std::vector<double> creationTime;       ///< s
    std::vector<unsigned char> activeFlags; ///< 0 in a released slot
    std::vector<C3DPoint> spherePositions;  ///< m, per sphere; empty until placed, see updateSpherePositions
    CParticleTypeElectrostatic electrostatic;
    CCustomPropertyData customProperties;
    CCustomPropertyData previousCustomProperties; ///< of the step before; without items until something keeps it
    quint32 dataMask = 0;                         ///< EParticleField: which arrays hold data
    C3DPoint gravity;                             ///< a copy of the creator's, m/s^2

    qint32 firstFree = 0; ///< complement of the first free slot's index; 0: none
    quint32 freeCount = 0;

private:
    /// Calls visit for each array that always has one element per slot.
    template <class TVisit>
    void forEachSlotArray(const TVisit& visit);
    void resizeArrays(quint32 count);
    void emptySlot(quint32 slot);
};

} // namespace NBrenmark
