#pragma once
// The definitions of the custom properties of one owner: particles, contacts, geometry or the
// simulation. Finalized properties, those that have stored values, form the front of the sequence.

#include "core/read_write.h"
#include "properties/custom_property_meta_data.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace NBrenmark {

class CCustomPropertyManager;

enum ECustomPropertyOwner : unsigned int
{
    eParticleOwner = 0,
    eContactOwner = 1,
    eGeometryOwner = 2,
    eSimulationOwner = 3
};

/// Hears of changes to a manager. Called under the lock of all listeners: it must not add or
/// remove listeners from inside the call.
class IPropertyListener
{
public:
    virtual ~IPropertyListener() = default;
    virtual void managerChanged(CCustomPropertyManager& manager, int value) = 0;
    virtual void propertyAdded(CCustomPropertyManager& manager) = 0;
};

class CCustomPropertyManager : public ISimulationSettingsEntry
{
public:
    static constexpr unsigned int notFound = 0xFFFFFFFFu;

    CCustomPropertyManager(const std::string& name, unsigned int managerType);
    ~CCustomPropertyManager() override;
    CCustomPropertyManager(const CCustomPropertyManager&) = delete;
    CCustomPropertyManager& operator=(const CCustomPropertyManager&) = delete;

    /// Takes a definition over. Refused, and left with the caller, if it is null, its name isn't
    /// valid or is in use.
    bool addProperty(std::unique_ptr<CCustomPropertyMetaData>& metaData);
    /// Letters, round brackets, blanks and hyphens, at least one.
    static bool isValidName(const std::string& name);
    unsigned int indexOf(const std::string& name) const;
    const CCustomPropertyMetaData* property(const std::string& name) const;
    const CCustomPropertyMetaData* property(unsigned int index) const;
    unsigned int propertyCount() const { return static_cast<unsigned int>(properties.size()); }
    /// Properties that have stored values: the first so many of the sequence.
    unsigned int finalizedCount() const;

    void addReference(const std::string& name);
    void releaseReference(const std::string& name);

    void addListener(IPropertyListener* listener);
    /// A listener removed while a property is finalized hears managerChanged(manager, 0) first.
    void removeListener(IPropertyListener* listener);
    void notifyChanged(int value);

    bool write(CVersionedStream& stream, IProgressController* progress) override;
    /// False, with the manager empty, if a name isn't valid or met twice, or the stream ends early.
    bool read(CVersionedStream& stream, IProgressController* progress) override;
    bool isModified() const override { return modified; }
    void setModified(bool value) override { modified = value; }
    void clear(bool notify) override;

    std::string name;
    unsigned int managerType;
    int lastFinalisedPropertyIndex = -1;

private:
    bool modified = false;
    std::vector<std::unique_ptr<CCustomPropertyMetaData>> properties;
    std::set<IPropertyListener*> listeners;
};

/// The managers of a deck's four owners. Not owned.
struct SPropertyManagers
{
    CCustomPropertyManager* particle = nullptr;
    CCustomPropertyManager* contact = nullptr;
    CCustomPropertyManager* geometry = nullptr;
    CCustomPropertyManager* simulation = nullptr;
};

} // namespace NBrenmark
