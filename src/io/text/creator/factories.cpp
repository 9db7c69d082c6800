// The text of particle factories, a path segment for each name. Models and timesteps share it, so that what moved
// between the two shows.
#include "io/text/text_writer.h"
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

#include <algorithm>

namespace NBrenmark {

// Counts and accounts, and how far parameters have come, are state.

void CTextWriter::writeParticleFactoryList(const CParticleFactoryList& list)
{
    // By name: one family knows no other order.
    std::vector<const CParticleFactory*> factories;
    for (const auto& factory : list.factories)
        factories.push_back(factory.get());
    std::stable_sort(factories.begin(), factories.end(),
                     [](const CParticleFactory* a, const CParticleFactory* b) { return a->name < b->name; });
    CListSegments segments;
    for (const CParticleFactory* factory : factories)
        out.group(segments.next(factory->name), [&] {
            if (covers(ETextPart::eDefinition)) {
                out.value("name", factory->name);
                out.value("kind", factory->typeWord());
            }
            factory->write(*this);
        });
}

void CTextWriter::writeParticleFactory(const CParticleFactory& f)
{
    if (covers(ETextPart::eDefinition))
        out.value("maxAttempts", f.maxAttempts); // to place one particle
    if (covers(ETextPart::eState)) {
        out.value("creationCount", f.creationCount);                                       // particles so far
        out.array("counters", std::vector<quint32>(f.counters.begin(), f.counters.end())); // the solver's
        out.group("accounting", [&] { f.accounting.write(*this); });
    }
    const auto parameter = [this](const std::string& segment, const IFactoryParameter* held) {
        out.group(segment, [&] {
            if (covers(ETextPart::eDefinition))
                out.value("kind", held != nullptr ? held->kindWord() : QString());
            if (held != nullptr)
                held->write(*this);
        });
    };
    parameter("velocity", f.velocity.get());
    out.group("sizes", [&] {
        for (const auto& [typeName, size] : f.sizes)
            parameter(NText::segment(typeName), size.get());
    });
    parameter("orientation", f.orientation.get());
    parameter("angularVelocity", f.angVel.get());
    parameter("type", f.type.get());
    parameter("position", f.position.get());
    out.group("customProperties", [&] {
        CListSegments segments;
        for (const auto& [id, param] : f.customParams)
            if (param != nullptr && param->property() != nullptr)
                parameter(segments.next(param->property()->name), param.get());
    });
}

void CTextWriter::writeDynamicParticleFactory(const CDynamicParticleFactory& f)
{
    if (covers(ETextPart::eDefinition)) {
        out.value("unlimited", f.unlimited);
        out.value("massCreation", f.massCreation);
        out.value("massGeneration", f.massGeneration); // the rate is of mass
        out.value("creationRate", f.creationRate);     // 1/s, or kg/s of a rate of mass
        out.value("creationTime", f.creationTime);     // s
        out.value("rateChangeTime", f.rateChangeTime); // s
        out.value("numToCreate", f.numToCreate);       // particles
        out.value("massToCreate", f.massToCreate);     // kg
    }
    if (covers(ETextPart::eState)) {
        out.value("createdSinceRateChange", f.createdSinceRateChange); // particles
        out.group("typeAccounting", [&] {
            for (const auto& [typeName, account] : f.typeAccounting)
                out.group(NText::segment(typeName), [this, &held = account] { held.write(*this); });
        });
    }
}

void CTextWriter::writeStaticParticleFactory(const CStaticParticleFactory& f)
{
    if (covers(ETextPart::eDefinition)) {
        out.value("fillShape", f.fillShape);
        out.value("massCreation", f.massCreation);
        out.value("creationTime", f.creationTime); // s
        out.value("numToCreate", f.numToCreate);   // particles
        out.value("massToCreate", f.massToCreate); // kg
    }
    if (covers(ETextPart::eState))
        out.value("completed", f.completed);
}

void CTextWriter::writeFactoryAccounting(const CFactoryAccounting& a)
{
    out.value("massCreated", a.massCreated);                 // kg
    out.value("massRemainder", a.massRemainder);             // kg
    out.value("massSinceRateChange", a.massSinceRateChange); // kg
}

} // namespace NBrenmark
