// The chains of contact models and the external forces, in order. Their parameters are in physics_parameters.cpp.
#include "physics/physics_models.h"
#include "core/log.h"
#include "core/shortened.h"
#include "physics/phantoms.h"
#include "xml/serialisers.h"

namespace NBrenmark {

static const char* const contactModelTag = "contact_model";
static const char* const externalForceTag = "external_force";

// ---------------------------------------------------------------- writing

/// A model's own attributes follow those that all models have; then its tables come as children.
void CXmlWriter::writePhysicsModels(const CPhysicsModels& physics)
{
    out().element("contact_models", [&] {
        for (const CPhysicsModels::Chain* chain : {&physics.sphereSphereModels, &physics.sphereGeometryModels})
            for (const std::unique_ptr<IContactModel>& model : *chain)
                out().element(contactModelTag, [&] {
                    out().attribute("id", model->modelName());
                    out().attribute("type", model->modelType); // EContactModelType
                    out().attribute("source", model->source);  // EModelSource
                    model->write(*this);
                });
    });
    out().element("external_forces", [&] {
        for (const std::unique_ptr<IExternalForce>& force : physics.externalForces)
            out().element(externalForceTag, [&] {
                out().attribute("id", force->modelName());
                out().attribute("source", force->source); // EModelSource
                force->write(*this);
            });
    });
}

// ---------------------------------------------------------------- reading

namespace {

/// Models whose place other models have taken: documents may still hold them.
bool isDropped(const QString& name)
{
    return name == QLatin1String("Hertz-Mindlin with heat conduction") || name == QLatin1String("Temperature Update");
}

void reportDropped(const char* noun, const QString& name)
{
    report(eNotCarried, NLogTitle::xmlImport,
           std::string("The ") + noun + " \"" + shortened(name) + "\" is no longer supported and is left out.", 1,
           shortened(name));
}

/// A model that isn't known keeps its name and place.
template <class TPhantom, class TModel>
void reportUnknown(const char* noun, const TModel& model)
{
    if (dynamic_cast<const TPhantom*>(&model) != nullptr)
        report(eRemark, NLogTitle::xmlImport,
               std::string("The ") + noun + " \"" + shortened(model.modelName()) +
                   "\" isn't known here; its name and its place are kept.",
               1, shortened(model.modelName()));
}

quint32 sourceOf(const CXmlAttributes& attributes)
{
    constexpr quint32 builtInFirst = 2; // then a plug-in
    return attributes.has("source") ? attributes.count("source") : builtInFirst;
}

class CPhysicsModelsPart : public CXmlPart<CPhysicsModels>
{
public:
    explicit CPhysicsModelsPart(CPhysicsModels& physics) : CXmlPart(physics), loading(physics) {}

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions& options) override
    {
        if (attributes.is("physics_models")) {
            model = nullptr;
            force = nullptr;
            object.clear();
            return true;
        }
        if (attributes.is("contact_models") || attributes.is("external_forces"))
            return true;
        if (attributes.is(contactModelTag)) {
            beginModel(attributes, options);
            return true;
        }
        if (attributes.is(externalForceTag)) {
            beginForce(attributes, options);
            return true;
        }
        CXmlReader reader(attributes, options);
        if (force != nullptr)
            force->read(reader);
        else if (model != nullptr)
            model->read(reader);
        return reader.isTaken || isLeftOut;
    }
    void endDomElement(const QString& tagName, const CXmlIoOptions&) override
    {
        if (tagName != QLatin1String(contactModelTag) && tagName != QLatin1String(externalForceTag))
            return;
        model = nullptr;
        force = nullptr;
        isLeftOut = false;
    }

private:
    void beginModel(const CXmlAttributes& attributes, const CXmlIoOptions& options)
    {
        force = nullptr;
        model = nullptr;
        const QString name = repairedModelName(attributes.text("id"));
        isLeftOut = isDropped(name);
        if (isLeftOut) {
            reportDropped("contact model", name);
            attributes.passOver();
            return;
        }
        std::unique_ptr<IContactModel> made =
            object.makeContactModel(name, attributes.count("type"), sourceOf(attributes), true);
        reportUnknown<CContactModelPhantom>("contact model", *made);
        CXmlReader reader(attributes, options);
        made->read(reader);
        const quint32 modelType = made->modelType;
        if (object.addContactModel(std::move(made), CPhysicsModels::atEnd)) // refused, it is reported and left out
            model = object.chain(modelType).back().get();
        isLeftOut = model == nullptr;
    }

    void beginForce(const CXmlAttributes& attributes, const CXmlIoOptions& options)
    {
        force = nullptr;
        model = nullptr;
        const QString name = attributes.text("id");
        isLeftOut = isDropped(name);
        if (isLeftOut) {
            reportDropped("external force", name);
            attributes.passOver();
            return;
        }
        std::unique_ptr<IExternalForce> made = object.makeExternalForce(name, sourceOf(attributes), true);
        if (made == nullptr) { // the word for no force
            attributes.passOver();
            return;
        }
        reportUnknown<CExternalForcePhantom>("external force", *made);
        CXmlReader reader(attributes, options);
        made->read(reader);
        if (object.addExternalForce(std::move(made), CPhysicsModels::atEnd))
            force = object.externalForces.back().get();
        isLeftOut = force == nullptr;
    }

    const CPhysicsModels::CLoading loading;
    IContactModel* model = nullptr;  ///< that the next elements are of; not owned
    IExternalForce* force = nullptr; ///< likewise
    bool isLeftOut = false;          ///< the model around the next elements, which go with it
};

} // namespace

std::unique_ptr<CXmlSerialiser> physicsModelsPart(CPhysicsModels& physics)
{
    return std::make_unique<CPhysicsModelsPart>(physics);
}

} // namespace NBrenmark
