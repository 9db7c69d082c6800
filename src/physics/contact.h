#pragma once
// One contact as a solver hands it to the contact models of a chain, and what they answer.

#include "maths/vector.h"

#include <QtGlobal>
#include <string>

namespace NBrenmark {

class CCustomPropertyData;
class CInteraction;
class CMaterial;
class IBondTable;

enum EElementKind : quint32
{
    eParticleElement = 0,
    eGeometryElement = 1
};

/// The custom properties of one particle, triangle or contact: current values, and what the models add to them. Nothing
/// of it is owned; both are null without custom properties.
struct SPropertyItem
{
    CCustomPropertyData* values = nullptr;
    CCustomPropertyData* changes = nullptr;
    quint32 row = 0; ///< of both

    /// A value, or 0 for a property, row or element that isn't there.
    double value(unsigned int property, unsigned int element = 0) const;
    /// Adds to a change. Nothing happens for one that isn't there.
    void add(unsigned int property, double change, unsigned int element = 0) const;
    /// Lets the change lead to a value.
    void set(unsigned int property, double wanted) const { add(property, wanted - value(property)); }
};

/// One side of a contact. The first side is always a particle.
struct SContactElement
{
    bool isGeometry() const { return kind == eGeometryElement; }

    quint32 kind = eParticleElement; ///< EElementKind
    quint32 id = 0;
    std::string name; ///< of the particle type or geometry group
    quint32 key1 = 0; ///< with key2 the identity of a bond's end
    quint32 key2 = 0;
    double mass = 0.0;           ///< kg
    double contactRadius = 0.0;  ///< m
    double physicalRadius = 0.0; ///< m
    C3DPoint position;           ///< m
    C3DVector angularVelocity;   ///< rad/s
    C3DVector contactVector;     ///< m
    C3DPoint centreOfMass;       ///< m
    SPropertyItem properties;
    double area = 0.0;     ///< of a triangle, m^2
    bool isExempt = false; ///< a geometry group that takes no part in electrostatics
};

/// What a chain has made of a contact. A model leaves the fields that its law doesn't name as they are.
struct SContactResults
{
    C3DVector normalForce;       ///< in all, N
    C3DVector normalDamping;     ///< the part of damping in it
    C3DVector tangentialForce;   ///< in all, N
    C3DVector tangentialDamping; ///< the part of damping in it
    C3DVector torque1;           ///< on the first element, N m
    C3DVector rollingTorque1;    ///< the part of rolling friction in it
    C3DVector torque2;           ///< on the second element, N m
    C3DVector rollingTorque2;
};

struct SContact
{
    double time = 0.0;     ///< s
    double timeStep = 0.0; ///< s
    bool multiThreaded = false;
    quint32 threadIndex = 0; ///< below the number that starting() was given
    SContactElement element1;
    const CMaterial* material1 = nullptr; ///< not owned, never null when a model is asked
    C3DVector velocity1;                  ///< at the contact, m/s; models may change it
    SContactElement element2;
    const CMaterial* material2 = nullptr;
    C3DVector velocity2;
    const CInteraction* interaction = nullptr; ///< of the two materials; not owned, never null
    C3DPoint contactPoint;                     ///< m
    double normalOverlap = 0.0;                ///< m, positive while the surfaces overlap
    C3DVector tangentialOverlap;               ///< m, summed up by the solver; models may cut it back
    SPropertyItem properties;                  ///< of the contact
    IBondTable* bonds = nullptr;               ///< of the timestep; not owned, null without bonds
    SContactResults results;
};

} // namespace NBrenmark
