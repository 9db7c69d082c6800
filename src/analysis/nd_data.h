#pragma once
// A small vector of numbers: a point or a value of a field.

#include "core/read_write.h"

#include <QtGlobal>

#include <vector>

namespace NBrenmark::NField {

class CNdData : public IReadWrite
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

    /// The size, then as many doubles.
    bool write(CVersionedStream& stream, IProgressController* progress) override;
    bool read(CVersionedStream& stream, IProgressController* progress) override;
    /// The same, of bytes that the caller counts: to ask a file for its size at each of a million points takes as long
    /// as to read them. \param left  how many the block still has; less by what was read
    bool readWithin(CVersionedStream& stream, qint64& left);

private:
    quint32 componentCount;
    std::vector<double> components; ///< one at least, so that a first one is always there
};

} // namespace NBrenmark::NField
