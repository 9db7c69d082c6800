// Splitting one material into two for two uses, with its interactions.
#include "materials/materials.h"

#include "materials/interactions.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>
#include <memory>

namespace NBrenmark {

CMaterial::CMaterial(const std::string& name, double poissonsRatio, double shearModulus, double density,
                     double workFunction, qint32 type)
    : name(name),
      poissonsRatio(poissonsRatio),
      shearModulus(shearModulus),
      density(density),
      workFunction(workFunction),
      type(type)
{}

void CMaterial::read(IFileVisitorReader& v) { v.readMaterial(*this); }

void CMaterial::write(IFileVisitorWriter& v) const { v.writeMaterial(*this); }

void MaterialMap::read(IFileVisitorReader& v) { v.readMaterialMap(*this); }

void MaterialMap::write(IFileVisitorWriter& v) const { v.writeMaterialMap(*this); }

MaterialMap::~MaterialMap() { qDeleteAll(*this); }

CMaterial* MaterialMap::find(const QString& name) const { return value(name, nullptr); }

void MaterialMap::set(const QString& name, CMaterial* material)
{
    CMaterial*& entry = (*this)[name];
    if (entry != material)
        delete entry;
    entry = material;
}

void MaterialMap::clear()
{
    qDeleteAll(*this);
    QMap::clear();
}

QString MaterialMap::splitMaterial(const QString& materialName, bool equipmentCopy, InteractionMap& interactions)
{
    const CMaterial* original = find(materialName);
    if (original == nullptr)
        return QString();
    QString newName = makeUniqueName(materialName, keys());
    auto copy = std::make_unique<CMaterial>(*original);
    copy->name = newName.toStdString();
    if (equipmentCopy)
        copy->type = eEquipmentMaterial;
    set(newName, copy.release());

    for (const QString& partner : interactions.partnersOf(materialName)) {
        const CMaterial* partnerMaterial = find(partner);
        if (equipmentCopy && partnerMaterial != nullptr && partnerMaterial->type == eEquipmentMaterial)
            continue;
        const CInteraction* source = interactions.find(materialName, partner);
        if (source == nullptr) // a name with "~" in it makes a key fall into other names
            continue;
        interactions.set(newName, partner, new CInteraction(*source));
        if (!equipmentCopy && partner == materialName)
            interactions.set(newName, newName, new CInteraction(*source));
    }
    return newName;
}

QString makeUniqueName(const QString& base, const QStringList& existingNames)
{
    const QString start = base + QLatin1Char('(');
    qulonglong greatest = 0;
    for (const QString& name : existingNames) {
        if (!name.startsWith(start) || !name.endsWith(QLatin1Char(')')))
            continue;
        const QStringRef number = name.midRef(start.size()).chopped(1);
        const bool isNumber = std::all_of(number.begin(), number.end(), [](QChar c) { return c >= '0' && c <= '9'; });
        if (isNumber && !number.isEmpty())
            greatest = qMax(greatest, number.toULongLong());
    }
    return base + QLatin1Char('(') + QString::number(greatest + 1) + QLatin1Char(')');
}

} // namespace NBrenmark
