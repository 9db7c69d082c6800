// Collisions: an element without attributes for each, first those that are over, then those of the contacts.

#include "results/collisions.h"
#include "core/counted.h"
#include "core/log.h"
#include "results/timestep_data.h"
#include "xml/serialisers.h"

namespace NBrenmark {

static const char* const surfaceCollisionsTag = "surface_surface_collisions";
static const char* const geometryCollisionsTag = "surface_geometry_collisions";

void CXmlWriter::writeCollisionsBase(const CCollisionsBase& c)
{
    for (const quint32 id : c.ids)
        if (id != 0)
            out().element("collision", [] {});
}

void CXmlWriter::writeCollisions(const CCollisions& collisions)
{
    out().element(surfaceCollisionsTag, [&] {
        collisions.surfaceSurface.write(*this);
        timestep->contacts.surfaceSurface.activeCollisions.write(*this);
    });
    out().element(geometryCollisionsTag, [&] {
        collisions.surfaceGeometry.write(*this);
        timestep->contacts.surfaceGeometry.activeCollisions.write(*this);
    });
}

namespace {

/// There is nothing in them to read.
class CCollisionsPart : public CXmlPart<CCollisions>
{
public:
    using CXmlPart::CXmlPart;

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions&) override
    {
        const bool isCollision = attributes.is("collision");
        ignored += isCollision;
        return isCollision || attributes.is("collisions") || attributes.is(surfaceCollisionsTag) ||
               attributes.is(geometryCollisionsTag);
    }
    void endDomElement(const QString& tagName, const CXmlIoOptions&) override
    {
        if (tagName != QLatin1String("collisions"))
            return;
        report(eNotCarried, NLogTitle::xmlImport,
               counted(static_cast<qint64>(ignored), "collision") + " left out: a document holds nothing of them.",
               ignored);
        ignored = 0;
    }

private:
    quint64 ignored = 0;
};

} // namespace

std::unique_ptr<CXmlSerialiser> collisionsPart(CCollisions& collisions)
{
    return std::make_unique<CCollisionsPart>(collisions);
}

} // namespace NBrenmark
