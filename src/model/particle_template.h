#pragma once
// Particles whose shape is a mesh, by name. The legacy family has a form for them that no block of a deck holds: a host
// that keeps such a list beside its decks reads and writes it by the visitors.

#include "maths/matrix3.h"
#include "model/domain.h"
#include "model/geometry_groups.h"

#include <QString>

#include <map>
#include <memory>

namespace NBrenmark {

class CParticleTemplate
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    QString name;
    QString materialName;
    double scale = 1.0;
    GeometryGroups geometry; ///< the mesh, in parts
    CDomain domain;          ///< the box around it, m
    C3DMatrix orientation;
};

class TemplateMap : public std::map<QString, std::unique_ptr<CParticleTemplate>>
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
};

} // namespace NBrenmark
