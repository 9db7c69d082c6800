// Materials: a "material" for each.
#include "materials/materials.h"
#include "core/log.h"
#include "core/shortened.h"
#include "xml/serialisers.h"

namespace NBrenmark {

template <class TForm, class TMaterial>
static void materialForm(TForm& f, TMaterial& material)
{
    f.attribute("name", material.name);
    f.attribute("poissons_ratio", material.poissonsRatio);
    f.attribute("shear_modulus", material.shearModulus); // Pa
    f.attribute("density", material.density);            // kg/m^3
    f.attribute("work_function", material.workFunction);
    f.attribute("type", material.type); // EMaterialType
}

void CXmlReader::readMaterial(CMaterial& material)
{
    materialForm(in(), material);
    if (attributes.text("type").isEmpty()) // in documents of before there were two
        material.type = eBulkMaterial;
}
void CXmlWriter::writeMaterial(const CMaterial& material) { materialForm(out(), material); }

void CXmlWriter::writeMaterialMap(const MaterialMap& materials)
{
    out().element("materials", [&] {
        for (const CMaterial* material : materials)
            out().element("material", [&] { material->write(*this); });
    });
}

namespace {

class CMaterialsPart : public CXmlPart<MaterialMap>
{
public:
    using CXmlPart::CXmlPart;

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions& options) override
    {
        if (!attributes.is("material"))
            return attributes.is("materials");
        auto material = std::make_unique<CMaterial>();
        CXmlReader reader(attributes, options);
        material->read(reader);
        const QString name = QString::fromStdString(material->name);
        if (object.contains(name))
            report(eLost, NLogTitle::xmlImport,
                   "Two materials are named \"" + shortened(name) + "\": the later one stays.", 1, shortened(name));
        object.set(name, material.release());
        return true;
    }
};

} // namespace

std::unique_ptr<CXmlSerialiser> materialsPart(MaterialMap& materials)
{
    return std::make_unique<CMaterialsPart>(materials);
}

} // namespace NBrenmark
