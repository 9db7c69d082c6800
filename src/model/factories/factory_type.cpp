// Picks the next particle type: of several names each in turn.
#include "model/factories/factory_type.h"

#include "model/particle_types.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>

namespace NBrenmark {

template <>
const CFactoryTypeRegistry& CFactoryTypeRegistry::instance()
{
    static const CFactoryTypeRegistry registry = of<CFixedFactoryType, CBinaryFactoryType>();
    return registry;
}

void NNaryFactoryType::setParticleTypes(const CParticleTypes* types)
{
    particleTypes = types;
    if (types == nullptr || types->types.empty())
        return;
    for (std::size_t index = 0; index < names.size(); ++index)
        names[index] = types->types[std::min(index, types->types.size() - 1)]->displayName;
}

void NNaryFactoryType::setNextName(const QString& name)
{
    overrideName = name;
    hasOverride = true;
}

std::size_t NNaryFactoryType::nextIndex() const
{
    const auto count = static_cast<qint64>(names.size());
    return static_cast<std::size_t>((next % count + count) % count);
}

void NNaryFactoryType::advance(qint32 steps)
{
    const auto count = static_cast<qint64>(names.size());
    next = static_cast<qint32>((static_cast<qint64>(nextIndex()) + steps + count) % count);
}

bool NNaryFactoryType::nextTypeIndex(quint32& outIndex, const CParticleTypes& types)
{
    if (hasOverride) {
        hasOverride = false;
        return types.findIndex(overrideName, outIndex);
    }
    if (names.empty() || !types.findIndex(names[nextIndex()], outIndex))
        return false;
    advance(1);
    return true;
}

QString NNaryFactoryType::nextTypeName()
{
    if (hasOverride) {
        hasOverride = false;
        return overrideName;
    }
    if (names.empty())
        return QString();
    QString name = names[nextIndex()];
    advance(1);
    return name;
}

void NNaryFactoryType::stepBack()
{
    if (!names.empty())
        advance(-1);
}

double NNaryFactoryType::maxRadius(const CParticleTypes& types) const
{
    double radius = 0.0;
    for (const QString& name : names)
        radius = std::max(radius, types.maxExtentOfType(name));
    return radius;
}

bool NNaryFactoryType::renameType(const QString& oldName, const QString& newName)
{
    std::replace(names.begin(), names.end(), oldName, newName);
    return false;
}

bool NNaryFactoryType::setParamData(const IParamData& data)
{
    if (const auto* const choice = dynamic_cast<const CParticleTypesParamData*>(&data)) {
        attachParticleTypes(choice->particleTypes);
        return true;
    }
    return setNames(data);
}

// ---------------------------------------------------------------- as records

bool CFixedFactoryType::setNames(const IParamData& data)
{
    const auto* const record = dynamic_cast<const CFixedTypeParamData*>(&data);
    if (record == nullptr)
        return false;
    names.assign(1, record->name);
    return true;
}

std::unique_ptr<IParamData> CFixedFactoryType::paramData() const
{
    auto data = std::make_unique<CFixedTypeParamData>();
    if (!names.empty())
        data->name = names.front();
    return data;
}

bool CBinaryFactoryType::setNames(const IParamData& data)
{
    const auto* const record = dynamic_cast<const CBinaryTypeParamData*>(&data);
    if (record == nullptr)
        return false;
    names.assign(record->names.begin(), record->names.end());
    return true;
}

std::unique_ptr<IParamData> CBinaryFactoryType::paramData() const
{
    auto data = std::make_unique<CBinaryTypeParamData>();
    for (const QString& name : names)
        data->names.append(name);
    return data;
}

// ---------------------------------------------------------------- visitors

void CFixedFactoryType::read(IFileVisitorReader& v) { v.readFixedFactoryType(*this); }

void CFixedFactoryType::write(IFileVisitorWriter& v) const { v.writeFixedFactoryType(*this); }

void CBinaryFactoryType::read(IFileVisitorReader& v) { v.readBinaryFactoryType(*this); }

void CBinaryFactoryType::write(IFileVisitorWriter& v) const { v.writeBinaryFactoryType(*this); }

} // namespace NBrenmark
