#pragma once
// Materials. Particle types and geometry refer to one by its name alone, so that a name's
// uniqueness is what keeps the model consistent.

#include <QMap>
#include <QString>
#include <QStringList>
#include <string>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;
class InteractionMap;

/// What a material is for. A file may hold other values: anything but 1 counts as equipment.
enum EMaterialType : qint32
{
    eEquipmentMaterial = 0,
    eBulkMaterial = 1
};

class CMaterial
{
public:
    CMaterial() = default;
    CMaterial(const std::string& name, double poissonsRatio, double shearModulus, double density, double workFunction,
              qint32 type);

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
    bool isBulk() const { return type == eBulkMaterial; }

    std::string name; ///< its key in the map
    double poissonsRatio = 0.25;
    double shearModulus = 1e8; ///< Pa
    double density = 2500.0;   ///< kg/m^3
    double workFunction = 0.0; ///< for tribocharging
    qint32 type = eBulkMaterial;
};

/// Owns its materials, in the key order of QString.
class MaterialMap : public QMap<QString, CMaterial*>
{
public:
    MaterialMap() = default;
    ~MaterialMap();
    MaterialMap(const MaterialMap&) = delete;
    MaterialMap& operator=(const MaterialMap&) = delete;

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// The material or null.
    CMaterial* find(const QString& name) const;
    /// Takes a material under a key; one that is there is replaced and deleted.
    void set(const QString& name, CMaterial* material);
    void clear();

    /// Makes a second material out of one, under a new name that is unique in the map, with copies
    /// of its interactions. An equipment copy gets type 0 and no interaction with other equipment;
    /// otherwise an interaction of the material with itself is copied for the new one too.
    /// \return the new name
    QString splitMaterial(const QString& materialName, bool equipmentCopy, InteractionMap& interactions);
};

/// base + "(1)", or with the number after the greatest that the names already hold in that form.
/// The plain presence of base in the list isn't tested.
QString makeUniqueName(const QString& base, const QStringList& existingNames);

} // namespace NBrenmark
