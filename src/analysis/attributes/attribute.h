#pragma once
// Attributes that read whole columns: the rows of an owner in one call, in base units. The reads of single values that
// owners and displays ask for are columns of one row, in the units that the user prefers.

#include "units/unit_table.h"
#include "visitors/attribute_retrieval.h"

#include <cstddef>

namespace NBrenmark::NAttributes {

/// The rows of a column: live ones, in any order.
struct SAttributeRows
{
    const quint32* rows = nullptr; ///< not owned
    std::size_t count = 0;

    const quint32* begin() const { return rows; }
    const quint32* end() const { return rows + count; }
};

/// The stored arrays that values are made of.
struct SNeededArrays
{
    quint32 ofParticles = 0; ///< EParticleField
    quint32 ofContacts = 0;  ///< EContactField
};

class CAttribute : public CAttributeDescriptor
{
public:
    CAttribute(const QString& name, EAttributeValueKind kind, quint32 quantity, quint32 owners,
               const SNeededArrays& arrays)
        : CAttributeDescriptor(name, kind, quantity, nullptr), owners(owners), arrays(arrays)
    {}
    /// One that is made of another.
    CAttribute(const QString& name, EAttributeValueKind kind, const CAttribute& parent)
        : CAttributeDescriptor(name, kind, parent.unitsType, &parent), owners(parent.owners), arrays(parent.arrays)
    {}

    const CUnitsConverter& units() const override;
    /// Doubles that a row takes in a column.
    quint32 width() const;

    /// Writes count x width() doubles, row by row, in a unit of the attribute's quantity; null stands for base units.
    /// \param owner  a CParticleType, CContactsBase, CBondsBase, CCollisionsBase, CGeometryGroup or CTimestepData
    /// \return false, with out as it was, if the owner has no such values
    template <class TOwner>
    bool column(const TOwner& owner, const SAttributeRows& rows, const SUnit* unit, double* out) const;

    bool valueForSimulation(SAttributeValue& value, const CTimestepData& owner, quint32 index) const override;
    bool valueForBond(SAttributeValue& value, const CBondsBase& owner, quint32 index) const override;
    bool valueForCollision(SAttributeValue& value, const CCollisionsBase& owner, quint32 index) const override;
    bool valueForContact(SAttributeValue& value, const CContactsBase& owner, quint32 index) const override;
    bool valueForParticle(SAttributeValue& value, const CParticleType& owner, quint32 index) const override;
    bool valueForGeometry(SAttributeValue& value, const CGeometryGroup& owner, quint32 index) const override;

    const quint32 owners;       ///< EAttributeOwner: whom the attribute serves
    const SNeededArrays arrays; ///< what a reading must not leave in the file

protected:
    // The formulas, one for each kind of owner, in base units. The rows are there and live.
    virtual bool read(const CTimestepData&, const SAttributeRows&, double*) const { return false; }
    virtual bool read(const CBondsBase&, const SAttributeRows&, double*) const { return false; }
    virtual bool read(const CCollisionsBase&, const SAttributeRows&, double*) const { return false; }
    virtual bool read(const CContactsBase&, const SAttributeRows&, double*) const { return false; }
    virtual bool read(const CParticleType&, const SAttributeRows&, double*) const { return false; }
    virtual bool read(const CGeometryGroup&, const SAttributeRows&, double*) const { return false; }
    /// What a derived attribute makes of its parent's row.
    virtual void derive(const double* /*parentRow*/, quint32 /*parentWidth*/, double* /*out*/) const {}

private:
    const CAttribute* primary() const { return static_cast<const CAttribute*>(parent); }
    template <class TOwner>
    bool single(SAttributeValue& value, const TOwner& owner, quint32 index, bool isLive) const;
};

/// Rows that have values, in ascending order.
std::vector<quint32> liveRows(const CParticleType& owner);
std::vector<quint32> liveRows(const CGeometryGroup& owner);
std::vector<quint32> liveRows(const CContactsBase& owner);
std::vector<quint32> liveRows(const CBondsBase& owner);
std::vector<quint32> liveRows(const CCollisionsBase& owner);
std::vector<quint32> liveRows(const CTimestepData& owner);

} // namespace NBrenmark::NAttributes
