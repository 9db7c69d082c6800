// Why: until materials came up, a particle type and a piece of geometry were what a parameter belonged
// to, and the legacy stream still names them. A deck may thus hold two values for what is one pair of
// materials today; neither is lost if one of the materials is doubled.
#include "legacy/pair_table_rekeying.h"

#include "core/log.h"
#include "core/shortened.h"
#include "model/creator_data.h"
#include "model/geometry/geometry_group.h"
#include "model/split_material.h"
#include "physics/cohesion.h"
#include "physics/hysteretic_spring.h"
#include "physics/jkr.h"
#include "physics/parallel_bond.h"
#include "physics/table_copies.h"

#include <QHash>

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace NBrenmark::NLegacySupport {

// ---------------------------------------------------------------- whose materials

/// Particle types by their names: of several of one name the last.
using TypesByName = QHash<QString, CParticleType*>;

static TypesByName typesByName(CCreatorData& creator)
{
    TypesByName types;
    for (const auto& type : creator.particleTypes.types)
        types[type->displayName] = type.get();
    return types;
}

static QString* materialOfType(const TypesByName& types, const std::string& name)
{
    CParticleType* const type = types.value(QString::fromStdString(name));
    return type == nullptr ? nullptr : &type->materialName;
}

static QString* materialOfGroup(CCreatorData& creator, const std::string& name)
{
    CGeometryGroup* const group = creator.geometryGroupByName(QString::fromStdString(name));
    return group == nullptr ? nullptr : &group->materialName;
}

/// The materials of the two names of an entry, and which of them may move to a new one.
struct SMaterialPair
{
    QString first;
    QString second;
    QString* movable = nullptr; ///< the name that the movable user holds; null if there is no such user
    bool movesFirst = false;    ///< it is the user of first
    bool isOfOneType = false;   ///< both names are one
};

static std::optional<SMaterialPair> typesPair(const TypesByName& types, const std::string& a, const std::string& b)
{
    const QString* const ofA = materialOfType(types, a);
    if (ofA == nullptr)
        return std::nullopt;
    QString* const ofB = materialOfType(types, b);
    return SMaterialPair{*ofA, ofB == nullptr ? *ofA : *ofB, ofB, false, a == b};
}

static std::optional<SMaterialPair> geometryPair(CCreatorData& creator, const TypesByName& types, const std::string& a,
                                                 const std::string& b)
{
    for (const bool groupFirst : {false, true}) {
        const QString* const ofType = materialOfType(types, groupFirst ? b : a);
        QString* const ofGroup = materialOfGroup(creator, groupFirst ? a : b);
        if (ofType != nullptr && ofGroup != nullptr)
            return SMaterialPair{groupFirst ? *ofGroup : *ofType, groupFirst ? *ofType : *ofGroup, ofGroup, groupFirst,
                                 false};
    }
    return std::nullopt;
}

// ---------------------------------------------------------------- one table

using Models = std::set<const IContactModel*>;

class CRekeying
{
public:
    /// \param finished  the models whose tables go by materials by now
    CRekeying(CCreatorData& creator, const QString& model, bool geometrySide, const Models& finished)
        : creator(creator),
          types(typesByName(creator)),
          model(model.toStdString()),
          geometrySide(geometrySide),
          finished(finished)
    {}

    template <class TTable>
    TTable rekeyed(const TTable& old)
    {
        TTable result;
        const auto entries = entriesOf(old);
        std::multimap<std::string, std::size_t> placed; // by both of its names, what is in the new table already
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const auto& entry = entries[i];
            const std::string names = "\"" + shortened(entry.first) + "\" and \"" + shortened(entry.second) + "\"";
            auto pair = pairOf(entry.first, entry.second);
            if (!pair || pair->first.isEmpty() || pair->second.isEmpty()) {
                note(eUpgraded,
                     "the entry of " + names + " is dropped, because no pair of materials corresponds to it.");
                continue;
            }
            const auto* const standing = find(result, pair->first.toStdString(), pair->second.toStdString());
            const bool isNew = standing == nullptr || !(*standing == entry.value);
            if (isNew && standing != nullptr) {
                if (!move(*pair, names))
                    continue;
                // What the one that moved had with others goes along.
                const auto moved = placed.equal_range(pair->movesFirst ? entry.first : entry.second);
                for (auto earlier = moved.first; earlier != moved.second; ++earlier)
                    placeAnew(result, entries[earlier->second]);
            }
            if (isNew)
                set(result, pair->first.toStdString(), pair->second.toStdString(), entry.value);
            placed.emplace(entry.first, i);
            placed.emplace(entry.second, i);
        }
        return result;
    }

private:
    std::optional<SMaterialPair> pairOf(const std::string& a, const std::string& b)
    {
        return geometrySide ? geometryPair(creator, types, a, b) : typesPair(types, a, b);
    }

    template <class TTable, class TEntry>
    void placeAnew(TTable& result, const TEntry& entry)
    {
        const auto pair = pairOf(entry.first, entry.second);
        if (pair && find(result, pair->first.toStdString(), pair->second.toStdString()) == nullptr)
            set(result, pair->first.toStdString(), pair->second.toStdString(), entry.value);
    }

    /// Gives one side of a pair a new material, which has all that the old one has in the tables that are done.
    bool move(SMaterialPair& pair, const std::string& names)
    {
        QString& moved = pair.movesFirst ? pair.first : pair.second;
        const QString made = pair.movable == nullptr
                                 ? QString()
                                 : splitMaterial(creator, moved, geometrySide, [this](const IContactModel& other) {
                                       return !storesPairsOfTypes(other) || finished.count(&other) > 0;
                                   });
        if (made.isEmpty()) {
            note(eNotCarried,
                 "the entry of " + names + " is dropped, for its materials have another value and can't be doubled.");
            return false;
        }
        note(eUpgraded, "material \"" + made.toStdString() + "\" is made from \"" + moved.toStdString() +
                            "\", for the entry of " + names + " has a value of its own.");
        if (pair.isOfOneType)
            pair.first = made;
        *pair.movable = made;
        moved = made;
        return true;
    }

    void note(EEffect effect, const std::string& text) const
    {
        reportOnce(effect, NLogTitle::conversion, model + (geometrySide ? " (with geometry): " : ": ") + text, 1,
                   model);
    }

    CCreatorData& creator;
    const TypesByName types;
    const std::string model;
    const bool geometrySide;
    const Models& finished;
};

