#pragma once
// Pairs that touch at a timestep. No row can be held yet: the families are always empty, and a
// deck with contacts is refused by the visitors.

#include "core/save_options.h"
#include "results/collisions.h"
#include "results/custom_property_data.h"

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

/// Extra values per contact row of a legacy deck.
class CContactRecordList
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
    quint32 count() const { return 0; }
};

class CContactsBase
{
public:
    /// \param propertyManager  of the contact properties; not owned
    CContactsBase(CCustomPropertyManager* propertyManager, CCollisionsBase& activeCollisions)
        : customProperties(propertyManager), activeCollisions(activeCollisions)
    {}
    virtual ~CContactsBase() = default;
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// The family's bit of the timestep mask.
    virtual quint32 familyMask() const = 0;
    quint32 rowCount() const { return 0; }
    /// collisionsActive survives.
    void clear();

    bool collisionsActive = false; ///< the nested collision records follow the rows
    CContactRecordList contactRecords;
    CCustomPropertyData customProperties;
    CCollisionsBase& activeCollisions; ///< not owned
};

class CSurfaceSurfaceContacts : public CContactsBase
{
public:
    using CContactsBase::CContactsBase;
    quint32 familyMask() const override { return eSurfaceSurfaceContacts; }
};

class CSurfaceGeometryContacts : public CContactsBase
{
public:
    using CContactsBase::CContactsBase;
    quint32 familyMask() const override { return eSurfaceGeometryContacts; }
};

class CContacts
{
public:
    explicit CContacts(CCustomPropertyManager* propertyManager);
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
    void clear();

private:
    CSurfaceSurfaceCollisions activeSurfaceSurface; // nested in the families below
    CSurfaceGeometryCollisions activeSurfaceGeometry;

public:
    CSurfaceSurfaceContacts surfaceSurface;
    CSurfaceGeometryContacts surfaceGeometry;
};

} // namespace NBrenmark
