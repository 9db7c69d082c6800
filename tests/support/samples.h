#pragma once
// A sample of each stored class: an object whose fields differ from those of a new one. A test that
// walks stored_classes.def asks for them, so that a class without its fill doesn't link.

#include "model/creator_data.h"
#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_custom_property.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "model/factories/particle_factory_list.h"
#include "model/factories/static_particle_factory.h"
#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/polygon.h"
#include "model/kinematics/conveyor_rotation.h"
#include "model/kinematics/conveyor_translation.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"
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

/// The parameters of a built-in model.
void fill(IContactModel& model);
void fill(IExternalForce& force);

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
template <>
std::shared_ptr<GeometryGroups> blank(SModel& model);
template <>
std::shared_ptr<CGeometryGroup> blank(SModel& model);
template <>
std::shared_ptr<CBox> blank(SModel& model);
template <>
std::shared_ptr<CCylinder> blank(SModel& model);
template <>
std::shared_ptr<CPolygon> blank(SModel& model);
template <>
std::shared_ptr<CCADGeometry> blank(SModel& model);
template <>
std::shared_ptr<CBlockLink> blank(SModel& model);
template <>
std::shared_ptr<CParticleFactory> blank(SModel& model);
template <>
std::shared_ptr<CDynamicParticleFactory> blank(SModel& model);
template <>
std::shared_ptr<CStaticParticleFactory> blank(SModel& model);
// Of an abstract class, one of its kinds.
template <>
std::shared_ptr<ISizeDistribution> blank(SModel& model);
template <>
std::shared_ptr<C3DLattice> blank(SModel& model);
template <>
std::shared_ptr<CTimeDepAction> blank(SModel& model);
template <>
std::shared_ptr<CRotation> blank(SModel& model);

template <class T>
std::shared_ptr<T> sample(SModel& model)
{
    std::shared_ptr<T> object = blank<T>(model);
    fill(*object);
    return object;
}

} // namespace NBrenmark
