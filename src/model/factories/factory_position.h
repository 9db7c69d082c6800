#pragma once
// Where a factory places a new particle. The solver does the placing; here are the definition and
// how far it has come.

#include "model/factories/factory_parameter.h"

#include <vector>

namespace NBrenmark {

class CParticleFactory;

/// A point that isn't set: three quiet not-a-numbers of one bit pattern, that of the float 0x7FC00001.
C3DPoint unsetPoint();

class IFactoryPosition : public IFactoryParameter
{
public:
    using Family = IFactoryPosition;

    virtual std::unique_ptr<IFactoryPosition> clone() const = 0;
    virtual void mark() { marked = true; }
    virtual void setFactory(CParticleFactory* owner) { factory = owner; }

    bool marked = false;
    CParticleFactory* factory = nullptr; ///< whose parameter this is, not owned
};

/// Anywhere in the shape, or on a random walk through it.
class CRandomFactoryPosition
    : public CFactoryParameterKind<CRandomFactoryPosition, CEditedAs<CRandomPositionParamData, IFactoryPosition>>
{
public:
    static constexpr const char* word = "random";
    enum EStyle : quint32
    {
        eRandom = 0,
        eRandomWalk = 1
    };

    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    /// A record whose style is no known word is refused.
    bool setParamData(const IParamData& data) override;

    quint32 style = eRandom; ///< EStyle
    double densityFactor = 0.4;
    double multiFactor = 1.1;
    double maxAngle = 2.0 * 3.14159265358979323846 / 3.0; ///< rad
    double separation = 0.0;                              ///< m

    // The state of the walk.
    C3DPoint seedPosition = unsetPoint(); ///< m
    C3DVector seedVector{1.0, 0.0, 0.0};

protected:
    void takeRecord(const CRandomPositionParamData& data) override;
    CRandomPositionParamData record() const override;
};

/// The points of a lattice in the shape.
class C3DLattice : public CEditedAs<C3DLatticePositionParamData, IFactoryPosition>
{
public:
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    /// The points of a cell beside its corner, relative to that, m.
    virtual std::vector<C3DPoint> cellOffsets() const = 0;

    C3DVector axisA{0.1, 0.0, 0.0}; ///< edges of a cell, m
    C3DVector axisB{0.0, 0.1, 0.0};
    C3DVector axisC{0.0, 0.0, 0.1};
    C3DVector rotation; ///< rad
    C3DPoint start;     ///< m

    // The solver's walk through the lattice, kept as it is.
    C3DPoint cursor0 = unsetPoint();
    C3DVector cursor1;
    C3DVector cursor2;
    C3DVector cursor3;

protected:
    /// The separations go along x, y and z, turned by the rotation as the sides of a box are.
    void takeRecord(const C3DLatticePositionParamData& data) override;
    C3DLatticePositionParamData record() const override;
};

class CCubicFactoryPosition : public CFactoryParameterKind<CCubicFactoryPosition, C3DLattice>
{
public:
    static constexpr const char* word = "cubic";

    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    std::vector<C3DPoint> cellOffsets() const override;
};

/// Body-centred.
class CBCCFactoryPosition : public CFactoryParameterKind<CBCCFactoryPosition, C3DLattice>
{
public:
    static constexpr const char* word = "bcc";

    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    std::vector<C3DPoint> cellOffsets() const override;
};

/// Face-centred.
class CFCCFactoryPosition : public CFactoryParameterKind<CFCCFactoryPosition, C3DLattice>
{
public:
    static constexpr const char* word = "fcc";

    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    std::vector<C3DPoint> cellOffsets() const override;
};

using CFactoryPositionRegistry = CKindRegistry<IFactoryPosition>;
template <>
const CFactoryPositionRegistry& CFactoryPositionRegistry::instance();

} // namespace NBrenmark
