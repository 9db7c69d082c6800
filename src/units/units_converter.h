#pragma once
// Values in the units that the user prefers. Everything stored is in SI base units: a value is converted where it is
// shown to a person, or where a person's value comes in.

#include "maths/vector.h"
#include "units/unit_table.h"

#include <QMap>
#include <QObject>
#include <QString>

namespace NBrenmark {

/// The units of one quantity, and which of them is chosen: the first one until the first refresh().
class CUnitsConverter : public QObject
{
    Q_OBJECT

public:
    explicit CUnitsConverter(const SQuantity& quantity);

    /// A base value in the chosen unit.
    virtual double toDisplay(double base) const;
    /// A value in the unit of an index as a base value. An index that the quantity lacks leaves it as it is.
    virtual double toBase(double value, int index) const;
    /// A value in the chosen unit as a base value.
    virtual double toBase(double value) const { return toBase(value, currentIndex); }
    /// Takes the chosen unit from the user's preferences and sends updateUnits; nothing happens for a quantity without
    /// a preference. For the thread that changes the preferences.
    virtual void refresh();

    C3DVector toDisplay(const C3DVector& base) const;

    const SQuantity& quantity;
    int currentIndex = 0;
    QString currentName;
    QMap<int, QString> names;

Q_SIGNALS:
    /// \param txt  name of the chosen unit
    void updateUnits(QString txt);
};

/// One quantity of the table, with the one object of the process.
template <EQuantity number>
class CUnits : public CUnitsConverter
{
public:
    static CUnits& instance()
    {
        static CUnits units;
        return units;
    }

private:
    CUnits() : CUnitsConverter(quantityOf(number)) {}
};

using CUnitsAccel = CUnits<eAccelerationQuantity>;
using CUnitsAngle = CUnits<eAngleQuantity>;
using CUnitsAngAccel = CUnits<eAngularAccelerationQuantity>;
using CUnitsAngVel = CUnits<eAngularVelocityQuantity>;
using CUnitsDensity = CUnits<eDensityQuantity>;
using CUnitsEnergy = CUnits<eEnergyQuantity>;
using CUnitsWorkFunction = CUnits<eWorkFunctionQuantity>;
using CUnitsForce = CUnits<eForceQuantity>;
using CUnitsCharge = CUnits<eChargeQuantity>;
using CUnitsLength = CUnits<eLengthQuantity>;
using CUnitsMass = CUnits<eMassQuantity>;
using CUnitsMoI = CUnits<eMomentOfInertiaQuantity>;
using CUnitsShearMod = CUnits<eShearModulusQuantity>;
using CUnitsTime = CUnits<eTimeQuantity>;
using CUnitsTorque = CUnits<eTorqueQuantity>;
using CUnitsVelocity = CUnits<eVelocityQuantity>;
using CUnitsVolume = CUnits<eVolumeQuantity>;
using CUnitsFrequency = CUnits<eFrequencyQuantity>;
using CUnitsTemperature = CUnits<eTemperatureQuantity>;
using CUnitsHeatFlux = CUnits<eHeatFluxQuantity>;
using CUnitsStiffness = CUnits<eStiffnessQuantity>;
using CUnitsStress = CUnits<eStressQuantity>;
using CUnitsMassFlow = CUnits<eMassFlowQuantity>;
using CUnitsStiffnessPerUnitArea = CUnits<eStiffnessPerUnitAreaQuantity>;
using CUnitsEnergyDensity = CUnits<eEnergyDensityQuantity>;
using CUnitsSurfaceEnergy = CUnits<eSurfaceEnergyQuantity>;
using CUnitsPressure = CUnits<ePressureQuantity>;
using CUnitsWearConstant = CUnits<eWearConstantQuantity>;
using CUnitsNone = CUnits<eNoQuantity>;

/// The converter of a quantity; CUnitsNone, which converts nothing, for every number without units.
CUnitsConverter& getUnits(quint32 number);

} // namespace NBrenmark
