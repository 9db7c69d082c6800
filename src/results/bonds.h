#pragma once
// Pairs held together by a bonded contact model. They outlast contact and may break. A family is a
// structure of arrays, one element a row; rows aren't used again.

#include "maths/vector.h"
#include "results/pair_rows.h"
#include "visitors/attribute_retrieval.h"

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace NBrenmark {

class CBondParameters;
class CParticleType;
class IFileVisitorReader;
class IFileVisitorWriter;

/// CBondsBase::state.
enum EBondState : quint32
{
    eBrokenBond = 0,
    eIntactBond = 1,
    eDroppedBond = 2 ///< the row goes at the next saving
};

/// The parameters of a pair of materials in a model that bonds, or null.
using BondParametersOf = std::function<const CBondParameters*(const CParticleType& type, const CParticleType& other)>;

class CBondsBase : public IAttributeRetrieval
{
public:
    /// Capacity that the arrays get at the first growth.
    static constexpr std::size_t leastCapacity = 16000;
    /// Stands for no place of the table.
    static constexpr quint32 noSlot = 0xFFFFFFFFu;

    CBondsBase() = default;
    ~CBondsBase() override = default;
    CBondsBase(const CBondsBase&) = delete;
    CBondsBase& operator=(const CBondsBase&) = delete;

    void read(IFileVisitorReader& visitor);
    /// Takes the dropped rows out before.
    void write(IFileVisitorWriter& visitor);

    bool getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                  quint32 row) const override;
    NAttributes::EAttributeOwner attributeOwner() const override { return NAttributes::eBondAttribute; }

    /// The centres of the two spheres that a bond holds, m.
    /// \return false if the family or the store has none
    virtual bool bondEnds(const CParticleTypes& types, quint32 row, C3DPoint& firstCentre, C3DPoint& secondCentre,
                          double& length) const = 0;

    quint32 rowCount() const { return static_cast<quint32>(rows.size()); }
    quint32 countByState(quint32 wanted) const;

    /// A new row of zeros at the end.
    /// \param exclusive  the caller has the family to itself; else the call may come from a parallel loop
    /// \return false if the arrays are full and the call isn't exclusive
    bool allocateRow(quint32& row, bool exclusive);

    // What follows is for one thread.

    void reserveRows(std::size_t count);
    void resizeRows(std::size_t count);
    void clear();
    /// Takes out the dropped rows, each replaced by the last one that stays.
    void compact();
    /// Enters every row that isn't dropped into the table. Adding rows doesn't.
    void rebuildLookup();
    /// The place of the table that holds a row, or the empty one where it belongs; noSlot without a table.
    quint32 findSlot(const PairRow& row) const;
    /// \return false if the table doesn't hold the row
    bool findRow(const PairRow& wanted, quint32& row) const;

    std::vector<PairRow> rows;
    std::vector<C3DVector> normalForce;             ///< N
    std::vector<C3DVector> tangentialForce;         ///< N
    std::vector<C3DVector> normalTorque;            ///< N m
    std::vector<C3DVector> tangentialTorque;        ///< N m
    std::vector<quint32> state;                     ///< EBondState
    std::vector<double> breakTime;                  ///< s
    std::vector<const CBondParameters*> parameters; ///< null until matched; not owned, not stored
    std::vector<quint32> lookup;                    ///< open addressing, row + 1; 0: empty; not stored
    std::mutex lock;

private:
    void makeRoom();
    void copyRow(quint32 source, quint32 target);
};

class CSurfaceSurfaceBonds : public CBondsBase
{
public:
    bool bondEnds(const CParticleTypes& types, quint32 row, C3DPoint& firstCentre, C3DPoint& secondCentre,
                  double& length) const override;
};

class CSurfaceGeometryBonds : public CBondsBase
{
public:
    bool bondEnds(const CParticleTypes&, quint32, C3DPoint&, C3DPoint&, double&) const override { return false; }
};

/// What bonds lost for which the bonding model has no parameters.
struct SUnmatchedBonds
{
    quint32 intact = 0; ///< and are broken from now on
    quint32 broken = 0; ///< before, at another time or with forces, of which nothing is left
    quint32 toDrop = 0; ///< were to be dropped at the next saving and stay as broken ones

    quint32 total() const { return intact + broken + toDrop; }
    bool any() const { return total() > 0; }
    /// Which of them there are, what they were and what they are now, for the log.
    std::string text() const;
};

class CBonds
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor);
    void clear();
    /// Of the surface-surface family.
    quint32 countByState(quint32 wanted) const { return surfaceSurface.countByState(wanted); }
    /// Gives each surface-surface bond the parameters of its two types. One that has none is broken
    /// from this time on and bears nothing, whatever its state was before: a row that was to be dropped
    /// stays.
    SUnmatchedBonds matchParameters(const CParticleTypes& types, double time, const BondParametersOf& parametersOf);

    CSurfaceSurfaceBonds surfaceSurface;
    CSurfaceGeometryBonds surfaceGeometry;
};

} // namespace NBrenmark
