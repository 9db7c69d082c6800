#pragma once
// How results offer their values by the names of attributes. The owners of values know this contract alone; the
// attributes themselves know the owners.

#include <QString>

#include <array>
#include <vector>

namespace NBrenmark {

class CBondsBase;
class CCollisionsBase;
class CContactsBase;
class CGeometryGroup;
class CParticleType;
class CTimestepData;
class CUnitsConverter;

namespace NAttributes {

/// What has values, as bits.
enum EAttributeOwner : quint32
{
    eBondAttribute = 1u << 0,
    eCollisionAttribute = 1u << 1,
    eContactAttribute = 1u << 2,
    eParticleAttribute = 1u << 3,
    eGeometryAttribute = 1u << 4,
    eSimulationAttribute = 1u << 5
};

enum EAttributeValueKind : qint32
{
    eIntegerValue = 0,
    eScalarValue = 1,
    eVectorValue = 2,
    eQuaternionValue = 3
};

/// What an attribute gave, in the units that its user prefers.
struct SAttributeValue
{
    enum ETag : qint32
    {
        eNothing = 0,
        eScalar = 1,
        eVector = 2,
        eQuaternion = 3,
        eIntegerList = 5,
        eNumberList = 6
    };

    ETag tag = eNothing;
    std::array<double, 4> numbers{}; ///< of the first three tags: x, y, z of a vector, w, x, y, z of a quaternion
    std::vector<qint32> integers;
    std::vector<double> list;
    quint32 width = 1;                      ///< numbers of a list that belong together: three for vectors
    const CUnitsConverter* units = nullptr; ///< which converted the value; not owned
};

/// One attribute, with a read for each kind of owner. A read of what the attribute doesn't serve, of a row that isn't
/// there or that is free, and of values that the owner doesn't hold gives false, and a value of nothing.
class CAttributeDescriptor
{
public:
    CAttributeDescriptor(const QString& name, EAttributeValueKind kind, quint32 quantity,
                         const CAttributeDescriptor* parent = nullptr)
        : name(name), valueKind(kind), unitsType(quantity), parent(parent)
    {}
    virtual ~CAttributeDescriptor() = default;
    CAttributeDescriptor(const CAttributeDescriptor&) = delete;
    CAttributeDescriptor& operator=(const CAttributeDescriptor&) = delete;

    /// Of the parent's quantity, if there is one.
    virtual const CUnitsConverter& units() const = 0;
    // clang-format off
    virtual bool valueForSimulation(SAttributeValue& value, const CTimestepData&, quint32) const { return none(value); }
    virtual bool valueForBond(SAttributeValue& value, const CBondsBase&, quint32) const { return none(value); }
    virtual bool valueForCollision(SAttributeValue& value, const CCollisionsBase&, quint32) const { return none(value); }
    virtual bool valueForContact(SAttributeValue& value, const CContactsBase&, quint32) const { return none(value); }
    virtual bool valueForParticle(SAttributeValue& value, const CParticleType&, quint32) const { return none(value); }
    virtual bool valueForGeometry(SAttributeValue& value, const CGeometryGroup&, quint32) const { return none(value); }
    // clang-format on

    QString name;
    EAttributeValueKind valueKind;
    quint32 elementCount = 1;           ///< above 1 for custom properties alone
    quint32 unitsType;                  ///< the quantity
    const CAttributeDescriptor* parent; ///< from which this one derives; null for a primary one; not owned

protected:
    static bool none(SAttributeValue& value)
    {
        value = SAttributeValue();
        return false;
    }
};

/// Finds attributes by their names.
class IAttributeTable
{
public:
    virtual ~IAttributeTable() = default;
    /// One that serves the owner; null if there is none of that name.
    virtual const CAttributeDescriptor* attribute(const QString& name, EAttributeOwner owner) const = 0;
};

} // namespace NAttributes

class IAttributeRetrieval
{
public:
    static constexpr quint32 allRows = 0xFFFFFFFFu;

    /// The value of one row; or of all live ones, one after the other in a list, without those that have none.
    /// \return false, with nothing in out, for an attribute that is null or has no value here
    virtual bool getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                          quint32 row) const = 0;
    /// The same by the name of an attribute; false without a table.
    virtual bool getValueByName(NAttributes::SAttributeValue& out, const QString& name, quint32 row) const
    {
        return getValue(out, attributes == nullptr ? nullptr : attributes->attribute(name, attributeOwner()), row);
    }
    virtual ~IAttributeRetrieval() = default;
    /// Which of an attribute's reads it is asked by.
    virtual NAttributes::EAttributeOwner attributeOwner() const = 0;

    /// In which names are looked up: of the timestep that was loaded last, or null. Not owned.
    const NAttributes::IAttributeTable* attributes = nullptr;

protected:
    /// getValue for rows from 0 to rowCount, by the owner's read of one row.
    /// \param isLive   bool(quint32 row)
    /// \param valueOf  bool(SAttributeValue&, quint32 row)
    template <class TIsLive, class TValueOf>
    static bool valueOfRows(NAttributes::SAttributeValue& out, quint32 row, quint32 rowCount,
                            const NAttributes::CAttributeDescriptor* attribute, const TIsLive& isLive,
                            const TValueOf& valueOf)
    {
        out = NAttributes::SAttributeValue();
        if (attribute == nullptr)
            return false;
        if (row != allRows)
            return row < rowCount && isLive(row) && valueOf(out, row);
        const bool wholeNumbers = attribute->valueKind == NAttributes::eIntegerValue;
        NAttributes::SAttributeValue all, one;
        all.tag = wholeNumbers ? NAttributes::SAttributeValue::eIntegerList : NAttributes::SAttributeValue::eNumberList;
        for (quint32 i = 0; i < rowCount; ++i) {
            if (!isLive(i) || !valueOf(one, i))
                continue;
            const bool isList = one.tag == NAttributes::SAttributeValue::eNumberList;
            all.width = isList ? static_cast<quint32>(one.list.size()) : widthOf(one.tag);
            all.units = one.units;
            if (wholeNumbers)
                all.integers.push_back(static_cast<qint32>(static_cast<qint64>(one.numbers[0]))); // up to 2^32
            else if (isList)
                all.list.insert(all.list.end(), one.list.begin(), one.list.end());
            else
                all.list.insert(all.list.end(), one.numbers.begin(), one.numbers.begin() + all.width);
        }
        const bool any = !all.integers.empty() || !all.list.empty();
        if (any)
            out = std::move(all);
        return any;
    }

private:
    static quint32 widthOf(NAttributes::SAttributeValue::ETag tag)
    {
        return tag == NAttributes::SAttributeValue::eVector       ? 3
               : tag == NAttributes::SAttributeValue::eQuaternion ? 4
                                                                  : 1;
    }
};

} // namespace NBrenmark
