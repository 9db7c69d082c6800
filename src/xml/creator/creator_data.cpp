// The document of a definition, from its root.

#include "model/creator_data.h"
#include "xml/property_definitions.h"
#include "xml/serialisers.h"
#include "xml/without_form.h"

#include <cmath>

namespace NBrenmark {

// A contact model's properties come before the models: those that define them find them there.
void CXmlWriter::writeCreatorData(CCreatorData& creator)
{
    reportWithoutForm(creator);
    const SPropertyManagers& managers = creator.geometryGroups.managers;
    out().element("simulation", [&] {
        out().attribute("name", creator.title);
        out().attribute("description", creator.description);
        out().attribute("version", versionText(options.version));
        out().element("globals", [&] {
            out().element("gravity", [&] { out().xyz("", creator.gravity); }); // m/s^2
            if (std::abs(creator.damping) > zeroLength)
                out().element("damping", [&] { out().attribute("factor", creator.damping); });
            writePropertyDefinitions(out(), managers.simulation);
        });
        out().element("particles", [&] {
            creator.particleTypes.write(*this);
            writePropertyDefinitions(out(), managers.particle);
        });
        out().element("geometry", [&] {
            creator.domain.write(*this);
            if (options.writeGeometryGroups)
                creator.geometryGroups.write(*this);
            writePropertyDefinitions(out(), managers.geometry);
        });
        creator.materials.write(*this);
        creator.interactions.write(*this);
        creator.sizeDistributions.write(*this);
        out().element("physics_models", [&] {
            writePropertyDefinitions(out(), managers.contact);
            creator.physicsModels.write(*this);
        });
    });
}

namespace {

class CDefinitionRoot : public CXmlPart<CCreatorData>
{
public:
    explicit CDefinitionRoot(CCreatorData& creator) : CXmlPart(creator)
    {
        parts.push_back(propertyDefinitionsPart(creator.geometryGroups.managers));
        parts.push_back(domainPart(creator.domain));
        parts.push_back(materialsPart(creator.materials));
        parts.push_back(interactionsPart(creator.interactions));
        parts.push_back(physicsModelsPart(creator.physicsModels));
        parts.push_back(particleTemplatesPart(creator.particleTypes));
        parts.push_back(sizeDistributionsPart(creator.sizeDistributions));
        parts.push_back(geometryGroupsPart(creator.geometryGroups));
    }

    bool startDomElement(const QString& tagName, const CXmlAttributes& attributes,
                         const CXmlIoOptions& options) override
    {
        const bool isTaken = take(tagName, attributes, options);
        object.modified = false;
        return isTaken;
    }

    void endDomElement(const QString& tagName, const CXmlIoOptions& options) override
    {
        for (const std::unique_ptr<CXmlSerialiser>& part : parts)
            part->endDomElement(tagName, options);
    }

private:
    bool take(const QString& tagName, const CXmlAttributes& attributes, const CXmlIoOptions& options)
    {
        if (attributes.is("simulation")) {
            attributes.know("version"); // which was read first
            attributes.know("xmlns");
            object.title = attributes.text("name");
            object.description = attributes.text("description");
            return true;
        }
        if (attributes.is("gravity")) {
            CXmlFormReader(attributes).xyz("", object.gravity);
            return true;
        }
        if (attributes.is("damping")) {
            object.damping = attributes.number("factor");
            return true;
        }
        bool isTaken = attributes.is("globals") || attributes.is("particles");
        for (const std::unique_ptr<CXmlSerialiser>& part : parts)
            if (!isTaken)
                isTaken = part->startDomElement(tagName, attributes, options);
        return isTaken;
    }

    XmlParts parts;
};

} // namespace

std::unique_ptr<CXmlSerialiser> definitionRoot(CCreatorData& creator)
{
    return std::make_unique<CDefinitionRoot>(creator);
}

} // namespace NBrenmark
