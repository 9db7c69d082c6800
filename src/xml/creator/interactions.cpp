// Interactions: an "interaction" for each pair of materials.
#include "materials/interactions.h"
#include "core/log.h"
#include "core/shortened.h"
#include "xml/serialisers.h"

namespace NBrenmark {

template <class TForm, class TInteraction>
static void interactionForm(TForm& f, TInteraction& interaction)
{
    f.attribute("coeff_restitution", interaction.restitution);
    f.attribute("coeff_static_friction", interaction.staticFriction);
    f.attribute("coeff_rolling_friction", interaction.rollingFriction);
}

void CXmlReader::readInteraction(CInteraction& interaction) { interactionForm(in(), interaction); }
void CXmlWriter::writeInteraction(const CInteraction& interaction) { interactionForm(out(), interaction); }

static const char* const firstMaterial = "material1";
static const char* const secondMaterial = "material2";

void CXmlWriter::writeInteractionMap(const InteractionMap& interactions)
{
    out().element("interactions", [&] {
        const auto& entries = interactions.entries;
        for (auto entry = entries.begin(); entry != entries.end(); ++entry)
            out().element("interaction", [&] {
                out().attribute(firstMaterial, InteractionMap::firstName(entry.key()));
                out().attribute(secondMaterial, InteractionMap::secondName(entry.key()));
                entry.value()->write(*this);
            });
    });
}

namespace {

class CInteractionsPart : public CXmlPart<InteractionMap>
{
public:
    using CXmlPart::CXmlPart;

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions& options) override
    {
        // A contact model may have elements of that name, too.
        if (!attributes.is("interaction") || attributes.parent() == QLatin1String("contact_model"))
            return attributes.is("interactions");
        auto interaction = std::make_unique<CInteraction>();
        CXmlReader reader(attributes, options);
        interaction->read(reader);
        const QString first = attributes.text(firstMaterial);
        const QString second = attributes.text(secondMaterial);
        if (object.find(first, second) != nullptr)
            report(eLost, NLogTitle::xmlImport,
                   "Two interactions are of \"" + shortened(first) + "\" and \"" + shortened(second) +
                       "\": the later one stays.",
                   1, shortened(first));
        object.set(first, second, interaction.release());
        return true;
    }
};

} // namespace

std::unique_ptr<CXmlSerialiser> interactionsPart(InteractionMap& interactions)
{
    return std::make_unique<CInteractionsPart>(interactions);
}

} // namespace NBrenmark
