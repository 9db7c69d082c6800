#pragma once
// The parts of a deck as the documents see them, one for each list of it. The two roots pass every opening tag to
// theirs in order; each takes what it knows.

#include "visitors/dom_serialiser.h"
#include "xml/xml_reader.h"
#include "xml/xml_writer.h"

#include <memory>
#include <vector>

namespace NBrenmark {

struct SPropertyManagers;

/// A part that must hear as well where elements end.
class CXmlSerialiser : public IDomSerialiser
{
public:
    virtual void endDomElement(const QString& tagName, const CXmlIoOptions& options)
    {
        static_cast<void>(tagName);
        static_cast<void>(options);
    }
};

/// What all parts have in common: the object reads and writes itself by its visitor slot. It isn't owned.
template <class TObject>
class CXmlPart : public CXmlSerialiser
{
public:
    explicit CXmlPart(TObject& object) : object(object) {}

    void fromDomElement(const CXmlAttributes& attributes, const CXmlIoOptions& options) override
    {
        CXmlReader reader(attributes, options);
        object.read(reader);
    }
    void toDomElement(CXmlOutput& out, CXmlIoOptions& options) override
    {
        CXmlWriter writer(out, options);
        object.write(writer);
    }

protected:
    TObject& object;
};

using XmlParts = std::vector<std::unique_ptr<CXmlSerialiser>>;

// The parts of a definition.
std::unique_ptr<CXmlSerialiser> domainPart(CDomain& domain);
std::unique_ptr<CXmlSerialiser> materialsPart(MaterialMap& materials);
std::unique_ptr<CXmlSerialiser> interactionsPart(InteractionMap& interactions);
std::unique_ptr<CXmlSerialiser> physicsModelsPart(CPhysicsModels& physics);
std::unique_ptr<CXmlSerialiser> particleTemplatesPart(CParticleTypes& types);
std::unique_ptr<CXmlSerialiser> sizeDistributionsPart(CParticleSizeDistributionMap& distributions);
std::unique_ptr<CXmlSerialiser> geometryGroupsPart(GeometryGroups& groups);
std::unique_ptr<CXmlSerialiser> propertyDefinitionsPart(const SPropertyManagers& managers);

// The parts of a timestep.
std::unique_ptr<CXmlSerialiser> energiesPart(CSystemEnergy& energy);
std::unique_ptr<CXmlSerialiser> particlesPart(CParticleTypes& types);
std::unique_ptr<CXmlSerialiser> contactsPart(CTimestepData& timestep);
std::unique_ptr<CXmlSerialiser> bondsPart(CTimestepData& timestep);
std::unique_ptr<CXmlSerialiser> collisionsPart(CCollisions& collisions);

// The roots: they have the parts above.
std::unique_ptr<CXmlSerialiser> definitionRoot(CCreatorData& creator);
std::unique_ptr<CXmlSerialiser> timestepRoot(CTimestepData& timestep);

} // namespace NBrenmark
