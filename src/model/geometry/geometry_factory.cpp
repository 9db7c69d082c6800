// The words of the shapes.
#include "model/geometry/geometry_factory.h"

#include "model/factories/particle_factory_list.h"
#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
#include "model/geometry/polygon.h"

namespace NBrenmark {

std::unique_ptr<CGeometryGroup> createGeometry(const QString& shapeWord, CCustomPropertyManager* propertyManager)
{
    // "default" is a mesh of unknown origin: that of an import that was never placed.
    if (shapeWord == QLatin1String(CCADGeometry::word) || shapeWord == QLatin1String("default"))
        return std::make_unique<CCADGeometry>(propertyManager);
    if (shapeWord == QLatin1String(CBox::word))
        return std::make_unique<CBox>(propertyManager);
    if (shapeWord == QLatin1String(CCylinder::word))
        return std::make_unique<CCylinder>(propertyManager);
    if (shapeWord == QLatin1String(CPolygon::word))
        return std::make_unique<CPolygon>(propertyManager);
    return nullptr;
}

} // namespace NBrenmark
