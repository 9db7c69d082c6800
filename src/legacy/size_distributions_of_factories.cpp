// Why: the size of a particle was a matter of the factory that makes it; today it belongs to the particle type, and
// all factories of a type share it. No legacy deck stores it so.
#include "legacy/size_distributions_of_factories.h"

#include "core/log.h"
#include "core/shortened.h"
#include "legacy/deck_factories.h"
#include "model/creator_data.h"
#include "model/factories/factory_size.h"
#include "model/factories/particle_factory.h"

#include <algorithm>
#include <map>

namespace NBrenmark::NLegacySupport {

constexpr double whole = 100.0; // percent

using Laws = std::vector<const ISizeDistribution*>;

/// The laws of each type name, in the order of the factories.
static std::map<std::string, Laws> lawsOf(const CCreatorData& creator)
{
    std::map<std::string, Laws> laws;
    for (const SDeckFactory& factory : factoriesOf(creator)) {
        for (const QString& typeName : factory.typeNames) {
            const auto size = factory.factory->sizes.find(typeName);
            if (size != factory.factory->sizes.end() && size->second != nullptr)
                laws[typeName.toStdString()].push_back(&size->second->distribution());
            else
                reportOnce(eRemark, NLogTitle::conversion,
                           "Factory \"" + shortened(factory.factory->name) + "\" has no size for particle type \"" +
                               shortened(typeName) + "\": the size law of the type comes without it.",
                           1, shortened(factory.factory->name));
        }
    }
    return laws;
}

static void reportConflict(const std::string& name, const Laws& laws)
{
    QStringList words;
    for (const ISizeDistribution* law : laws)
        words.append(law->kindWord());
    const QString text = QStringLiteral("Conflict with size distributions for Particle %1. This was used by multiple "
                                        "factories with different Size parameters: %2. \n"
                                        "Zorv advises recreating simulation with latest version!");
    reportOnce(eNotCarried, NLogTitle::conversionProblem,
               text.arg(QString::fromStdString(name), words.join(QStringLiteral(", "))).toStdString(), laws.size() - 1,
               shortened(name));
}

void buildSizeDistributions(CCreatorData& creator)
{
    CParticleSizeDistributionMap& map = creator.sizeDistributions;
    map.clear();
    for (const auto& [name, laws] : lawsOf(creator)) {
        const ISizeDistribution& first = *laws.front();
        std::unique_ptr<ISizeDistribution> law = first.clone();
        map.add(name, whole, law);
        if (std::any_of(laws.begin(), laws.end(),
                        [&](const ISizeDistribution* other) { return !other->equals(first); }))
            reportConflict(name, laws);
    }
    for (const auto& type : creator.particleTypes.types) {
        std::unique_ptr<ISizeDistribution> law =
            CSizeDistributionRegistry::instance().create(CFixedSizeDistribution::word);
        map.add(type->name, whole, law); // one that has a law keeps it
    }
    std::map<QString, std::vector<std::string>> typesOf; // by material
    for (const auto& type : creator.particleTypes.types)
        typesOf[type->materialName].push_back(type->name);
    for (const auto& [material, types] : typesOf)
        if (creator.materials.contains(material))
            map.setEqualShares(types);
}

} // namespace NBrenmark::NLegacySupport
