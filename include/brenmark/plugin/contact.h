#pragma once
// A contact as contact models of plug-ins get it, and what they answer. Arrays are x, y, z.

namespace NBrenmark::NApiCore {
class ICustomPropertyDataApi_1_0;
}

namespace NBrenmark::NApiCm {

/// One side of a contact; the first side is always a particle.
struct SElement
{
    unsigned int kind;         ///< 0: a particle, 1: a triangle of geometry
    unsigned int id;           ///< of the particle or triangle
    const char* name;          ///< of the particle type or geometry group
    double mass;               ///< kg
    double contactRadius;      ///< m
    double physicalRadius;     ///< m
    double position[3];        ///< m
    double velocity[3];        ///< at the contact, m/s
    double angularVelocity[3]; ///< rad/s
    double contactVector[3];   ///< from the centre to the contact, m
    double centreOfMass[3];    ///< m
    double area;               ///< of a triangle, m^2
    // Of its material.
    double poissonsRatio;
    double shearModulus; ///< Pa
    double density;      ///< kg/m^3
    double workFunction;
    NApiCore::ICustomPropertyDataApi_1_0* properties; ///< for this call; null if it has none, and in 1.0.0
};

struct SContact
{
    SElement first;
    SElement second;
    // Of the pair of materials.
    double restitution;
    double staticFriction;
    double rollingFriction;
    double contactPoint[3];                           ///< m
    double normalOverlap;                             ///< m, positive while the surfaces overlap
    double tangentialOverlap[3];                      ///< m, summed up by the solver; may be cut back
    NApiCore::ICustomPropertyDataApi_1_0* properties; ///< of the contact, as those of its sides
};

/// What the chain of models has made of a contact so far, to be added to.
struct SContactForces
{
    double normalForce[3];       ///< in all, N
    double normalDamping[3];     ///< the part of damping in it
    double tangentialForce[3];   ///< in all, N
    double tangentialDamping[3]; ///< the part of damping in it
    double torque1[3];           ///< on the first element, N m
    double rollingTorque1[3];    ///< the part of rolling friction in it
    double torque2[3];           ///< on the second element, N m
    double rollingTorque2[3];
};

} // namespace NBrenmark::NApiCm
