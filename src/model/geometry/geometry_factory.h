#pragma once
// Makes geometry groups by the word that files hold for their shape.

#include <QString>
#include <memory>

namespace NBrenmark {

class CCustomPropertyManager;
class CGeometryGroup;

/// \param propertyManager  of the geometry properties; not owned, null for a group without any
/// \return null for a word that names no shape
std::unique_ptr<CGeometryGroup> createGeometry(const QString& shapeWord, CCustomPropertyManager* propertyManager);

} // namespace NBrenmark
