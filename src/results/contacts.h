#pragma once
// Pairs that touch at a timestep, in two families: sphere to sphere and sphere to triangle. A family is a
// structure of arrays, one element a row. A row that is released joins a chain and is given out again, so
// that no other row moves while a simulation runs; saving takes the released rows out.

#include "core/save_options.h"
#include "properties/custom_property_data.h"
#include "results/collisions.h"
#include "results/contact_records.h"
#include "results/pair_rows.h"
#include "visitors/attribute_retrieval.h"

#include <mutex>
#include <utility>

namespace NBrenmark {

struct SLogTitle;

/// Bits of a word that names arrays of a contact family, a field set.
enum EContactField : quint32
{
    eContactEnds = 1u << 0,
    eContactTangentialOverlap = 1u << 1,
    eContactVector1 = 1u << 2,
    eContactVector2 = 1u << 3,
    eContactPosition = 1u << 4,
    eContactNormalOverlap = 1u << 5,
    eContactNormalForce = 1u << 6,
    eContactTangentialForce = 1u << 7,
    eContactRecordValues = 1u << 9,
    eContactCollisions = 1u << 10, ///< the nested records, while they follow the rows
    eContactLegacyScalar = 1u << 11,
    eContactLegacyFlags = 1u << 12,
    eAllContactFields = 8191
};

/// What CContactsBase::normalOverlap holds where no contact is.
constexpr double takenOverlap = -1.0;    ///< given out again and not filled yet
constexpr double releasedOverlap = -2.0; ///< on the chain of released rows

class CContactsBase : public IAttributeRetrieval
{
public:
    /// Capacity that the arrays get at the first growth: a reallocation touches more than ten of them.
    static constexpr std::size_t leastCapacity = 32000;

    /// \param propertyManager  of the contact properties; not owned
    CContactsBase(CCustomPropertyManager* propertyManager, CCollisionsBase& activeCollisions)
        : customProperties(propertyManager), activeCollisions(activeCollisions)
    {}
    ~CContactsBase() override = default;
    CContactsBase(const CContactsBase&) = delete;
    CContactsBase& operator=(const CContactsBase&) = delete;

    void read(IFileVisitorReader& visitor);
    /// Takes the released rows out before.
    void write(IFileVisitorWriter& visitor);

    bool getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                  quint32 row) const override;
    NAttributes::EAttributeOwner attributeOwner() const override { return NAttributes::eContactAttribute; }

    /// The family's bit of the timestep mask.
    virtual quint32 familyMask() const = 0;
    quint32 rowCount() const { return static_cast<quint32>(rows.size()); }
    /// An overlap that is no number counts as live: it is a contact of a solver that diverged.
    bool isLive(quint32 row) const { return !(normalOverlap[row] < 0.0); }
    quint32 liveCount() const;
    /// Rows that aren't live though their overlap names no state: a damaged file's.
    quint32 strayCount() const;

    /// The row released last, its overlap being takenOverlap, or a new one of zeros at the end.
    /// \param exclusive  the caller has the family to itself; else the call may come from a parallel loop
    /// \return false if the arrays are full and the call isn't exclusive
    bool allocateRow(quint32& row, bool exclusive);
    /// Puts a row on the chain, once. May be called from parallel loops.
    void releaseRow(quint32 row);
    /// The first live row of two ends, each an index and an element. Linear.
    bool findRow(const std::pair<quint32, quint32>& firstEnd, const std::pair<quint32, quint32>& secondEnd,
                 quint32& row) const;

    // What follows is for one thread.

    /// Makes room for so many rows, but at least leastCapacity; 0 makes room for one more.
    void reserveRows(std::size_t count);
    /// New rows are zero, custom properties, which always follow, at their initial values.
    /// \param fieldSet  the arrays that take part
    void resizeRows(std::size_t count, quint32 fieldSet = eAllContactFields);
    /// The same after a read. Arrays that weren't stored become zeros, which is reported.
    /// \param stored  EContactField
    void fillUp(quint32 count, quint32 stored, const SLogTitle& title);
    /// The item of custom properties goes with the arrays of the field set.
    void copyRow(quint32 source, quint32 target, quint32 fieldSet = eAllContactFields);
    /// collisionsActive and freedCount survive.
    void clear();
    /// Takes out the rows that aren't live, each replaced by the last one that is.
    void compact();
    /// Brings a family in order that was read, and reports what didn't fit.
    void settle(const SLogTitle& title);
    /// Chains the released rows as a file left them: the last one is the first to be used again.
    void rebuildFreeChain();
    /// Brings the nested records to one a row, if they follow the rows.
    /// \return false if there was another number of them, and not none
    bool fitCollisions();
    /// The same for the values of contactRecords.
    bool fitRecords();

    std::vector<PairRow> rows;
    std::vector<C3DPoint> position;           ///< m
    std::vector<C3DVector> contactVector1;    ///< m
    std::vector<C3DVector> contactVector2;    ///< m
    std::vector<double> normalOverlap;        ///< m; below 0.0: not live
    std::vector<C3DVector> tangentialOverlap; ///< m
    std::vector<C3DVector> normalForce;       ///< N
    std::vector<C3DVector> tangentialForce;   ///< N
    std::vector<double> legacyScalar;         ///< legacy family only
    std::vector<quint32> legacyFlags;         ///< legacy family only
    CContactRecordList contactRecords;
    CCustomPropertyData customProperties;
    CCollisionsBase& activeCollisions; ///< nested, one record a row while collisionsActive; not owned
    quint32 firstFree = 0;             ///< head of the chain: row + 1; 0: none. The link is element 1 of a row
    quint32 freedCount = 0;            ///< releases so far
    bool collisionsActive = false;
    std::mutex lock;

private:
    void makeRoom();
    void reserveAll(std::size_t capacity, quint32 fieldSet = eAllContactFields);
    bool hasCollisions(quint32 fieldSet) const;
};

class CSurfaceSurfaceContacts : public CContactsBase
{
public:
    using CContactsBase::CContactsBase;
    quint32 familyMask() const override { return eSurfaceSurfaceContacts; }
};

class CSurfaceGeometryContacts : public CContactsBase
{
public:
    using CContactsBase::CContactsBase;
    quint32 familyMask() const override { return eSurfaceGeometryContacts; }
};

class CContacts
{
public:
    explicit CContacts(CCustomPropertyManager* propertyManager);
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor);
    void clear();

    quint32 liveCount() const { return surfaceSurface.liveCount() + surfaceGeometry.liveCount(); }
    /// Releases every row with an end that isn't there, a particle type without spheres included.
    /// \return rows that failed, those counted too that were released before
    quint32 removeDanglingRows(const CParticleTypes& types, const TriangleCounts& groups);

private:
    CSurfaceSurfaceCollisions activeSurfaceSurface; // nested in the families below
    CSurfaceGeometryCollisions activeSurfaceGeometry;

public:
    CSurfaceSurfaceContacts surfaceSurface;
    CSurfaceGeometryContacts surfaceGeometry;
};

} // namespace NBrenmark
