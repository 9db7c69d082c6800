// Particle types: a "template" for each, and in it its spheres.

#include "model/particle_types.h"
#include "core/memory_ceiling.h"
#include "xml/serialisers.h"

namespace NBrenmark {

// ---------------------------------------------------------------- definitions

template <class TForm, class TType>
static void templateForm(TForm& f, TType& t, QString& name)
{
    f.attribute("material", t.materialName);
    f.attribute("volume", t.rawVolume); // m^3
    f.attribute("name", name);
    f.attribute("mass", t.rawMass);     // kg
    f.attribute("I_x", t.rawInertia.x); // kg m^2
    f.attribute("I_y", t.rawInertia.y);
    f.attribute("I_z", t.rawInertia.z);
    f.word("calc_props", t.calculateProperties, "yes", "no");
}

template <class TForm, class TSphere>
static void sphereForm(TForm& f, TSphere& sphere)
{
    f.xyz("", sphere.position);                            // m
    f.attribute("contact_radius", sphere.contactRadius);   // m
    f.attribute("physical_radius", sphere.physicalRadius); // m
    f.attribute("name", sphere.name);
}

void CXmlReader::readParticleType(CParticleType& t)
{
    QString name;
    templateForm(in(), t, name);
    t.setName(name);
}

void CXmlWriter::writeParticleType(const CParticleType& t)
{
    QString name = t.displayName;
    templateForm(out(), t, name);
    for (std::size_t i = 0; i < t.spheres.size(); ++i)
        out().element("sphere", [&] {
            out().attribute("id", static_cast<quint32>(i));
            sphereForm(out(), t.spheres[i]);
        });
}

/// The definitions; the particles are written with their timestep.
void CXmlWriter::writeParticleTypes(const CParticleTypes& types)
{
    out().element("templates", [&] {
        for (const std::unique_ptr<CParticleType>& type : types.types)
            out().element("template", [&] { type->write(*this); });
    });
}

namespace {

class CParticleTemplatesPart : public CXmlPart<CParticleTypes>
{
public:
    using CXmlPart::CXmlPart;

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions& options) override
    {
        if (attributes.is("template")) {
            constexpr quint64 typeBytes = 2048;
            admitMemory(typeBytes, "particle types");
            current = &object.append();
            CXmlReader reader(attributes, options);
            current->read(reader);
            return true;
        }
        if (attributes.is("sphere")) {
            if (current == nullptr)
                return false;
            CSphere sphere;
            CXmlFormReader form(attributes);
            sphereForm(form, sphere);
            attributes.know("id"); // they come in their order
            sphere.setRadii(sphere.contactRadius, sphere.physicalRadius);
            current->spheres.push_back(sphere);
            return true;
        }
        return attributes.is("templates");
    }
    void endDomElement(const QString& tagName, const CXmlIoOptions&) override
    {
        if (tagName != QLatin1String("template") || current == nullptr)
            return;
        current->settleSpheres();
        current = nullptr;
    }

private:
    CParticleType* current = nullptr; ///< not owned
};

} // namespace

std::unique_ptr<CXmlSerialiser> particleTemplatesPart(CParticleTypes& types)
{
    return std::make_unique<CParticleTemplatesPart>(types);
}

} // namespace NBrenmark
