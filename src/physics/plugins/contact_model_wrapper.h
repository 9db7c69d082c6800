#pragma once
// A contact model of a customer's library. To a deck it is a model like any other that has no parameters of its own; to
// a solver it is the library's force law. There is one class for each interface version, in the files beside this one.

#include "physics/contact_model.h"
#include "physics/plugins/plugin_errors.h"
#include "platform/omp_lock.h"

#include <QLibrary>

#include <memory>
#include <string>

namespace NBrenmark::NApiCm {

class IPluginContactModelWrapper : public CNothingToEdit<IContactModel>
{
public:
    /// \param modelType  EContactModelType
    explicit IPluginContactModelWrapper(quint32 modelType) : CNothingToEdit(modelType, ePluginModel) {}

    QString modelName() const override { return QString::fromStdString(name); }
    quint32 chainRole() const override;
    quint32 chainPosition() const override;
    bool capabilityFlag() const override { return false; }
    void write(IFileVisitorWriter& /*visitor*/) const override {}
    void read(IFileVisitorReader& /*visitor*/) override {}

    /// Binds the wrapper to a loaded library; one that was bound before is unloaded.
    /// \param pluginName  under which the deck has it
    /// \return false, with the reason logged, if the library lacks something or refuses
    virtual bool setupPlugin(std::unique_ptr<QLibrary> loaded, const std::string& pluginName) = 0;
    /// Lets go of what the library made. \return the library; null the second time
    virtual std::unique_ptr<QLibrary> unloadPlugin() = 0;
    /// The library that is bound, or null.
    QLibrary* library() const { return boundLibrary.get(); }

protected:
    /// What every setupPlugin begins with.
    void takeLibrary(std::unique_ptr<QLibrary> loaded, const std::string& pluginName);
    /// "Sphere To Sphere", "Sphere To Geometry".
    QString label() const;
    /// Reports a failure of the work call. \return whether the solver goes on
    bool reportResult(int result);

    std::unique_ptr<QLibrary> boundLibrary;
    std::string name;           ///< base name of the file
    std::string preferenceFile; ///< path; empty without one
    mutable CPluginErrors errors;
    COmpLock apiLock; ///< around calls into a library that isn't thread-safe
};

} // namespace NBrenmark::NApiCm
