#pragma once
// Fields: clouds of points with a value at each, imported by a user and kept with the deck.

#include <brenmark/plugin/api.h>

namespace NBrenmark::NApiCore {

class IFieldApi_1_0 : public IApi
{
public:
    /// Whether a value has one component.
    virtual bool isScalar() const = 0;
    /// The value of a vector field at a point, m. Of a field in a plane the component that it doesn't have is 0. For a
    /// scalar field nothing is written.
    /// \param neighbours  how many of the nearest points count; 0: as many as is usual
    /// \param method      0: each point weighted by 1 / distance; else the nearest point's value
    /// \return false, with nothing written, if the field is gone or has no points
    virtual bool getVector(double x, double y, double z, unsigned int neighbours, int method, double& valueX,
                           double& valueY, double& valueZ) const = 0;
    /// The same of a scalar field. \return false for a vector field, too
    virtual bool getScalar(double x, double y, double z, unsigned int neighbours, int method, double& value) const = 0;
};

class IFieldManagerApi_1_0 : public IApi
{
public:
    /// A field, to be given back by releaseApi; null if there is none of that name.
    /// \param identifier  eField; with a version, 1.0
    virtual IFieldApi_1_0* getField(unsigned int identifier, unsigned int major, unsigned int minor,
                                    const char* name) const = 0;
    /// The same by the number under which the deck keeps it.
    virtual IFieldApi_1_0* getField(unsigned int identifier, unsigned int major, unsigned int minor,
                                    unsigned int index) const = 0;
};

} // namespace NBrenmark::NApiCore
