#include "physics/physics_models.h"

#include "physics/hertz_mindlin_no_slip.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

std::unique_ptr<IContactModel> createContactModel(const QString& name, quint32 modelType, quint32 source)
{
    if (source == ePluginModel)
        return nullptr;
    if (name == CHertzMindlinNoSlipContactModel::registeredName)
        return std::make_unique<CHertzMindlinNoSlipContactModel>(modelType);
    return nullptr;
}

CPhysicsModels::CPhysicsModels() { resetToDefaults(); }

void CPhysicsModels::read(IFileVisitorReader& v) { v.readPhysicsModels(*this); }

void CPhysicsModels::write(IFileVisitorWriter& v) const { v.writePhysicsModels(*this); }

void CPhysicsModels::clear()
{
    sphereSphereModels.clear();
    sphereGeometryModels.clear();
}

void CPhysicsModels::resetToDefaults()
{
    clear();
    sphereSphereModels.push_back(std::make_unique<CHertzMindlinNoSlipContactModel>(eSphereSphereModel));
    sphereGeometryModels.push_back(std::make_unique<CHertzMindlinNoSlipContactModel>(eSphereGeometryModel));
}

IContactModel* CPhysicsModels::findModel(const Chain& chain, const QString& name)
{
    for (const std::unique_ptr<IContactModel>& model : chain)
        if (model->modelName() == name)
            return model.get();
    return nullptr;
}

} // namespace NBrenmark
