// The tables of built-in models and forces by name, with the names of old decks; what is in none of them may be a
// plug-in's.
#include "physics/model_registry.h"

#include "physics/hertz_mindlin_rvd_rolling_friction.h"
#include "physics/parameter_records.h"
#include "physics/phantoms.h"
#include "physics/plugins/contact_models.h"
#include "physics/plugins/external_forces.h"
#include "physics/relative_wear.h"

namespace NBrenmark {

// ---------------------------------------------------------------- the tables

template <class TModel>
static SContactModelKind model(const char* name, const char* olderName, quint32 role, quint32 position, bool capability)
{
    return {name,
            olderName,
            role,
            position,
            capability,
            &typeid(TModel),
            [](quint32 modelType) -> std::unique_ptr<IContactModel> { return std::make_unique<TModel>(modelType); }};
}

const std::vector<SContactModelKind>& contactModelKinds()
{
    // clang-format off
    static const std::vector<SContactModelKind> kinds = {
        //                                    name, older name                                        role, position, capability
        model<CHertzMindlinNoSlipContactModel>("Hertz-Mindlin (no slip)", nullptr,                           0, 1, true),
        model<CHertzMindlinRVDCTContactModel> ("Hertz-Mindlin (no slip) with RVD Rolling Friction", nullptr, 0, 1, false),
        model<CLinearSpringContactModel>      ("Linear Spring", nullptr,                                     0, 1, false),
        model<CJkrContactModel>               ("Hertz-Mindlin with JKR", nullptr,                            0, 1, true),
        model<CHeatConductionModel>           ("Hertz-Mindlin with heat conduction", nullptr,                0, 1, true),
        model<CArchardContactModel>           ("Hertz-Mindlin with Archard Wear", nullptr,                   0, 1, false),
        model<CParallelBondContactModel>      ("Hertz-Mindlin with bonding", "Bonding and Hertz-Mindlin",    0, 1, false),
        model<CHystereticContactModel>        ("Hysteretic Spring", nullptr,                                 0, 1, false),
        model<CEdinburghCohesionContactModel> ("Edinburgh Elasto-Plastic Adhesion", nullptr,                 0, 1, true),
        model<CLeedsAdhesionContactModel>     ("Leeds Elastic-Plastic Adhesion", nullptr,                    0, 1, true),
        model<CCohesionContactModel>          ("Linear Cohesion", "Cohesion",                                1, 2, false),
        model<CCohesionV2ContactModel>        ("Linear Cohesion V2", nullptr,                                1, 2, false),
        model<CTribochargingContactModel>     ("Tribocharging", nullptr,                                     1, 2, false),
        model<CMovingPlaneContactModel>       ("Moving Plane", nullptr,                                      1, 0, true),
        model<CRelativeWearContactModel>      (lastInChain, nullptr,                                         2, 1, false),
    };
    // clang-format on
    return kinds;
}

const std::vector<SExternalForceKind>& externalForceKinds()
{
    static const std::vector<SExternalForceKind> kinds = {
        {"Electrostatics", false, &typeid(CElectrostaticsExternalForce),
         [](const IPhysicsOwner* deck) -> std::unique_ptr<IExternalForce> {
             return std::make_unique<CElectrostaticsExternalForce>(deck);
         }},
        {"Temperature Update", true, &typeid(CHeatConductionExternalForce),
         [](const IPhysicsOwner*) -> std::unique_ptr<IExternalForce> {
             return std::make_unique<CHeatConductionExternalForce>();
         }},
    };
    return kinds;
}

// ---------------------------------------------------------------- making

std::unique_ptr<IContactModel> createContactModel(const QString& name, quint32 modelType, quint32 source)
{
    if (source != ePluginModel)
        for (const SContactModelKind& kind : contactModelKinds())
            if (name == QLatin1String(kind.name) ||
                (kind.olderName != nullptr && name == QLatin1String(kind.olderName)))
                return kind.make(modelType);
    return source == eBuiltInModel ? nullptr : NApiCm::bindContactModel(name, modelType);
}

std::unique_ptr<IExternalForce> createExternalForce(const QString& name, quint32 source, const IPhysicsOwner* deck)
{
    if (name == QLatin1String("none"))
        return nullptr;
    if (source != ePluginModel)
        for (const SExternalForceKind& kind : externalForceKinds())
            if (name == QLatin1String(kind.name))
                return kind.make(deck);
    return source == eBuiltInModel ? nullptr : NApiPbf::bindExternalForce(name);
}

QString repairedModelName(const QString& storedName)
{
    return storedName == QLatin1String("hertz-mindlin (no slip)")
               ? QString(CHertzMindlinNoSlipContactModel::registeredName)
               : storedName;
}

// ---------------------------------------------------------------- what the models answer by

template <class TKind>
static const TKind& kindOf(const std::vector<TKind>& kinds, const std::type_info& type)
{
    for (const TKind& kind : kinds)
        if (*kind.type == type)
            return kind;
    throw std::logic_error(std::string("a model without a row in the registry: ") + type.name());
}

QString CBuiltInContactModel::modelName() const { return kindOf(contactModelKinds(), typeid(*this)).name; }

quint32 CBuiltInContactModel::chainRole() const { return kindOf(contactModelKinds(), typeid(*this)).chainRole; }

quint32 CBuiltInContactModel::chainPosition() const { return kindOf(contactModelKinds(), typeid(*this)).chainPosition; }

bool CBuiltInContactModel::capabilityFlag() const { return kindOf(contactModelKinds(), typeid(*this)).capabilityFlag; }

RequiredProperties CBuiltInContactModel::requiredProperties(unsigned int ownerType) const
{
    return requiredPropertiesOf(propertyTable(), ownerType);
}

void CBuiltInContactModel::managerChanged(CCustomPropertyManager& manager, int /*value*/)
{
    indices.resolve(propertyTable(), manager);
}

void CBuiltInExternalForce::managerChanged(CCustomPropertyManager& manager, int /*value*/)
{
    indices.resolve(propertyTable(), manager);
}

QString CBuiltInExternalForce::modelName() const { return kindOf(externalForceKinds(), typeid(*this)).name; }

bool CBuiltInExternalForce::capabilityFlag() const
{
    return kindOf(externalForceKinds(), typeid(*this)).capabilityFlag;
}

RequiredProperties CBuiltInExternalForce::requiredProperties(unsigned int ownerType) const
{
    return requiredPropertiesOf(propertyTable(), ownerType);
}

CContactModelPhantom::CContactModelPhantom(const QString& name, quint32 modelType, quint32 source)
    : CNothingToEdit(modelType, source), name(name.toStdString())
{}

quint32 CContactModelPhantom::chainRole() const { return foreignChainRole; }

quint32 CContactModelPhantom::chainPosition() const { return foreignChainPosition; }

CExternalForcePhantom::CExternalForcePhantom(const QString& name, quint32 source)
    : CNothingToEdit(source), name(name.toStdString())
{}

} // namespace NBrenmark
