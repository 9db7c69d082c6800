#pragma once
// The simulation box and the conditions at its sides.

#include "maths/vector.h"

#include <QObject>
#include <QString>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

using CPoint = C3DPoint;

/// The simulation box, m. Sides of a periodic axis are joined.
class CDomain : public QObject
{
    Q_OBJECT
public:
    CDomain() = default;
    CDomain(const CDomain& other);
    CDomain& operator=(const CDomain& other);

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Moves a point that left through a periodic side back in at the opposite one; coordinates of
    /// periodic axes are inside afterwards.
    /// \return false if the point lies outside on an axis that isn't periodic; NaN counts as outside
    bool wrapIntoDomain(C3DPoint& point) const;

    C3DPoint min; ///< m
    C3DPoint max; ///< m
    bool periodicX = false;
    bool periodicY = false;
    bool periodicZ = false;

public Q_SLOTS:
    void setMin(CPoint corner) { min = corner; }
    void setMax(CPoint corner) { max = corner; }
};

/// Periodic sector of a cylinder: particles that leave at one side come in at the other.
class CCylindricalPeriodicBoundaryConditions
{
public:
    virtual ~CCylindricalPeriodicBoundaryConditions() = default;
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    bool enabled = false;
    QString geometryName;  ///< of the geometry group, by name
    QString kinematicName; ///< of the motion, by name
    double length = 0.0;   ///< m
    double angle = 0.0;    ///< rad
};

} // namespace NBrenmark
