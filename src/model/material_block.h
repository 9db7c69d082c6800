#pragma once
// Material blocks: stored beds of particles that can be placed in a simulation.

#include "maths/quaternion.h"
#include "maths/vector.h"
#include "model/bounding_box.h"

#include <QMap>
#include <QString>
#include <array>
#include <memory>
#include <vector>

namespace NBrenmark {

class CCustomPropertyMetaData;
class CCustomPropertyValueList;
class IFileVisitorReader;
class IFileVisitorWriter;

/// The values of one custom property in a block, with the definition that goes with them: a block
/// is outside of the deck's property managers.
struct SBlockProperty
{
    std::shared_ptr<CCustomPropertyMetaData> metaData;
    std::shared_ptr<CCustomPropertyValueList> values;
};

/// The particles of one type in the bed, one array element per particle.
class CMaterialBlockParticleData
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    QString name; ///< of the particle type
    std::vector<quint32> ids;
    std::vector<double> scale;
    std::vector<C3DVector> velocity; ///< m/s
    std::vector<C3DPoint> position;  ///< m
    std::vector<CQuaternion> orientation;
    std::vector<C3DVector> angularVelocity; ///< rad/s
    quint32 sphereCount = 0;
    std::vector<SBlockProperty> customProperties;
};

/// The contacts of the bed: rows of four words, as in the contact families of a timestep.
class CMaterialBlockContactData
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    std::vector<std::array<quint32, 4>> contacts;
    std::vector<SBlockProperty> customProperties;
};

class CMaterialBlock
{
public:
    CMaterialBlock();
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    QString name;
    QString materialName;
    CBoundingBox boundingBox;
    std::vector<std::shared_ptr<CMaterialBlockParticleData>> particleData;
    std::shared_ptr<CMaterialBlockContactData> surfaceSurfaceContacts;
    std::shared_ptr<CMaterialBlockContactData> surfaceGeometryContacts;
};

/// Blocks by name, in key order. A name met twice keeps the later block.
class CMaterialBlockMap : public QMap<QString, std::shared_ptr<CMaterialBlock>>
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
};

} // namespace NBrenmark
