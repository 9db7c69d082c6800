#pragma once
// A particle factory: how many particles enter a simulation, when, and with which parameters. The
// solver does the placing and reports its progress in the fields here; the library keeps them.

#include "model/factories/factory_accounting.h"
#include "model/factories/factory_electrostatic.h"
#include "properties/custom_property_manager.h"

#include <array>

namespace NBrenmark {

class CCustomPropertyMetaData;
class CParticleSizeDistributionMap;
class CParticleTypes;
class IFactoryAngVel;
class IFactoryBoundingShape;
class IFactoryOrientation;
class IFactoryPosition;
class IFactorySize;
class IFactoryType;
class IFactoryVelocity;
class IFileVisitorWriter;

/// Bound to a property manager it has one parameter for each custom property of the particles. Its
/// parameters are changed by the operations alone, which keep them bound to one another; each is null
/// until it is set, and after a kind was asked for that doesn't exist.
class CParticleFactory : public IPropertyListener
{
public:
    CParticleFactory();
    /// Leaves the property manager, which must still be there.
    ~CParticleFactory() override;
    CParticleFactory(const CParticleFactory&) = delete;
    CParticleFactory& operator=(const CParticleFactory&) = delete;

    /// The word that files store.
    virtual QString typeWord() const = 0;
    virtual QString displayName() const = 0;
    /// A deep copy that listens to the same property manager. The accounts of factory and types and
    /// what refreshTypes derives start empty.
    virtual std::unique_ptr<CParticleFactory> clone() const = 0;
    /// True when it has created all that it should.
    virtual bool isComplete() const = 0;
    /// The goal is a mass, not a number of particles.
    virtual bool isMassCreation() const = 0;
    /// The rate is a mass for each second; false for a factory that has no rate.
    virtual bool isMassGeneration() const { return false; }
    /// A derived factory reads and writes its own part after this one.
    virtual void read(IFileVisitorReader& visitor);
    virtual void write(IFileVisitorWriter& visitor) const;

    // Parameters: each operation takes an object, or asks for one of the kind of that word. A parameter
    // that is of the kind already stays, with its data. The operations are virtual because a factory
    // from a plug-in may answer some of them by itself.
    virtual void clearSizes();
    virtual void setVelocity(std::unique_ptr<IFactoryVelocity> param);
    virtual void setVelocityKind(const QString& word);
    virtual void setSize(const QString& typeName, std::unique_ptr<IFactorySize> param);
    virtual void setSizeKind(const QString& typeName, const QString& word);
    virtual void setOrientation(std::unique_ptr<IFactoryOrientation> param);
    virtual void setOrientationKind(const QString& word);
    virtual void setAngVel(std::unique_ptr<IFactoryAngVel> param);
    virtual void setAngVelKind(const QString& word);
    virtual void setType(std::unique_ptr<IFactoryType> param);
    virtual void setTypeKind(const QString& word, const CParticleTypes* particleTypes);
    virtual void setPosition(std::unique_ptr<IFactoryPosition> param);
    virtual void setPositionKind(const QString& word);
    virtual void setBoundingShape(IFactoryBoundingShape* shape) { boundingShape = shape; }
    /// Replaces the parameter of a property of the manager.
    /// \return false, with nothing changed, for a property without a parameter or an unknown word
    virtual bool setCustomPropertyKind(const CCustomPropertyMetaData* property, const QString& word);

    /// Derives typeShares and typeIndices from the names of the type parameter. Of types of one name the
    /// last counts; a name that isn't among the types gets neither.
    virtual void refreshTypes(const CParticleTypes& particleTypes, const CParticleSizeDistributionMap& distributions);
    /// A size or account that the new name had before gives way.
    virtual void renameType(const QString& oldName, const QString& newName);

    /// Listens to this manager from now on, and to no other; null for none.
    void connectCustomProperties(CCustomPropertyManager* manager);
    /// Lets go of the parameters of a manager that is being emptied.
    void managerChanged(CCustomPropertyManager& manager, int value) override;
    /// Brings the custom parameters in line with the manager: those of properties that are gone are
    /// deleted, and each new property gets one of fixed values.
    void propertyAdded(CCustomPropertyManager& manager) override;

    QString name;
    QString sectionName;       ///< of the geometry group; set by the list
    quint32 creationCount = 0; ///< particles created so far
    quint32 maxAttempts = 20;  ///< to place one particle
    CFactoryAccounting accounting;
    std::map<QString, CFactoryAccounting> typeAccounting;   ///< by the name of the particle type
    std::map<quint32, double> typeShares;                   ///< by the index of the type, 0 to 1; derived
    std::map<QString, qint32> typeIndices;                  ///< by the name of the type; derived
    std::map<QString, std::unique_ptr<IFactorySize>> sizes; ///< by the name of the type
    std::unique_ptr<IFactoryVelocity> velocity;
    std::unique_ptr<IFactoryOrientation> orientation;
    std::unique_ptr<IFactoryAngVel> angVel;
    std::unique_ptr<IFactoryType> type;
    std::unique_ptr<IFactoryPosition> position;
    IFactoryBoundingShape* boundingShape = nullptr;     ///< what the factory fills, not owned
    CCustomPropertyManager* customProperties = nullptr; ///< of the particles, not owned
    FactoryCustomParams customParams;
    NLegacySupport::CParticleFactoryElectrostatic electrostatic; ///< of old files
    std::array<quint32, 4> counters = {};                        ///< the solver's, kept as they are

protected:
    /// The part of clone that all factories share.
    void copyCommonTo(CParticleFactory& copy) const;

private:
    void bindPosition();
};

/// A factory of that type word and name; null for a word that names none.
std::unique_ptr<CParticleFactory> createFactory(const QString& word, const QString& name);

} // namespace NBrenmark
