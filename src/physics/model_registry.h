#pragma once
// Contact models and external forces by their names: what there is, and how one is made. Models of plug-in libraries
// are made by physics/plugins, and only while a CPluginBinding lives.

#include "physics/contact_model.h"
#include "physics/external_force.h"

#include <memory>
#include <typeinfo>
#include <vector>

namespace NBrenmark {

class IPhysicsOwner;

/// What a model answers to chainRole and chainPosition, as plain numbers.
struct SContactModelKind
{
    const char* name;      ///< what modelName answers
    const char* olderName; ///< makes the same class; null if there is none
    quint32 chainRole;
    quint32 chainPosition;
    bool capabilityFlag;
    const std::type_info* type;
    std::unique_ptr<IContactModel> (*make)(quint32 modelType);
};

struct SExternalForceKind
{
    const char* name;
    bool capabilityFlag;
    const std::type_info* type;
    std::unique_ptr<IExternalForce> (*make)(const IPhysicsOwner* deck);
};

/// What answers for a model that isn't built in.
constexpr quint32 foreignChainRole = 3;
constexpr quint32 foreignChainPosition = 2;

/// A chain keeps this one last.
constexpr const char* lastInChain = "Relative Wear";

const std::vector<SContactModelKind>& contactModelKinds();
const std::vector<SExternalForceKind>& externalForceKinds();

/// Makes a contact model by its name, or gives null for a name that isn't known.
/// \param source  EModelSource: the built-in models alone, a plug-in alone, or the one before the other
std::unique_ptr<IContactModel> createContactModel(const QString& name, quint32 modelType, quint32 source);
/// The same for an external force. The name "none" stands for no force.
/// \param deck  that it acts in; not owned, may be null
std::unique_ptr<IExternalForce> createExternalForce(const QString& name, quint32 source, const IPhysicsOwner* deck);

/// The name of a model as early decks spell it, as it is spelled now.
QString repairedModelName(const QString& storedName);

} // namespace NBrenmark
