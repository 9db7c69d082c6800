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
#include "model/kinematics/ang_vel_and_pos.h"
#include "model/kinematics/conveyor_rotation.h"
#include "model/kinematics/conveyor_translation.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"
#include "model/particle_template.h"
#include "physics/parameter_records.h"
#include "results/timestep_data.h"
#include "visitors/stored_types.h"

#include <memory>

namespace NBrenmark {

/// A deck's model, around whatever a sample needs: managers with properties that are finalized and
/// one after them that is tentative.
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
#include "visitors/stored_classes.def"

/// The parameters of a built-in model.
void fill(IContactModel& model);
void fill(IExternalForce& force);

/// A part of a model, which lives as long as that.
template <class T>
std::shared_ptr<T> partOf(T& part)
{
    return std::shared_ptr<T>(&part, [](T*) {});
}

template <class T, class... TKinds>
constexpr bool isAnyOf = (std::is_same_v<T, TKinds> || ...);

/// A new object of a class; of those that live in a model only, the one of that model.
template <class T>
std::shared_ptr<T> blank([[maybe_unused]] SModel& model)
{
    if constexpr (isAnyOf<T, CCreatorData, CSimulationData>)
        return partOf<T>(model.creator);
    else if constexpr (isAnyOf<T, CTimestepData>)
        return partOf(model.timestep);
    else if constexpr (isAnyOf<T, CParticleTypes>)
        return partOf(model.timestep.particleTypes);
    else if constexpr (isAnyOf<T, GeometryGroups>)
        return partOf(model.creator.geometryGroups);
    else if constexpr (isAnyOf<T, CContacts>)
        return partOf(model.timestep.contacts);
    else if constexpr (isAnyOf<T, CContactsBase>)
        return partOf<T>(model.timestep.contacts.surfaceSurface);
    else if constexpr (isAnyOf<T, CCollisionsBase>)
        return partOf<T>(model.timestep.collisions.surfaceSurface);
    else if constexpr (isAnyOf<T, CBondsBase>)
        return partOf<T>(model.timestep.bonds.surfaceSurface);
    else if constexpr (isAnyOf<T, CParticleType>)
        return std::make_shared<T>(&model.particle);
    else if constexpr (isAnyOf<T, CGeometryGroup, CBox, CCylinder, CPolygon, CCADGeometry>)
        return std::make_shared<T>(&model.geometry);
    else if constexpr (isAnyOf<T, CCustomPropertyValueList, CCustomPropertyData>) {
        std::shared_ptr<T> values;
        if constexpr (isAnyOf<T, CCustomPropertyData>)
            values = std::make_shared<T>(&model.particle);
        else
            values = std::make_shared<T>(*model.particle.property(0u), false);
        values->resize(3);
        return values;
    }
    else if constexpr (isAnyOf<T, CParticleFactory, CStaticParticleFactory, CDynamicParticleFactory>) {
        using TKind = std::conditional_t<isAnyOf<T, CParticleFactory>, CStaticParticleFactory, T>;
        auto factory = std::make_shared<TKind>();
        factory->name = "Feeder";
        factory->connectCustomProperties(&model.particle);
        return factory;
    }
    // Of an abstract class, one of its kinds.
    else if constexpr (isAnyOf<T, ISizeDistribution>)
        return std::make_shared<CRandomSizeDistribution>();
    else if constexpr (isAnyOf<T, C3DLattice>)
        return std::make_shared<CFCCFactoryPosition>();
    else if constexpr (isAnyOf<T, CTimeDepAction>)
        return std::make_shared<CLinearTranslation>();
    else if constexpr (isAnyOf<T, CRotation>)
        return std::make_shared<CSinusoidalRotation>();
    else if constexpr (isAnyOf<T, CBlockLink>)
        return std::make_shared<T>(nullptr);
    else if constexpr (std::is_default_constructible_v<T>)
        return std::make_shared<T>();
    else // parameters start from the type of their model
        return std::make_shared<T>(quint32(eSphereSphereModel));
}

template <class T>
std::shared_ptr<T> sample(SModel& model)
{
    std::shared_ptr<T> object = blank<T>(model);
    fill(*object);
    return object;
}

} // namespace NBrenmark
