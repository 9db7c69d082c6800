#pragma once
// Interface 10: the custom properties of geometry.

#include "physics/plugins/host/host_context.h"

#include <brenmark/plugin/geometry.h>

namespace NBrenmark::NApiCore {

class CGeometryManagerApi_1 : public CHostApi<IGeometryManagerApi_1_1, 1>
{
public:
    bool setCustomProperty(const char* geometryName, const char* propertyName, double value) override;
    bool setCustomProperty(const char* geometryName, unsigned int propertyIndex, double value) override;
};

} // namespace NBrenmark::NApiCore
