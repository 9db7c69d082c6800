// Contacts: a "contact" for each live row of the two families.

#include "results/contacts.h"
#include "core/counted.h"
#include "core/log.h"
#include "core/memory_ceiling.h"
#include "xml/property_values.h"
#include "xml/serialisers.h"
#include "xml/timestep/pair_ends.h"

namespace NBrenmark {

static const char* const contactTag = "contact";
static const char* const surfaceContactsTag = "surface_surface_contact";
static const char* const geometryContactsTag = "surface_geometry_contact";

template <class TForm, class TContacts>
static void contactForm(TForm& f, TContacts& c, std::size_t row)
{
    f.attribute("normal_overlap", c.normalOverlap[row]); // m
    f.xyz("tang_overlap_", c.tangentialOverlap[row]);    // m
    f.xyz("tang_force_", c.tangentialForce[row]);        // N
    f.xyz("normal_force_", c.normalForce[row]);          // N
    f.xyz("vector1_", c.contactVector1[row]);            // m
    f.xyz("vector2_", c.contactVector2[row]);            // m
    f.xyz("position_", c.position[row]);                 // m
}

void CXmlWriter::writeContacts(CContacts& contacts)
{
    out().element(surfaceContactsTag, [&] { contacts.surfaceSurface.write(*this); });
    out().element(geometryContactsTag, [&] { contacts.surfaceGeometry.write(*this); });
}

void CXmlWriter::writeContactsBase(CContactsBase& c)
{
    const bool isGeometry = c.familyMask() == eSurfaceGeometryContacts;
    const CXmlValues values(options.writeCustomProperties ? c.customProperties.manager() : nullptr);
    quint64 dangling = 0;
    for (quint32 row = 0; row < c.rowCount(); ++row) {
        SPairIds ids;
        if (!c.isLive(row))
            continue;
        if (!findIds(*timestep, c.rows[row], isGeometry, ids)) {
            ++dangling;
            continue;
        }
        out().element(contactTag, [&] {
            pairForm(out(), ids, isGeometry);
            contactForm(out(), c, row);
            values.write(out(), c.customProperties, row);
        });
    }
    report(eNotCarried, NLogTitle::xmlExport,
           counted(static_cast<qint64>(dangling), "contact") + " left out: a particle or triangle is missing.",
           dangling);
}

namespace {

class CContactsPart : public CXmlPart<CTimestepData>
{
public:
    using CXmlPart::CXmlPart;

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions&) override
    {
        if (attributes.is("contacts")) {
            object.particleTypes.rebuildIdLookup();
            values = CXmlValues(object.contacts.surfaceSurface.customProperties.manager());
            return true;
        }
        if (attributes.is(surfaceContactsTag) || attributes.is(geometryContactsTag)) {
            isGeometry = attributes.is(geometryContactsTag);
            current = isGeometry ? static_cast<CContactsBase*>(&object.contacts.surfaceGeometry)
                                 : &object.contacts.surfaceSurface;
            return true;
        }
        if (current == nullptr || !attributes.is(contactTag))
            return false;
        add(attributes);
        return true;
    }
    void endDomElement(const QString& tagName, const CXmlIoOptions&) override
    {
        if (tagName != QLatin1String("contacts"))
            return;
        current = nullptr;
        report(eLost, NLogTitle::xmlImport,
               counted(static_cast<qint64>(dropped), "contact") + " left out: a particle or triangle is missing.",
               dropped);
        dropped = 0;
        object.contacts.surfaceSurface.settle(NLogTitle::xmlImport);
        object.contacts.surfaceGeometry.settle(NLogTitle::xmlImport);
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
        constexpr quint64 rowBytes = 512;
        admitMemory(rowBytes + current->customProperties.elementsTotal() * sizeof(double), "contacts");
        quint32 row = 0;
        current->allocateRow(row, true);
        current->rows[row] = ends;
        contactForm(form, *current, row);
        values.read(attributes, current->customProperties, row);
    }

    CContactsBase* current = nullptr; ///< not owned
    bool isGeometry = false;
    quint64 dropped = 0;
    CXmlValues values;
};

} // namespace

std::unique_ptr<CXmlSerialiser> contactsPart(CTimestepData& timestep)
{
    return std::make_unique<CContactsPart>(timestep);
}

} // namespace NBrenmark
