#pragma once
// The state of a simulation at one saved time. State of objects that belong to the model, such as
// geometry, stays on those objects: a timestep is whole only together with its creator model.

#include "core/save_options.h"
#include "model/particle_types.h"
#include "model/simulation_data.h"
#include "results/bonds.h"
#include "results/collisions.h"
#include "results/contacts.h"
#include "results/energies.h"
#include "visitors/attribute_retrieval.h"

#include <QMap>

#include <functional>
#include <memory>

namespace NBrenmark {

class CCreatorData;

class CTimestepData : public CSimulationData, public IAttributeRetrieval
{
    Q_OBJECT
public:
    static constexpr quint32 noTimestep = 0xFFFFFFFFu;

    /// \param managers  of the deck's custom properties; not owned
    /// \param creator   the model that the timestep belongs to
    CTimestepData(const SPropertyManagers& managers, CCreatorData& creator);

    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) override;

    bool getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                  quint32 row) const override;
    NAttributes::EAttributeOwner attributeOwner() const override { return NAttributes::eSimulationAttribute; }

    /// Before each read into the frame. isFull, the masks, time and date stay; a read overwrites them.
    void clear() override;

    /// Moves the charges that an old file stores beside the particles and the triangles of the geometry into the
    /// properties "Charge" and "Electrostatic Force". Values that the file holds of those are never overwritten, and charges that
    /// have nowhere to go are reported.
    void rebuildChargeProperties();
    /// Has the table of attributes made anew, and all owners of values look names up in it: after each read, of a
    /// document too, and after each write. Without a maker there is none, and names give nothing.
    void rebuildAttributes();
    /// Brings a timestep in order whose parts were all read, and reports what that took: types get the gravity of the
    /// model, contacts with an end that isn't in the particle store or the geometry are released, bonds get their
    /// parameters.
    void settle(const SLogTitle& title);
    /// The same where the particles are all that was read.
    void settleParticles();

    double time = 0.0;        ///< simulated, s
    double elapsedTime = 0.0; ///< real, s
    qint32 runNumber = 0;
    QString date; ///< "dd/MM/yy" of the last writing
    CParticleTypes particleTypes;
    CContacts contacts;
    CBonds bonds;
    CCollisions collisions;
    CCreatorData& creatorData;
    CSystemEnergy systemEnergy;
    QMap<QString, quint32> removedParticles; ///< per particle type name
    bool isFull = true;
    quint32 timestepMask = defaultTimestepMask; ///< what this timestep holds
    quint32 particleMask = defaultParticleMask;
    quint32 geometryMask = defaultGeometryMask;
    CCustomPropertyData simulationProperties; ///< always one item
    quint32 timestepIndex = noTimestep;       ///< number of the loaded timestep
    /// Makes the table for rebuildAttributes; the timestep outlives it. Attributes know results, not the other way.
    std::function<std::unique_ptr<NAttributes::IAttributeTable>(const CTimestepData&)> attributeMaker;

private:
    std::unique_ptr<NAttributes::IAttributeTable> attributeTable; ///< that the owners look at
    /// Releases the contacts with an end that isn't there. \return how many live ones were lost by that
    quint32 removeDanglingContacts();
    /// Gives the bonds the parameters of the model that bonds, if the deck has one. One without breaks at this time.
    /// \return what became of those that it has none for
    SUnmatchedBonds matchBondParameters();
};

} // namespace NBrenmark
