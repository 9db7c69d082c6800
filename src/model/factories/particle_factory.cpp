// Keeps a factory's parameters bound to each other and to the custom properties of particles, whichever is set
// first.
#include "model/factories/particle_factory.h"

#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_custom_property.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "model/factories/static_particle_factory.h"
#include "model/particle_types.h"
#include "model/size_distributions.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

std::unique_ptr<CParticleFactory> createFactory(const QString& word, const QString& name)
{
    std::unique_ptr<CParticleFactory> factory;
    if (word == CDynamicParticleFactory::word)
        factory = std::make_unique<CDynamicParticleFactory>();
    else if (word == CStaticParticleFactory::word)
        factory = std::make_unique<CStaticParticleFactory>();
    if (factory != nullptr)
        factory->name = name;
    return factory;
}

CParticleFactory::CParticleFactory() = default;

CParticleFactory::~CParticleFactory()
{
    if (customProperties != nullptr)
        customProperties->removeListener(this);
}

void CParticleFactory::read(IFileVisitorReader& v) { v.readParticleFactory(*this); }

void CParticleFactory::write(IFileVisitorWriter& v) const { v.writeParticleFactory(*this); }

// ---------------------------------------------------------------- parameters

/// \return false if the parameter is of that kind already and stays
template <class TFamily>
static bool replaceByKind(std::unique_ptr<TFamily>& param, const QString& word)
{
    if (param != nullptr && param->kindWord() == word)
        return false;
    param = CKindRegistry<TFamily>::instance().create(word);
    return true;
}

void CParticleFactory::clearSizes()
{
    sizes.clear();
    typeAccounting.clear();
}

void CParticleFactory::setVelocity(std::unique_ptr<IFactoryVelocity> param) { velocity = std::move(param); }

void CParticleFactory::setVelocityKind(const QString& word) { replaceByKind(velocity, word); }

void CParticleFactory::setSize(const QString& typeName, std::unique_ptr<IFactorySize> param)
{
    sizes[typeName] = std::move(param);
}

void CParticleFactory::setSizeKind(const QString& typeName, const QString& word)
{
    replaceByKind(sizes[typeName], word);
}

void CParticleFactory::setOrientation(std::unique_ptr<IFactoryOrientation> param) { orientation = std::move(param); }

void CParticleFactory::setOrientationKind(const QString& word) { replaceByKind(orientation, word); }

void CParticleFactory::setAngVel(std::unique_ptr<IFactoryAngVel> param) { angVel = std::move(param); }

void CParticleFactory::setAngVelKind(const QString& word) { replaceByKind(angVel, word); }

void CParticleFactory::setType(std::unique_ptr<IFactoryType> param)
{
    type = std::move(param);
    if (type != nullptr)
        type->setPositionParam(position.get());
}

void CParticleFactory::setTypeKind(const QString& word, const CParticleTypes* particleTypes)
{
    if (!replaceByKind(type, word) || type == nullptr)
        return;
    type->setParticleTypes(particleTypes);
    type->setPositionParam(position.get());
}

void CParticleFactory::setPosition(std::unique_ptr<IFactoryPosition> param)
{
    position = std::move(param);
    bindPosition();
}

void CParticleFactory::setPositionKind(const QString& word)
{
    if (replaceByKind(position, word))
        bindPosition();
}

void CParticleFactory::bindPosition()
{
    if (position != nullptr)
        position->setFactory(this);
    if (type != nullptr)
        type->setPositionParam(position.get());
}

// ---------------------------------------------------------------- custom properties

bool CParticleFactory::setCustomPropertyKind(const CCustomPropertyMetaData* property, const QString& word)
{
    if (customProperties == nullptr || property == nullptr || customProperties->property(property->name) != property)
        return false;
    const auto entry = customParams.find(property->id);
    if (entry == customParams.end())
        return false;
    std::unique_ptr<IFactoryCustomPropertyParam> param = CFactoryCustomPropertyRegistry::instance().create(word);
    if (param == nullptr)
        return false;
    param->bind(property);
    entry->second = std::move(param);
    return true;
}

void CParticleFactory::connectCustomProperties(CCustomPropertyManager* manager)
{
    if (customProperties != nullptr && customProperties != manager) {
        customProperties->removeListener(this);
        customParams.clear(); // they speak of properties of the manager that is left
    }
    customProperties = manager;
    if (manager == nullptr)
        return;
    manager->addListener(this);
    propertyAdded(*manager);
}

void CParticleFactory::managerChanged(CCustomPropertyManager& manager, int)
{
    // A manager loses its finalized properties in one way only, when all are about to be deleted. This is
    // the last call before it, and the parameters point at the definitions.
    if (&manager == customProperties && manager.finalizedCount() == 0)
        customParams.clear();
}

void CParticleFactory::propertyAdded(CCustomPropertyManager& manager)
{
    if (&manager != customProperties)
        return;
    FactoryCustomParams kept;
    for (unsigned int index = 0; index < manager.propertyCount(); ++index) {
        const CCustomPropertyMetaData* const property = manager.property(index);
        std::unique_ptr<IFactoryCustomPropertyParam>& param = kept[property->id];
        const auto before = customParams.find(property->id);
        if (before != customParams.end())
            param = std::move(before->second);
        if (param != nullptr)
            continue;
        param = std::make_unique<CFixedValueCustomPropertyFactoryParam>();
        param->bind(property);
    }
    customParams = std::move(kept);
}

// ---------------------------------------------------------------- particle types

void CParticleFactory::refreshTypes(const CParticleTypes& particleTypes,
                                    const CParticleSizeDistributionMap& distributions)
{
    typeShares.clear();
    typeIndices.clear();
    if (type == nullptr)
        return;
    for (const QString& typeName : type->typeNames()) {
        quint32 index = 0;
        if (!particleTypes.findIndex(typeName, index))
            continue;
        typeShares[index] = distributions.percentageOf(typeName.toStdString()) * 0.01;
        typeIndices[typeName] = static_cast<qint32>(index);
    }
}

/// Moves the entry of the old key, if there is one, to the new key.
template <class TMap>
static void rekey(TMap& map, const QString& oldKey, const QString& newKey)
{
    auto entry = map.extract(oldKey);
    if (entry.empty())
        return;
    map.erase(newKey);
    entry.key() = newKey;
    map.insert(std::move(entry));
}

void CParticleFactory::renameType(const QString& oldName, const QString& newName)
{
    if (type != nullptr)
        type->renameType(oldName, newName);
    rekey(sizes, oldName, newName);
    rekey(typeAccounting, oldName, newName);
}

// ---------------------------------------------------------------- copies

template <class TFamily>
static std::unique_ptr<TFamily> cloneOf(const std::unique_ptr<TFamily>& param)
{
    return param != nullptr ? param->clone() : nullptr;
}

void CParticleFactory::copyCommonTo(CParticleFactory& copy) const
{
    copy.velocity = cloneOf(velocity);
    copy.orientation = cloneOf(orientation);
    copy.angVel = cloneOf(angVel);
    copy.type = cloneOf(type);
    copy.position = cloneOf(position);
    copy.bindPosition();
    for (const auto& [typeName, size] : sizes)
        copy.sizes[typeName] = cloneOf(size);
    for (const auto& [id, param] : customParams)
        copy.customParams[id] = cloneOf(param);
    copy.creationCount = creationCount;
    copy.sectionName = sectionName;
    copy.boundingShape = boundingShape;
    copy.maxAttempts = maxAttempts;
    copy.name = name;
    copy.counters = counters;
    copy.connectCustomProperties(customProperties);
}

} // namespace NBrenmark
