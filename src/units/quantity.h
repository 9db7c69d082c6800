#pragma once
// The quantities that values are measured in, in the numbering that files hold.

#include <QtGlobal>

namespace NBrenmark {

enum EQuantity : quint32
{
    eOtherQuantity = 0,
    eNoQuantity = 1,
    eAccelerationQuantity = 2,
    eAngleQuantity = 3,
    eAngularAccelerationQuantity = 4,
    eAngularVelocityQuantity = 5,
    eDensityQuantity = 6,
    eEnergyQuantity = 7,
    eWorkFunctionQuantity = 8,
    eForceQuantity = 9,
    eChargeQuantity = 10,
    eLengthQuantity = 11,
    eMassQuantity = 12,
    eMomentOfInertiaQuantity = 13,
    eShearModulusQuantity = 14,
    eTimeQuantity = 15,
    eTorqueQuantity = 16,
    eVelocityQuantity = 17,
    eVolumeQuantity = 18,
    eFrequencyQuantity = 19,
    eTemperatureQuantity = 20,
    eHeatFluxQuantity = 21,
    eStiffnessQuantity = 22,
    eStressQuantity = 23,
    eMassFlowQuantity = 24,
    eStiffnessPerUnitAreaQuantity = 25,
    eEnergyDensityQuantity = 26,
    eSurfaceEnergyQuantity = 27,
    ePressureQuantity = 28,
    eWearConstantQuantity = 29,
    eQuantityCount = 30
};

} // namespace NBrenmark
