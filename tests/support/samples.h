#pragma once
// A sample of each stored class: an object whose fields differ from those of a new one. A test that
// walks stored_classes.def asks for them, so that a class without its fill doesn't link.

#include "model/creator_data.h"
#include "physics/parameter_records.h"
#include "results/ang_vel_and_pos.h"
#include "results/timestep_data.h"
#include "visitors/stored_types.h"

#include <memory>

namespace NBrenmark {

/// A deck's model, around whatever a sample needs: managers with properties that are finalized and
/// one behind them that is tentative.
struct SModel
{
    SModel();

    CCustomPropertyManager particle{"Particle Properties", eParticleOwner};
    CCustomPropertyManager contact{"Contact Properties", eContactOwner};
    CCustomPropertyManager geometry{"Geometry Properties", eGeometryOwner};
    CCustomPropertyManager simulation{"Simulation Properties", eSimulationOwner};
    SPropertyManagers managers{&particle, &contact, &geometry, &simulation};
    CCreatorData creator{managers};
    CTimestepData timestep{managers, creator};
};

#define STORED(operation, type, ...) void fill(type& object);
#define PENDING(...)
#include "visitors/stored_classes.def"

/// A new object of a class; of some that live in a model only, the one of that model.
template <class T>
std::shared_ptr<T> blank(SModel&)
{
    if constexpr (std::is_default_constructible_v<T>)
        return std::make_shared<T>();
    else // parameters start from the type of their model
        return std::make_shared<T>(quint32(eSphereSphereModel));
}
template <>
std::shared_ptr<CCreatorData> blank(SModel& model);
template <>
std::shared_ptr<CTimestepData> blank(SModel& model);
template <>
std::shared_ptr<CSimulationData> blank(SModel& model);
template <>
std::shared_ptr<CParticleType> blank(SModel& model);
template <>
std::shared_ptr<CParticleTypes> blank(SModel& model);
template <>
std::shared_ptr<CCustomPropertyValueList> blank(SModel& model);
template <>
std::shared_ptr<CCustomPropertyData> blank(SModel& model);
template <>
std::shared_ptr<CContacts> blank(SModel& model);
template <>
std::shared_ptr<CContactsBase> blank(SModel& model);
template <>
std::shared_ptr<CCollisionsBase> blank(SModel& model);
template <>
std::shared_ptr<CBondsBase> blank(SModel& model);

template <class T>
std::shared_ptr<T> sample(SModel& model)
{
    std::shared_ptr<T> object = blank<T>(model);
    fill(*object);
    return object;
}

} // namespace NBrenmark
