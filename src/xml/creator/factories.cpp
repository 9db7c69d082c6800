// The particle factories of a geometry group: "dynamic" or "static" under "factories", with an element for each
// parameter that the factory has.

#include "xml/factories.h"
#include "core/log.h"
#include "core/shortened.h"
#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "model/factories/particle_factory_list.h"
#include "model/factories/static_particle_factory.h"

namespace NBrenmark {

// ---------------------------------------------------------------- what all factories have

template <class TForm, class TFactory>
static void factoryForm(TForm& f, TFactory& factory)
{
    f.attribute("created", factory.creationCount);             // particles so far
    f.attribute("max_attempts_to_place", factory.maxAttempts); // of one particle
}

void CXmlReader::readParticleFactory(CParticleFactory& factory) { factoryForm(in(), factory); }
void CXmlWriter::writeParticleFactory(const CParticleFactory& factory) { factoryForm(out(), factory); }

template <class TForm, class TAccounting>
static void accountingForm(TForm& f, TAccounting& accounting)
{
    f.attribute("created_total", accounting.massCreated);               // kg
    f.attribute("prev_timestep_remainder", accounting.massRemainder);   // kg
    f.attribute("created_last_change", accounting.massSinceRateChange); // kg
}

void CXmlReader::readFactoryAccounting(CFactoryAccounting& accounting) { accountingForm(in(), accounting); }
void CXmlWriter::writeFactoryAccounting(const CFactoryAccounting& accounting) { accountingForm(out(), accounting); }

// ---------------------------------------------------------------- the two kinds

/// "generation_type" of a dynamic factory.
enum EDynamicGoal : qint32
{
    eUnlimitedGoal = 1,
    eMassGoal = 2,
    eNumberGoal = 3
};

static const char* const goalName = "generation_type";
static const char* const massName = "total_mass"; // kg
static const char* const numberName = "number";   // of particles
static const char* const unlimitedWord = "unlimited";

void CXmlReader::readDynamicParticleFactory(CDynamicParticleFactory& factory)
{
    in().attribute("rate", factory.creationRate);              // 1/s or kg/s
    in().attribute("start", factory.creationTime);             // s
    in().attribute("rate_changed_at", factory.rateChangeTime); // s
    factory.changeCreationRate(factory.creationRate, factory.rateChangeTime);
    in().attribute("number_generated_since_rate_change", factory.createdSinceRateChange);
    attributes.know(numberName);
    const qint32 goal = attributes.integer(goalName);
    factory.massCreation = goal == eMassGoal;
    in().attribute(massName, factory.massToCreate);
    factory.unlimited = goal == eUnlimitedGoal || attributes.text(numberName) == QLatin1String(unlimitedWord);
    if (!factory.unlimited)
        in().attribute(numberName, factory.numToCreate);
    in().flag("generation_rate", factory.massGeneration);
}

void CXmlWriter::writeDynamicParticleFactory(const CDynamicParticleFactory& factory)
{
    out().attribute("rate", factory.creationRate);
    out().attribute("start", factory.creationTime);
    out().attribute("rate_changed_at", factory.rateChangeTime);
    out().attribute("number_generated_since_rate_change", factory.createdSinceRateChange);
    const EDynamicGoal goal = factory.unlimited ? eUnlimitedGoal : factory.massCreation ? eMassGoal : eNumberGoal;
    out().attribute(goalName, static_cast<qint32>(goal));
    out().attribute(massName, factory.massToCreate);
    if (factory.unlimited)
        out().attribute(numberName, unlimitedWord);
    else
        out().attribute(numberName, factory.numToCreate);
    out().flag("generation_rate", factory.massGeneration);
}

static const char* const fillWord = "fill_shape";

void CXmlReader::readStaticParticleFactory(CStaticParticleFactory& factory)
{
    in().word("already_created_particles", factory.completed, "yes", "no");
    in().attribute("creation_time", factory.creationTime); // s
    in().flag(goalName, factory.massCreation);             // else a number of particles
    in().attribute(massName, factory.massToCreate);
    attributes.know(fillWord);
    factory.fillShape = attributes.text(numberName) == QLatin1String(fillWord) || attributes.flag(fillWord);
    if (!factory.fillShape)
        in().attribute(numberName, factory.numToCreate);
}

void CXmlWriter::writeStaticParticleFactory(const CStaticParticleFactory& factory)
{
    out().word("already_created_particles", factory.completed, "yes", "no");
    out().attribute("creation_time", factory.creationTime);
    out().flag(goalName, factory.massCreation);
    out().attribute(massName, factory.massToCreate);
    if (factory.fillShape)
        out().attribute(numberName, fillWord);
    else
        out().attribute(numberName, factory.numToCreate);
    out().flag(fillWord, factory.fillShape);
}

// ---------------------------------------------------------------- all factories of a group

static const char* const kindName = "type";
static const char* const typeName = "particle_type";
static const char* const sizeLawTag = "size_distribution_params"; // of the size before it in old documents
static const char* const sizeBandTag = "band";

void CXmlWriter::writeParameter(const QString& tag, const IFactoryParameter* parameter, const QString& particleType)
{
    if (parameter == nullptr)
        return;
    out().element(tag, [&] {
        out().attribute(kindName, parameter->kindWord());
        if (!particleType.isNull())
            out().attribute(typeName, particleType);
        parameter->write(*this);
    });
}

void CXmlWriter::writeParticleFactoryList(const CParticleFactoryList& list)
{
    out().element("factories", [&] {
        for (const std::unique_ptr<CParticleFactory>& held : list.factories) {
            const CParticleFactory& factory = *held;
            out().element(factory.typeWord(), [&] {
                out().attribute("name", factory.name);
                factory.write(*this);
                writeParameter("velocity", factory.velocity.get());
                if (!factory.sizes.empty())
                    out().element("sizes", [&] {
                        for (const auto& [particleType, size] : factory.sizes)
                            writeParameter("size", size.get(), particleType);
                    });
                writeParameter("orientation", factory.orientation.get());
                writeParameter("angvel", factory.angVel.get());
                writeParameter("factory_template", factory.type.get());
                writeParameter("position", factory.position.get());
                out().element("accounting", [&] { factory.accounting.write(*this); });
            });
        }
    });
}

// ---------------------------------------------------------------- reading

/// \param parameter  of the factory, where setKind puts one of the kind that it is given
template <class TFamily, class TSetKind>
static void readParameter(const CXmlAttributes& attributes, const CXmlIoOptions& options,
                          const CParticleFactory& factory, const std::unique_ptr<TFamily>& parameter,
                          TSetKind&& setKind)
{
    const QString kind = attributes.text(kindName);
    if (!CKindRegistry<TFamily>::instance().knows(kind)) {
        attributes.passOver();
        report(eLost, NLogTitle::xmlImport,
               "A parameter \"" + shortened(attributes.tag()) + "\" of the particle factory \"" +
                   shortened(factory.name) + "\" is skipped: no kind \"" + shortened(kind) + "\" is known.",
               1, shortened(factory.name));
        return;
    }
    setKind(kind);
    CXmlReader reader(attributes, options);
    parameter->read(reader);
}

bool CXmlFactories::begin(CParticleFactoryList& list, const CXmlAttributes& attributes, const CXmlIoOptions& options)
{
    std::unique_ptr<CParticleFactory> made = createFactory(attributes.tag(), attributes.text("name"));
    if (made == nullptr)
        return false;
    openAt(&list.add(std::move(made)));
    CXmlReader reader(attributes, options);
    current->read(reader);
    return true;
}

void CXmlFactories::openAt(CParticleFactory* factory)
{
    current = factory;
    oldSize.reset();
    size = nullptr;
}

/// A size, with its law in its own attributes or, in old documents, in an element of its own.
bool CXmlFactories::readSize(const CXmlAttributes& attributes, const CXmlIoOptions& options)
{
    const bool isBanded = dynamic_cast<CUserDefinedFactorySize*>(size) != nullptr;
    if ((attributes.is(sizeLawTag) && size != nullptr) || (attributes.is(sizeBandTag) && isBanded)) {
        CXmlReader reader(attributes, options);
        size->distribution().read(reader);
        return true;
    }
    if (!attributes.is("size") && !attributes.is(sizeLawTag))
        return false;
    const QString name = attributes.text(typeName);
    const bool isByType = options.version >= NDocumentVersion::sizesByType;
    std::unique_ptr<IFactorySize>& held = isByType ? current->sizes[name] : oldSize;
    readParameter(attributes, options, *current, held,
                  [&held](const QString& kind) { held = CKindRegistry<IFactorySize>::instance().create(kind); });
    size = held.get();
    if (size != nullptr && attributes.is(sizeLawTag)) {
        CXmlReader reader(attributes, options);
        size->distribution().read(reader);
    }
    if (isByType && size == nullptr)
        current->sizes.erase(name);
    return true;
}

bool CXmlFactories::startDomElement(CParticleFactoryList& list, const CXmlAttributes& attributes,
                                    const CXmlIoOptions& options)
{
    if (attributes.is("factories"))
        return true;
    if (begin(list, attributes, options))
        return true;
    if (current == nullptr)
        return false;
    CParticleFactory& factory = *current;
    const auto read = [&](const auto& parameter, auto&& setKind) {
        readParameter(attributes, options, factory, parameter, setKind);
        return true;
    };
    if (attributes.is("velocity"))
        return read(factory.velocity, [&](const QString& kind) { factory.setVelocityKind(kind); });
    if (attributes.is("orientation"))
        return read(factory.orientation, [&](const QString& kind) { factory.setOrientationKind(kind); });
    if (attributes.is("angvel"))
        return read(factory.angVel, [&](const QString& kind) { factory.setAngVelKind(kind); });
    if (attributes.is("factory_template"))
        return read(factory.type, [&](const QString& kind) { factory.setTypeKind(kind, nullptr); });
    if (attributes.is("position"))
        return read(factory.position, [&](const QString& kind) { factory.setPositionKind(kind); });
    if (readSize(attributes, options))
        return true;
    if (attributes.is("accounting")) {
        CXmlReader reader(attributes, options);
        factory.accounting.read(reader);
        return true;
    }
    return attributes.is("sizes");
}

void CXmlFactories::endDomElement(const QString& tagName)
{
    if (current == nullptr || tagName != current->typeWord())
        return;
    // One size for all types, in documents that know no other.
    if (oldSize != nullptr && current->type != nullptr)
        for (const QString& name : current->type->typeNames())
            current->sizes[name] = oldSize->clone();
    openAt(nullptr);
}

} // namespace NBrenmark