/// Turns one table of a record. What else the record holds stays.
template <class TRecord, class TTable>
static void rekeyRecord(CCreatorData& creator, IContactModel& model, TTable TRecord::*table, bool geometrySide,
                        const Models& finished)
{
    const std::unique_ptr<IParamData> data = model.paramData();
    auto* const record = dynamic_cast<TRecord*>(data.get());
    if (record == nullptr) // a phantom of that name
        return;
    record->*table = CRekeying(creator, model.modelName(), geometrySide, finished).rekeyed(record->*table);
    model.setParamData(*record);
}

constexpr const char* linearCohesion = "Linear Cohesion";
constexpr const char* hystereticSpring = "Hysteretic Spring";
constexpr const char* jkr = "Hertz-Mindlin with JKR";
constexpr const char* bonding = "Hertz-Mindlin with bonding";

bool storesPairsOfTypes(const IContactModel& model)
{
    const QString name = model.modelName();
    const auto names = {linearCohesion, hystereticSpring, jkr, bonding};
    return std::any_of(names.begin(), names.end(), [&](const char* known) { return name == QLatin1String(known); });
}

void rekeyPairTables(CCreatorData& creator, CPhysicsModels::Chain& chain, bool geometrySide)
{
    Models finished;
    if (geometrySide)
        for (const auto& model : creator.physicsModels.sphereSphereModels)
            finished.insert(model.get());
    for (const auto& model : chain) {
        const QString name = model->modelName();
        const auto rekey = [&](auto table) { rekeyRecord(creator, *model, table, geometrySide, finished); };
        if (name == QLatin1String(linearCohesion))
            rekey(&CCohesionContactModelParamData::energyDensity);
        else if (name == QLatin1String(hystereticSpring))
            rekey(&CHystereticContactModelParamData::interactions);
        else if (name == QLatin1String(jkr))
            rekey(&CJkrContactModelParamData::surfaceEnergy);
        else if (name == QLatin1String(bonding))
            rekey(&CParallelBondContactModelParamData::bondParameters);
        finished.insert(model.get());
    }
}

} // namespace NBrenmark::NLegacySupport
