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

    double time = 0.0;              ///< s
    std::size_t width = 1;          ///< numbers of the primary attribute a row
    std::vector<double> primary;    ///< rows x width
    std::vector<double> secondary;  ///< one a row
    std::vector<double> mass;       ///< kg, one a row
    std::vector<C3DPoint> position; ///< m, one a row
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
    /// The answer over what was collected, in base units.
    /// \return false, with nothing in result, without values for an answer, and for a class that isn't calculated here
    virtual bool calculate(std::vector<double>& result) const = 0;
    /// Whether the class is one of those that are calculated.
    virtual bool isCalculated() const { return true; }
    /// Whether it answers for all timesteps together, rather than for each.
    virtual bool isOverTime() const { return false; }
    /// Whether it needs mass and position of the rows.
    virtual bool weighsRows() const { return false; }
    /// What is above the answer in a table.
    virtual QString header() const = 0;
    virtual void rangeChanged() {}
    virtual void setPrimaryAttribute(const QString& attribute) { primaryAttribute = attribute; }
    /// Finds the objects of the attributes by their names and components. One that isn't there is null.
    virtual void bindAttributes(const std::vector<const NAttributes::CAttributeDescriptor*>& attributes);
    /// Takes the values of a timestep. Rows outside of the ranges that are in use are left out.
    virtual void collect(const SQueryValues& values);

    /// The stream form: what all queries have, then what the class adds.
    void form(IEntryForm& f) override;

    bool collate = false; ///< one result for a whole group
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
    /// The same question of another class, over values that are in range already: what a query within a query gives.
    static bool inner(const QString& identifier, const SQueryValues& values, std::vector<double>& result);

    SQueryValues taken; ///< of the timestep that was collected last, in range
};

} // namespace NBrenmark
