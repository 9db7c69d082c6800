// Particles: a "particle" for each live slot, with the name of its type.

#include "xml/particles.h"
#include "core/counted.h"
#include "core/log.h"
#include "core/memory_ceiling.h"
#include "core/shortened.h"
#include "model/particle_types.h"
#include "model/slot_bytes.h"
#include "xml/property_values.h"

#include <QHash>

#include <array>
#include <unordered_set>

namespace NBrenmark {

static const char* const particleTag = "particle";
static const char* const typeNameAttribute = "type";

template <class TForm, class TVectors>
static void placeForm(TForm& f, TVectors&& v)
{
    f.xyz("pos_", v.position);           // m
    f.xyz("vel_", v.velocity);           // m/s
    f.xyz("angvel_", v.angularVelocity); // rad/s
}

/// The rotation matrix, row by row.
template <class TForm, class TMatrix>
static void turnForm(TForm& f, TMatrix& matrix)
{
    constexpr std::array<const char*, 9> names = {"orient_xx", "orient_xy", "orient_xz", "orient_yx", "orient_yy",
                                                  "orient_yz", "orient_zx", "orient_zy", "orient_zz"};
    for (std::size_t i = 0; i < names.size(); ++i)
        f.attribute(names[i], matrix.data()[i]);
}

static void writeParticle(CXmlOutput& out, const CParticleType& t, quint32 slot, const CXmlValues& values)
{
    SParticleState state;
    state.position = t.position[slot];
    state.velocity = t.velocity[slot];
    state.angularVelocity = t.angularVelocity[slot];
    out.attribute("id", t.ids[slot]);
    out.attribute(typeNameAttribute, t.displayName);
    out.attribute("scaling_factor", t.scale[slot]);
    placeForm(out, std::as_const(state));
    const C3DMatrix turn = t.orientation[slot].toMatrix();
    turnForm(out, turn);
    values.write(out, t.customProperties, slot);
}

void writeParticles(CXmlOutput& out, const CParticleTypes& types, bool withProperties)
{
    const CXmlValues values(withProperties ? types.properties() : nullptr);
    out.element("particles", [&] {
        out.element("list", [&] {
            for (const std::unique_ptr<CParticleType>& type : types.types)
                for (quint32 slot = 0; slot < type->slotCount(); ++slot)
                    if (type->isLive(slot))
                        out.element(particleTag, [&] { writeParticle(out, *type, slot, values); });
        });
    });
}

namespace {

class CParticlesPart : public CXmlPart<CParticleTypes>
{
public:
    using CXmlPart::CXmlPart;

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions&) override
    {
        if (attributes.is("list")) {
            values = CXmlValues(object.properties());
            for (std::size_t index = 0; index < object.types.size(); ++index)
                typeOfName[object.types[index]->displayName] = object.types[index].get();
            return true;
        }
        if (!attributes.is(particleTag))
            return attributes.is("particles");
        add(attributes);
        return true;
    }

    void endDomElement(const QString& tagName, const CXmlIoOptions&) override
    {
        if (tagName != QLatin1String("list"))
            return;
        report(eLost, NLogTitle::xmlImport,
               counted(static_cast<qint64>(dropped), "particle") +
                   " left out: the definition has no such type, or the id is met twice or isn't above 0.",
               dropped);
        dropped = 0;
        object.recomputeMaxId(true);
        object.rebuildIdLookup();
    }

private:
    void add(const CXmlAttributes& attributes)
    {
        CParticleType* const type = typeOfName.value(attributes.text(typeNameAttribute), nullptr);
        SParticleState state;
        CXmlFormReader form(attributes);
        form.attribute("id", state.id);
        if (type == nullptr || state.id < 1 || !ids.insert(state.id).second) {
            attributes.passOver();
            ++dropped;
            return;
        }
        constexpr quint64 idBytes = 64;
        admitMemory(slotBytes(*type) + idBytes, "particles");
        form.attribute("scaling_factor", state.scale);
        placeForm(form, state);
        C3DMatrix turn;
        turnForm(form, turn);
        state.orientation = CQuaternion::fromMatrix(turn);
        const quint32 slot = type->addParticle(state);
        values.read(attributes, type->customProperties, slot);
    }

    QHash<QString, CParticleType*> typeOfName;
    CXmlValues values;
    std::unordered_set<qint32> ids;
    quint64 dropped = 0;
};

} // namespace

std::unique_ptr<CXmlSerialiser> particlesPart(CParticleTypes& types) { return std::make_unique<CParticlesPart>(types); }

} // namespace NBrenmark
