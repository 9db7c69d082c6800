#include "physics/plugins/contact_records.h"

#include "materials/interactions.h"
#include "materials/materials.h"

namespace NBrenmark::NApiCm {

template <class TVector>
static void copyOut(const TVector& from, double (&to)[3])
{
    to[0] = from.x;
    to[1] = from.y;
    to[2] = from.z;
}

static C3DVector vectorOf(const double (&from)[3]) { return {from[0], from[1], from[2]}; }

static void fill(SElement& to, const SContactElement& from, const CMaterial* material, const C3DVector& velocity)
{
    to.kind = from.kind;
    to.id = from.id;
    to.name = from.name.c_str();
    to.mass = from.mass;
    to.contactRadius = from.contactRadius;
    to.physicalRadius = from.physicalRadius;
    copyOut(from.position, to.position);
    copyOut(velocity, to.velocity);
    copyOut(from.angularVelocity, to.angularVelocity);
    copyOut(from.contactVector, to.contactVector);
    copyOut(from.centreOfMass, to.centreOfMass);
    to.area = from.area;
    if (material == nullptr)
        return;
    to.poissonsRatio = material->poissonsRatio;
    to.shearModulus = material->shearModulus;
    to.density = material->density;
    to.workFunction = material->workFunction;
}

/// Names each vector of the results once, for both directions.
template <class TForces, class TResults, class TMove>
static void forcesForm(TForces& forces, TResults& results, const TMove& move)
{
    move(forces.normalForce, results.normalForce);
    move(forces.normalDamping, results.normalDamping);
    move(forces.tangentialForce, results.tangentialForce);
    move(forces.tangentialDamping, results.tangentialDamping);
    move(forces.torque1, results.torque1);
    move(forces.rollingTorque1, results.rollingTorque1);
    move(forces.torque2, results.torque2);
    move(forces.rollingTorque2, results.rollingTorque2);
}

SPluginContact::SPluginContact(const NBrenmark::SContact& from, IPluginHost* host)
{
    fill(contact.first, from.element1, from.material1, from.velocity1);
    fill(contact.second, from.element2, from.material2, from.velocity2);
    if (from.interaction != nullptr) {
        contact.restitution = from.interaction->restitution;
        contact.staticFriction = from.interaction->staticFriction;
        contact.rollingFriction = from.interaction->rollingFriction;
    }
    copyOut(from.contactPoint, contact.contactPoint);
    contact.normalOverlap = from.normalOverlap;
    copyOut(from.tangentialOverlap, contact.tangentialOverlap);
    if (host != nullptr) {
        contact.first.properties = host->view(eFirstView, from.element1.properties);
        contact.second.properties = host->view(eSecondView, from.element2.properties);
        contact.properties = host->view(eContactView, from.properties);
    }
    forcesForm(forces, from.results, [](double(&to)[3], const C3DVector& vector) { copyOut(vector, to); });
}

void SPluginContact::giveBack(NBrenmark::SContact& to) const
{
    to.velocity1 = vectorOf(contact.first.velocity);
    to.velocity2 = vectorOf(contact.second.velocity);
    to.tangentialOverlap = vectorOf(contact.tangentialOverlap);
    forcesForm(forces, to.results, [](const double(&from)[3], C3DVector& vector) { vector = vectorOf(from); });
}

} // namespace NBrenmark::NApiCm
