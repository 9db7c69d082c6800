#pragma once
// A small vector of numbers: a point or a value of a field.

#include "analysis/entry_form.h"

#include <QtGlobal>

#include <vector>

namespace NBrenmark::NField {

class CNdData : public IFormed
{
public:
    explicit CNdData(quint32 size = 0);
    CNdData(std::initializer_list<double> components);

    /// All components are 0 then.
    void resize(quint32 size);
    quint32 size() const { return componentCount; }
    /// An index past the end stands for the first component: the third axis of a point in a plane is one.
    double operator[](quint32 index) const { return components[index < componentCount ? index : 0]; }
    double& operator[](quint32 index) { return components[index < componentCount ? index : 0]; }
    /// Euclidean, over all components.
    double length() const;
    void form(IEntryForm& f) override;

private:
    quint32 componentCount;
    std::vector<double> components; ///< one at least, so that a first one is always there
};

} // namespace NBrenmark::NField
