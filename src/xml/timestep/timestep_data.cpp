// The document of a timestep, from its root.

#include "results/timestep_data.h"
#include "model/creator_data.h"
#include "xml/losses.h"
#include "xml/particles.h"
#include "xml/property_values.h"

#include <algorithm>

namespace NBrenmark {

/// What a document has no place for, of the parts that are written.
static void reportWithoutForm(const CTimestepData& t, const CXmlIoOptions& options)
{
    const auto& types = t.particleTypes.types;
    const auto& groups = t.creatorData.geometryGroups.groups();
    CXmlLosses losses;
    losses.addIf(t.elapsedTime != 0.0, "its elapsed real time");
    losses.addIf(!t.removedParticles.isEmpty(), "how many particles were removed");
    losses.addIf(
        options.writeParticles &&
            std::any_of(types.begin(), types.end(),
                        [](const auto& type) { return (type->dataMask & eForceTorque) != 0 && type->liveCount() > 0; }),
        "forces and torques of particles");
    losses.addIf(options.writeParticles &&
                     std::any_of(types.begin(), types.end(),
                                 [](const auto& type) { return type->liveCount() != type->slotCount(); }),
                 "free places between particles");
    losses.addIf(
        std::any_of(groups.begin(), groups.end(), [](const CGeometryGroup* group) { return group != nullptr; }),
        "the state of its geometry");
    const quint32 collisions = t.collisions.surfaceSurface.liveCount() + t.collisions.surfaceGeometry.liveCount() +
                               t.contacts.surfaceSurface.activeCollisions.liveCount() +
                               t.contacts.surfaceGeometry.activeCollisions.liveCount();
    losses.addIf(options.writeCollisions && collisions > 0, "all of a collision but that there is one");
    losses.addIf(options.writeContacts && (t.contacts.surfaceSurface.contactRecords.count() > 0 ||
                                           t.contacts.surfaceGeometry.contactRecords.count() > 0),
                 "records of contacts");
    losses.report("the timestep", "");
}

static const char* const propertiesTag = "simulation_properties";

template <class TForm, class TTime>
static void timeForm(TForm& f, qint32& runs, TTime& time, QString& date)
{
    f.attribute("runs", runs);
    f.attribute("time", time); // s
    f.attribute("date", date); // "dd/MM/yy"
}

void CXmlWriter::writeTimestepData(CTimestepData& t)
{
    timestep = &t;
    reportWithoutForm(t, options);
    double time = options.overrideTime ? options.timeOverride : t.time;
    options.overrideTime = false;
    options.timeOverride = 0.0;
    out().element("simulation", [&] {
        timeForm(out(), t.runNumber, time, t.date);
        out().element("globals", [&] { out().element("energy", [&] { t.systemEnergy.write(*this); }); });
        if (options.writeCustomProperties)
            out().element(propertiesTag, [&] {
                CXmlValues(t.simulationProperties.manager()).write(out(), t.simulationProperties, 0);
            });
        if (options.writeParticles)
            writeParticles(out(), t.particleTypes, options.writeCustomProperties);
        if (options.writeContacts)
            out().element("contacts", [&] { t.contacts.write(*this); });
        if (options.writeBonds)
            out().element("bonds", [&] { t.bonds.write(*this); });
        if (options.writeCollisions)
            out().element("collisions", [&] { t.collisions.write(*this); });
    });
    timestep = nullptr;
}

namespace {

class CTimestepRoot : public CXmlPart<CTimestepData>
{
public:
    explicit CTimestepRoot(CTimestepData& timestep) : CXmlPart(timestep)
    {
        parts.push_back(energiesPart(timestep.systemEnergy));
        parts.push_back(particlesPart(timestep.particleTypes));
        parts.push_back(contactsPart(timestep));
        parts.push_back(bondsPart(timestep));
        parts.push_back(collisionsPart(timestep.collisions));
    }

    bool startDomElement(const QString& tagName, const CXmlAttributes& attributes,
                         const CXmlIoOptions& options) override
    {
        if (attributes.is("simulation")) {
            CXmlFormReader form(attributes);
            timeForm(form, object.runNumber, object.time, object.date);
            return true;
        }
        if (attributes.is(propertiesTag)) {
            object.simulationProperties.resetToInitialValues(1);
            CXmlValues(object.simulationProperties.manager()).read(attributes, object.simulationProperties, 0);
            return true;
        }
        bool isTaken = attributes.is("globals");
        for (const std::unique_ptr<CXmlSerialiser>& part : parts)
            if (!isTaken)
                isTaken = part->startDomElement(tagName, attributes, options);
        return isTaken;
    }

    void endDomElement(const QString& tagName, const CXmlIoOptions& options) override
    {
        for (const std::unique_ptr<CXmlSerialiser>& part : parts)
            part->endDomElement(tagName, options);
    }

private:
    XmlParts parts;
};

} // namespace

std::unique_ptr<CXmlSerialiser> timestepRoot(CTimestepData& timestep)
{
    return std::make_unique<CTimestepRoot>(timestep);
}

} // namespace NBrenmark
