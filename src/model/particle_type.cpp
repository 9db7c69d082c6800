// The definition of a type and how two of them compare. The store of its particles is in particle_store.cpp.
#include "model/particle_type.h"

#include "core/save_options.h"
#include "model/domain.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>
#include <limits>
#include <set>

namespace NBrenmark {

quint32 reduceParticleFields(quint32 fields, quint32 particleMask)
{
    if ((particleMask & eParticleVelocity) == 0)
        fields &= ~quint32(eVelocity);
    if ((particleMask & eParticleAngularVelocity) == 0)
        fields &= ~quint32(eAngularVelocity);
    if ((particleMask & eParticleForces) == 0)
        fields &= ~quint32(eForceTorque | eUnscaledForceTorque | eExternalForceTorque);
    return fields;
}

void CSphere::setRadii(double contact, double physical)
{
    contactRadius = contact;
    physicalRadius = physical;
    radiiDiffer = !fuzzyEqual(contact, physical);
}

CParticleType::CParticleType(CCustomPropertyManager* propertyManager)
    : customProperties(propertyManager), previousCustomProperties(propertyManager)
{}

void CParticleType::read(IFileVisitorReader& v) { v.readParticleType(*this); }

void CParticleType::write(IFileVisitorWriter& v) const { v.writeParticleType(*this); }

void CParticleType::setName(const QString& text)
{
    displayName = text;
    name = text.toStdString();
}

// ---------------------------------------------------------------- the template

void CParticleType::settleSpheres()
{
    for (CSphere& sphere : spheres)
        sphere.setRadii(sphere.contactRadius, sphere.physicalRadius);
}

double CParticleType::maxExtent(double scaleFactor) const
{
    double extent = 0.0;
    for (const CSphere& sphere : spheres)
        extent = std::max(extent, (sphere.position.toVector().length() + sphere.physicalRadius) * scaleFactor);
    return extent;
}

void CParticleType::localBounds(C3DPoint& min, C3DPoint& max) const
{
    min = C3DPoint();
    max = C3DPoint();
    for (std::size_t index = 0; index < spheres.size(); ++index) {
        const C3DPoint& centre = spheres[index].position;
        const double radius = spheres[index].physicalRadius;
        const C3DPoint low(centre.x - radius, centre.y - radius, centre.z - radius);
        const C3DPoint high(centre.x + radius, centre.y + radius, centre.z + radius);
        min = index == 0 ? low : C3DPoint(std::min(min.x, low.x), std::min(min.y, low.y), std::min(min.z, low.z));
        max = index == 0 ? high : C3DPoint(std::max(max.x, high.x), std::max(max.y, high.y), std::max(max.z, high.z));
    }
}

bool CParticleType::radiusRange(double& min, double& max, bool physical) const
{
    min = std::numeric_limits<double>::max();
    max = 0.0;
    for (const CSphere& sphere : spheres) {
        const double radius = physical ? sphere.physicalRadius : sphere.contactRadius;
        min = std::min(min, radius);
        max = std::max(max, radius);
    }
    return !spheres.empty();
}

static bool sameSphere(const CSphere& a, const CSphere& b)
{
    return a.name == b.name && a.position == b.position && fuzzyEqual(a.contactRadius, b.contactRadius) &&
           fuzzyEqual(a.physicalRadius, b.physicalRadius);
}

bool CParticleType::sameDefinition(const CParticleType& other) const
{
    return name == other.name && materialName == other.materialName &&
           calculateProperties == other.calculateProperties && fuzzyEqual(rawMass, other.rawMass) &&
           fuzzyEqual(rawVolume, other.rawVolume) && rawInertia == other.rawInertia &&
           surfaceBased == other.surfaceBased && autoCenterParticle == other.autoCenterParticle &&
           autoProperties == other.autoProperties &&
           std::equal(spheres.begin(), spheres.end(), other.spheres.begin(), other.spheres.end(), sameSphere);
}

bool CParticleType::removeDuplicateSpheres()
{
    std::set<QString> met;
    const auto end = std::remove_if(spheres.begin(), spheres.end(),
                                    [&](const CSphere& sphere) { return !met.insert(sphere.name).second; });
    const bool changed = end != spheres.end();
    spheres.erase(end, spheres.end());
    return changed;
}

// ---------------------------------------------------------------- the spheres of a particle

void CParticleType::updateSpherePositions(quint32 slot, const CDomain& domain)
{
    if (!isLive(slot) || spheres.size() < 2)
        return;
    if (slot >= scale.size() || slot >= orientation.size() || slot >= position.size())
        return; // the timestep doesn't say where the particle is
    spherePositions.resize(spheres.size() * slotCount());
    for (std::size_t index = 0; index < spheres.size(); ++index) {
        const C3DVector offset = orientation[slot].rotate(spheres[index].position.toVector() * scale[slot]);
        C3DPoint centre = position[slot] + offset;
        domain.wrapIntoDomain(centre);
        spherePositions[slot * spheres.size() + index] = centre;
    }
}

bool CParticleType::sphereCentreAndRadius(quint32 slot, quint32 sphere, C3DPoint& centre, double& radius) const
{
    if (!isLive(slot) || sphere >= spheres.size() || slot >= scale.size())
        return false;
    const std::vector<C3DPoint>& centres = spherePositions.empty() ? position : spherePositions;
    const std::size_t index = spherePositions.empty() ? slot : slot * spheres.size() + sphere;
    if (index >= centres.size())
        return false;
    centre = centres[index];
    radius = scale[slot] * spheres[sphere].physicalRadius;
    return true;
}

// ---------------------------------------------------------------- values by the names of attributes

bool CParticleType::getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                             quint32 row) const
{
    return valueOfRows(
        out, row, slotCount(), attribute, [this](quint32 i) { return isLive(i); },
        [&](NAttributes::SAttributeValue& one, quint32 i) { return attribute->valueForParticle(one, *this, i); });
}

} // namespace NBrenmark
