#pragma once
// What stands for a contact model or an external force that can't be made here: it keeps the name and
// the place, so that the deck can be opened and stored again. It holds no parameters, and a deck that is
// written with it stores none.

#include "physics/contact_model.h"
#include "physics/external_force.h"

namespace NBrenmark {

class CContactModelPhantom : public CNothingToEdit<IContactModel>
{
public:
    CContactModelPhantom(const QString& name, quint32 modelType, quint32 source);

    QString modelName() const override { return QString::fromStdString(name); }
    quint32 chainRole() const override;
    quint32 chainPosition() const override;
    bool capabilityFlag() const override { return false; }
    RequiredProperties requiredProperties(unsigned int /*ownerType*/) const override { return {}; }
    bool calculateForce(SContact& /*contact*/) override { return true; }
    void write(IFileVisitorWriter& /*visitor*/) const override {}
    void read(IFileVisitorReader& /*visitor*/) override {}

    std::string name;
};

class CExternalForcePhantom : public CNothingToEdit<IExternalForce>
{
public:
    CExternalForcePhantom(const QString& name, quint32 source);

    QString modelName() const override { return QString::fromStdString(name); }
    bool capabilityFlag() const override { return false; }
    RequiredProperties requiredProperties(unsigned int /*ownerType*/) const override { return {}; }
    bool calculateForce(SParticleForce& /*particle*/) override { return true; }
    void write(IFileVisitorWriter& /*visitor*/) const override {}
    void read(IFileVisitorReader& /*visitor*/) override {}

    std::string name;
};

} // namespace NBrenmark
