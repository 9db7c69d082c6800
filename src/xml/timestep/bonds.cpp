// Bonds: a "bond" for each row of the two families.

#include "results/bonds.h"
#include "core/counted.h"
#include "core/log.h"
#include "core/memory_ceiling.h"
#include "xml/serialisers.h"
#include "xml/timestep/pair_ends.h"

namespace NBrenmark {

static const char* const bondTag = "bond";
static const char* const surfaceBondsTag = "surface_surface_bond";
static const char* const geometryBondsTag = "surface_geometry_bond";

template <class TForm, class TBonds>
static void bondRowForm(TForm& f, TBonds& b, std::size_t row)
{
    f.xyz("normal_force_", b.normalForce[row]);     // N
    f.xyz("tang_force_", b.tangentialForce[row]);   // N
    f.xyz("normal_moment_", b.normalTorque[row]);   // N m
    f.xyz("tang_moment_", b.tangentialTorque[row]); // N m
    f.attribute("bonding_state", b.state[row]);     // EBondState
    f.attribute("break_time", b.breakTime[row]);    // s
}

void CXmlWriter::writeBonds(CBonds& bonds)
{
    out().element(surfaceBondsTag, [&] { bonds.surfaceSurface.write(*this); });
    out().element(geometryBondsTag, [&] { bonds.surfaceGeometry.write(*this); });
}

void CXmlWriter::writeBondsBase(CBondsBase& b)
{
    const bool isGeometry = dynamic_cast<const CSurfaceGeometryBonds*>(&b) != nullptr;
    quint64 dangling = 0;
    for (quint32 row = 0; row < b.rowCount(); ++row) {
        SPairIds ids;
        if (!findIds(*timestep, b.rows[row], isGeometry, ids)) {
            ++dangling;
            continue;
        }
        out().element(bondTag, [&] {
            pairForm(out(), ids, isGeometry);
            bondRowForm(out(), b, row);
        });
    }
    report(eNotCarried, NLogTitle::xmlExport,
           counted(static_cast<qint64>(dangling), "bond") + " left out: a particle or triangle is missing.", dangling);
}

namespace {

class CBondsPart : public CXmlPart<CTimestepData>
{
public:
    using CXmlPart::CXmlPart;

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions&) override
    {
        if (attributes.is("bonds")) {
            object.particleTypes.rebuildIdLookup();
            return true;
        }
        if (attributes.is(surfaceBondsTag) || attributes.is(geometryBondsTag)) {
            isGeometry = attributes.is(geometryBondsTag);
            current =
                isGeometry ? static_cast<CBondsBase*>(&object.bonds.surfaceGeometry) : &object.bonds.surfaceSurface;
            return true;
        }
        if (current == nullptr || !attributes.is(bondTag))
            return false;
        add(attributes);
        return true;
    }
    void endDomElement(const QString& tagName, const CXmlIoOptions&) override
    {
        if (tagName != QLatin1String("bonds"))
            return;
        current = nullptr;
        report(eLost, NLogTitle::xmlImport,
               counted(static_cast<qint64>(dropped), "bond") + " left out: a particle or triangle is missing.",
               dropped);
        dropped = 0;
    }

private:
    void add(const CXmlAttributes& attributes)
    {
        CXmlFormReader form(attributes);
        SPairIds ids;
        PairRow ends{};
        pairForm(form, ids, isGeometry);
        if (!findRow(object, ids, isGeometry, ends)) {
            attributes.passOver();
            ++dropped;
            return;
        }
        constexpr quint64 rowBytes = 256;
        admitMemory(rowBytes, "bonds");
        quint32 row = 0;
        current->allocateRow(row, true);
        current->rows[row] = ends;
        bondRowForm(form, *current, row);
    }

    CBondsBase* current = nullptr; ///< not owned
    bool isGeometry = false;
    quint64 dropped = 0;
};

} // namespace

std::unique_ptr<CXmlSerialiser> bondsPart(CTimestepData& timestep) { return std::make_unique<CBondsPart>(timestep); }

} // namespace NBrenmark
