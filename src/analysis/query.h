#pragma once
// A question that analysis asks of the results: the maximum of an attribute over a selection, a distribution, a
// total. A conversion carries the question and doesn't ask it. A query is stored in the settings file, in its stream
// form, or in the configuration, in its key form.
//
// Who asks it binds it to the attributes of a timestep, has it collect their values of one timestep after the other,
// and then calculates.

#include "analysis/entry_form.h"
#include "maths/vector.h"

#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace NBrenmark {

class CQueryKeys;
namespace NAttributes {
class CAttributeDescriptor;
}
namespace NConfig {
class CConfigHandle;
}

/// What a query measures from.
struct SQueryReference
{
    qint32 type = 0;
    C3DPoint point;        ///< m
    double distance = 0.0; ///< m
};

/// Values of one timestep, in base units, row by row. An array is empty where the query doesn't need it.
struct SQueryValues
{
    std::size_t rowCount() const { return width == 0 ? 0 : primary.size() / width; }
    /// The same with some of the rows, in the order of their numbers here.
    SQueryValues ofRows(const std::vector<std::size_t>& rows) const;

    double time = 0.0;               ///< s
    std::size_t width = 1;           ///< numbers of the primary attribute a row
    bool arePlaces = false;          ///< whether the primary attribute says where something is
    std::vector<double> primary;     ///< rows x width
    std::vector<double> secondary;   ///< one a row
    std::vector<double> mass;        ///< kg, one a row
    std::vector<C3DPoint> position;  ///< m, one a row
    std::vector<C3DVector> velocity; ///< m/s, one a row
    std::vector<double> force;       ///< compressive, N, one a row
    std::vector<double> area;        ///< m^2, one a row
    double volume = 0.0;             ///< of the region that the rows are in, m^3
};

/// What a query takes beside its primary attribute, as bits.
enum EQueryNeed : quint32
{
    eNeedsSecondary = 1u << 0,
    eNeedsMass = 1u << 1,
    eNeedsPosition = 1u << 2,
    eNeedsVelocity = 1u << 3,
    eNeedsPressure = 1u << 4, ///< compressive force and area of triangles
    eNeedsVolume = 1u << 5
};

class CQuery : public IFormed
{
public:
    ~CQuery() override = default;
    /// Writes the keys of the query below a handle that is its own.
    virtual void writeConfiguration(NConfig::CConfigHandle& handle);
    /// Takes the query's keys out of the tree.
    virtual void removeConfiguration(NConfig::CConfigHandle& handle);
    /// Reads the keys; one that is missing keeps the present value, and is made.
    /// \throws NConfig::CConfigException  a key holds a value of another kind
    virtual void readConfiguration(NConfig::CConfigHandle& handle);

    virtual std::unique_ptr<CQuery> clone() const = 0;
    /// The text by which files name the class.
    virtual QString name() const = 0;
    /// The answer over what was collected, in the units of that.
    /// \return false, with nothing in result, without values for an answer, and where there is an obstacle
    virtual bool calculate(std::vector<double>& result) const = 0;
    /// What in the query isn't known here, so that it can't be calculated: "a distance from a reference"; null for
    /// nothing.
    virtual const char* obstacle() const;
    /// Whether it has references. Nothing but places and what follows from them is measured from one.
    bool hasReferences() const { return reference1.type != 0 || reference2.type != 0; }
    /// EQueryNeed
    virtual quint32 needs() const { return useRange2 ? eNeedsSecondary : 0u; }
    /// The attribute that the class is about; empty for the one that the query names.
    virtual QString ownAttribute() const { return QString(); }
    /// The quantity of the answer; nothing where it is that of the attribute.
    virtual std::optional<quint32> ownQuantity() const { return std::nullopt; }
    /// Whether it answers for all timesteps together, rather than for each.
    virtual bool isOverTime() const { return false; }
    /// What is above the answer in a table: the class, the attribute and its component.
    virtual QString header() const;
    virtual void rangeChanged() {}
    virtual void setPrimaryAttribute(const QString& attribute) { primaryAttribute = attribute; }
    /// Finds the objects of the attributes by their names and components. One that isn't there is null.
    virtual void bindAttributes(const std::vector<const NAttributes::CAttributeDescriptor*>& attributes);
    /// Takes the values of a timestep. A vector is measured along the axis, if one is in use: its part in that
    /// direction, of a place the distance from the start. Rows outside of the ranges that are in use are left out.
    virtual void collect(const SQueryValues& values);

    /// The stream form: what all queries have, then what the class adds.
    void form(IEntryForm& f) override;

    bool collate = false; ///< one answer for a whole region; else one for each of its elements
    double minimum = 0.0; ///< of the first attribute's range
    double maximum = 0.0;
    QString primaryAttribute;
    QString primaryComponent;
    QString secondaryComponent;
    QString group;
    const NAttributes::CAttributeDescriptor* primaryObject = nullptr; ///< not owned
    const NAttributes::CAttributeDescriptor* secondaryObject = nullptr;
    SQueryReference reference1;
    SQueryReference reference2;
    bool useAxis = false;
    bool axisLinksGeometry = false;
    C3DPoint axisStart; ///< m
    C3DPoint axisEnd;   ///< m
    QString typeName;
    QString id; ///< the name that its user gave it
    bool useRange = false;
    bool useRange2 = false;
    bool contactQuery = false;
    qint32 attributeType = 0;
    QString secondaryAttribute;
    double secondaryMinimum = 0.0;
    double secondaryMaximum = 0.0;

    std::string configurationKey; ///< of the child that holds the key form; empty until there is one

protected:
    /// The key form: what all queries have, then what the class adds.
    virtual void keys(CQueryKeys& keys);
    /// Whether the range of the first attribute narrows the values down.
    virtual bool isRanged() const { return useRange; }
    /// The same question of another class, over values that are in range already: what a query within a query gives.
    static bool inner(const QString& identifier, const SQueryValues& values, std::vector<double>& result);

    SQueryValues taken; ///< of the timestep that was collected last, in range
};

} // namespace NBrenmark
