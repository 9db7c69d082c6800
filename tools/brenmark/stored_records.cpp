// A record is a run of lines, one a field, with the unit after the value.
#include "brenmark/stored_records.h"

#include "brenmark/deck_text.h"

#include "legacy/old_collisions.h"
#include "legacy/old_contacts.h"
#include "legacy/particle_prototypes.h"
#include "model/creator_data.h"

namespace NBrenmark {

using namespace NLegacySupport;

namespace {

/// The lines of a record, or of a part of it.
class CFields
{
public:
    CFields(ITextSink& sink, std::string path) : sink(sink), path(std::move(path)) {}

    template <class TValue>
    void operator()(const char* name, const TValue& value, const char* unit = "") const
    {
        const std::string text = NText::text(value);
        sink.line(path + '/' + name, *unit == '\0' ? text : text + ' ' + unit);
    }
    CFields part(const std::string& name) const { return {sink, path + '/' + name}; }

private:
    ITextSink& sink;
    std::string path;
};

void forceFields(const CFields& fields, const ForceTorque& force)
{
    fields("force", C3DVector(force[0], force[1], force[2]), "N");
    fields("torque", C3DVector(force[3], force[4], force[5]), "N m");
    fields("compressiveForce", force[6], "N");
}

void endFields(const CFields& fields, const SLegacyParticleSide& end)
{
    fields("particleId", end.particleId);
    fields("element", end.element);
    fields("name", end.name);
    fields("radius", end.radius, "m");
    fields("position", end.position, "m");
    fields("velocity", end.velocity, "m/s");
    fields("orientation", end.orientation);
    fields("angularVelocity", end.angularVelocity, "rad/s");
}

void endFields(const CFields& fields, const SLegacyGeometrySide& end)
{
    fields("triangleId", end.triangleId);
    fields("name", end.name);
    fields("position", end.position, "m");
    fields("velocity", end.velocity, "m/s");
}

template <class TCollision>
void collisionFields(const CFields& fields, const TCollision& collision)
{
    fields("id", collision.id);
    fields("position", collision.position, "m");
    fields("startTime", collision.startTime, "s");
    fields("endTime", collision.endTime, "s");
    fields("iterations", collision.iterations);
    fields("maxNormalForce", collision.maxNormalForce, "N");
    fields("totalNormalForce", collision.totalNormalForce, "N");
    fields("maxTangentialForce", collision.maxTangentialForce, "N");
    fields("totalTangentialForce", collision.totalTangentialForce, "N");
    fields("normalEnergy", collision.normalEnergy, "J");
    fields("shearEnergy", collision.shearEnergy, "J");
    fields("unitCpVector", collision.unitCpVector);
    fields("relativeVelocity", collision.relativeVelocity, "m/s");
    endFields(fields.part("first"), collision.first);
    endFields(fields.part("second"), collision.second);
}

} // namespace

template <class TBody>
void CStoredRecords::record(qint64 byte, TBody&& body)
{
    ++heard;
    if (failure != nullptr || isShown)
        return;
    const std::string root = list == "prototypes" ? modelRoot(number) : timestepRoot(number);
    const CFields fields(sink, "stored/" + root + '/' + list + '/' + std::to_string(next++));
    try {
        fields("byte", static_cast<quint64>(byte));
        body(fields);
    }
    catch (...) {
        failure = std::current_exception();
    }
}

void CStoredRecords::rethrow() const
{
    if (failure != nullptr)
        std::rethrow_exception(failure);
}

void CStoredRecords::begin(const char* name)
{
    // Some versions store all contacts once more after the collisions.
    const auto isOf = [](const std::string& text, const char* kind) { return text.rfind(kind, 0) == 0; };
    const bool again = isOf(list, "collisions/") || isOf(list, "again/");
    list = again && isOf(name, "contacts/") ? std::string("again/") + name : name;
    withGeometry = list.find("surfaceGeometry") != std::string::npos;
    next = 0;
    isShown = list == "prototypes" && !shownModels.emplace(model.storageIndex(), model.storageOffset()).second;
}

void CStoredRecords::hear(const CParticlePrototype& p, qint64 byte)
{
    record(byte, [&](const CFields& fields) {
        fields("name", p.name);
        fields("id", p.id);
        fields("materialName", p.materialName);
        fields("scale", p.scale);
        fields("mass", p.mass, "kg");
        fields("volume", p.volume, "m3");
        fields("inertia", p.inertia, "kg m2");
        fields("position", p.position, "m");
        fields("velocity", p.velocity, "m/s");
        fields("orientation", p.orientation);
        fields("angularVelocity", p.angularVelocity, "rad/s");
        forceFields(fields.part("forceTorque"), p.forceTorque);
        forceFields(fields.part("unscaledForceTorque"), p.unscaledForceTorque);
        forceFields(fields.part("externalForceTorque"), p.externalForceTorque);
        fields("charge", p.charge, "C");
        for (std::size_t i = 0; i < p.customValues.size(); ++i)
            fields.part("customValues")(std::to_string(i).c_str(), p.customValues[i]);
        for (std::size_t i = 0; i < p.elements.size(); ++i) {
            const CFields sphere = fields.part("elements/" + std::to_string(i));
            sphere("name", p.elements[i].name);
            sphere("position", p.elements[i].position, "m");
            sphere("contactRadius", p.elements[i].contactRadius, "m");
            sphere("physicalRadius", p.elements[i].physicalRadius, "m");
        }
    });
}

void CStoredRecords::hear(const SLegacyContact& contact, qint64 byte)
{
    record(byte, [&](const CFields& fields) {
        fields("firstParticleId", contact.firstParticleId);
        fields("firstElement", contact.firstElement);
        if (withGeometry)
            fields("triangleId", contact.triangleId);
        else {
            fields("secondParticleId", contact.secondParticleId);
            fields("secondElement", contact.secondElement);
        }
        fields("position", contact.position, "m");
        fields("contactVector1", contact.contactVector1, "m");
        fields("contactVector2", contact.contactVector2, "m");
        fields("normalOverlap", contact.normalOverlap, "m");
        fields("tangentialOverlap", contact.tangentialOverlap, "m");
        fields("normalForce", contact.normalForce, "N");
        fields("tangentialForce", contact.tangentialForce, "N");
    });
}

void CStoredRecords::hear(const CSurfSurfBond& bond, qint64 byte)
{
    record(byte, [&](const CFields& fields) {
        fields("firstParticleId", bond.firstParticleId);
        fields("firstElement", bond.firstElement);
        fields("secondParticleId", bond.secondParticleId);
        fields("secondElement", bond.secondElement);
        fields("normalForce", bond.normalForce, "N");
        fields("tangentialForce", bond.tangentialForce, "N");
        fields("normalTorque", bond.normalTorque, "N m");
        fields("tangentialTorque", bond.tangentialTorque, "N m");
        fields("state", bond.state);
        fields("breakTime", bond.breakTime, "s");
    });
}

void CStoredRecords::hear(const CSurfSurfCollision& collision, qint64 byte)
{
    record(byte, [&](const CFields& fields) { collisionFields(fields, collision); });
}

void CStoredRecords::hear(const CSurfGeomCollision& collision, qint64 byte)
{
    record(byte, [&](const CFields& fields) { collisionFields(fields, collision); });
}

} // namespace NBrenmark
