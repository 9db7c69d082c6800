#pragma once
// A volume that particle factories fill.

namespace NBrenmark {

class CBoundingBox;

class IFactoryBoundingShape
{
public:
    virtual ~IFactoryBoundingShape() = default;
    virtual const CBoundingBox& boundingBox() const = 0;
    virtual bool isClosed() const = 0;
    /// m^3; 0 for an open shape.
    virtual double enclosedVolume() const = 0;
    /// m^2
    virtual double surfaceArea() const = 0;
};

} // namespace NBrenmark
