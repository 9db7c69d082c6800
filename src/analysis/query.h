#pragma once
// A question that analysis asks of the results: the maximum of an attribute over a selection, a distribution, a
// total. A conversion carries the question and doesn't ask it. A query is stored in the settings file, in its stream
// form, or in the configuration, in its key form.

#include "analysis/entry_form.h"
#include "maths/vector.h"

#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace NBrenmark {

class CAttributeDescriptor;
class CQueryKeys;
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
    /// The answer, which no conversion asks for: false, and nothing in result.
    virtual bool calculate(std::vector<double>& result) const = 0;
    /// What is above the answer in a table.
    virtual QString header() const = 0;
    virtual void rangeChanged() {}
    virtual void setPrimaryAttribute(const QString& attribute) { primaryAttribute = attribute; }
    // For who calculates: finds the attributes by their names, and takes the values of a timestep.
    virtual void bindAttributes(const std::vector<const CAttributeDescriptor*>&) {}
    virtual void collect(const std::vector<double>&) {}

    /// The stream form: what all queries have, then what the class adds.
    void form(IEntryForm& f) override;

    bool collate = false; ///< one result for a whole group
    double minimum = 0.0; ///< of the first attribute's range
    double maximum = 0.0;
    QString primaryAttribute;
    QString primaryComponent;
    QString secondaryComponent;
    QString group;
    const CAttributeDescriptor* primaryObject = nullptr; ///< not owned
    const CAttributeDescriptor* secondaryObject = nullptr;
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
};

} // namespace NBrenmark
