// Why: until materials came up, a particle type and a piece of geometry were what a parameter belonged
// to, and the legacy stream still names them. A deck may thus hold two values for what is one pair of
// materials today; neither is lost if one of the materials is doubled.
#include "legacy/pair_table_rekeying.h"

#include "core/log.h"
#include "core/shortened.h"
#include "model/creator_data.h"
#include "model/geometry/geometry_group.h"
#include "physics/cohesion.h"
#include "physics/hysteretic_spring.h"
#include "physics/jkr.h"
#include "physics/parallel_bond.h"

#include <optional>

namespace NBrenmark::NLegacySupport {

// ---------------------------------------------------------------- tables by pair, in either shape

template <class TValue>
struct SPairEntry
{
    std::string first;
    std::string second;
    TValue value;
};

template <class TValue>
static std::vector<SPairEntry<TValue>> entriesOf(const CPairTable<TValue>& table)
{
    std::vector<SPairEntry<TValue>> entries;
    for (const auto& [pair, value] : table.entries)
        entries.push_back({pair.first, pair.second, value});
    return entries;
}

static std::vector<SPairEntry<CBondParameters>> entriesOf(const CBondParametersMap& table)
{
    std::vector<SPairEntry<CBondParameters>> entries;
    for (const auto& [key, value] : table.entries) {
        const auto names = CBondParametersMap::namesOf(key);
        entries.push_back(names ? SPairEntry<CBondParameters>{names->first, names->second, value}
                                : SPairEntry<CBondParameters>{key, std::string(), value});
    }
    return entries;
}

template <class TValue>
static const TValue* find(const CPairTable<TValue>& table, const std::string& a, const std::string& b)
{
    return table.find(a, b);
}

static const CBondParameters* find(const CBondParametersMap& table, const std::string& a, const std::string& b)
{
    return table.find(CBondParametersMap::pairKey(a, b));
}

template <class TValue>
static void set(CPairTable<TValue>& table, const std::string& a, const std::string& b, const TValue& value)
{
    table.set(a, b, value);
}

static void set(CBondParametersMap& table, const std::string& a, const std::string& b, const CBondParameters& value)
{
    table.set(CBondParametersMap::pairKey(a, b), value);
}

// ---------------------------------------------------------------- whose materials

static QString* materialOfType(CCreatorData& creator, const std::string& name)
{
    CParticleType* const type = creator.particleTypes.find(QString::fromStdString(name));
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
};

static std::optional<SMaterialPair> typesPair(CCreatorData& creator, const std::string& a, const std::string& b)
{
    const QString* const ofA = materialOfType(creator, a);
    if (ofA == nullptr)
        return std::nullopt;
    QString* const ofB = materialOfType(creator, b);
    return SMaterialPair{*ofA, ofB == nullptr ? *ofA : *ofB, ofB, false};
}

static std::optional<SMaterialPair> geometryPair(CCreatorData& creator, const std::string& a, const std::string& b)
{
    for (const bool groupFirst : {false, true}) {
        const QString* const ofType = materialOfType(creator, groupFirst ? b : a);
        QString* const ofGroup = materialOfGroup(creator, groupFirst ? a : b);
        if (ofType != nullptr && ofGroup != nullptr)
            return SMaterialPair{groupFirst ? *ofGroup : *ofType, groupFirst ? *ofType : *ofGroup, ofGroup, groupFirst};
    }
    return std::nullopt;
}

// ---------------------------------------------------------------- one table

class CRekeying
{
public:
    CRekeying(CCreatorData& creator, const QString& model, bool geometrySide)
        : creator(creator), model(model.toStdString()), geometrySide(geometrySide)
    {}

    template <class TTable>
    TTable rekeyed(const TTable& old)
    {
        TTable result;
        for (const auto& entry : entriesOf(old)) {
            const std::string names = "\"" + shortened(entry.first) + "\" and \"" + shortened(entry.second) + "\"";
            auto pair = geometrySide ? geometryPair(creator, entry.first, entry.second)
                                     : typesPair(creator, entry.first, entry.second);
            if (!pair || pair->first.isEmpty() || pair->second.isEmpty()) {
                tell(eUpgraded, "the entry of " + names + " is dropped, for no pair of materials stands behind it.");
                continue;
            }
            const auto* const standing = find(result, pair->first.toStdString(), pair->second.toStdString());
            if (standing != nullptr && *standing == entry.value)
                continue;
            if (standing != nullptr && !move(*pair, names))
                continue;
            set(result, pair->first.toStdString(), pair->second.toStdString(), entry.value);
        }
        return result;
    }

private:
    /// Gives one side of a pair a new material.
    bool move(SMaterialPair& pair, const std::string& names)
    {
        QString& moved = pair.movesFirst ? pair.first : pair.second;
        const QString made = pair.movable == nullptr
                                 ? QString()
                                 : creator.materials.splitMaterial(moved, geometrySide, creator.interactions);
        if (made.isEmpty()) {
            tell(eNotCarried,
                 "the entry of " + names + " is dropped, for its materials have another value and can't be doubled.");
            return false;
        }
        tell(eUpgraded, "material \"" + made.toStdString() + "\" is made from \"" + moved.toStdString() +
                            "\", for the entry of " + names + " has a value of its own.");
        *pair.movable = made;
        moved = made;
        return true;
    }

    void tell(EEffect effect, const std::string& text) const
    {
        report(effect, NLogTitle::conversion, model + ": " + text, 1, model);
    }

    CCreatorData& creator;
    const std::string model;
    const bool geometrySide;
};

/// Turns one table of a record. What else the record holds stays.
template <class TRecord, class TTable>
static void rekeyRecord(CCreatorData& creator, IContactModel& model, TTable TRecord::*table, bool geometrySide)
{
    const std::unique_ptr<IParamData> data = model.paramData();
    auto* const record = dynamic_cast<TRecord*>(data.get());
    if (record == nullptr) // a phantom of that name
        return;
    record->*table = CRekeying(creator, model.modelName(), geometrySide).rekeyed(record->*table);
    model.setParamData(*record);
}

void rekeyPairTables(CCreatorData& creator, CPhysicsModels::Chain& chain, bool geometrySide)
{
    for (const auto& model : chain) {
        const QString name = model->modelName();
        if (name == QLatin1String("Linear Cohesion"))
            rekeyRecord(creator, *model, &CCohesionContactModelParamData::energyDensity, geometrySide);
        else if (name == QLatin1String("Hysteretic Spring"))
            rekeyRecord(creator, *model, &CHystereticContactModelParamData::interactions, geometrySide);
        else if (name == QLatin1String("Hertz-Mindlin with JKR"))
            rekeyRecord(creator, *model, &CJkrContactModelParamData::surfaceEnergy, geometrySide);
        else if (name == QLatin1String("Hertz-Mindlin with bonding"))
            rekeyRecord(creator, *model, &CParallelBondContactModelParamData::bondParameters, geometrySide);
    }
}

} // namespace NBrenmark::NLegacySupport
