#pragma once
// Interface 8: the custom properties of one item. The host binds it to an item and hands it out; it can't be asked for.

#include "physics/plugins/host/host_context.h"

#include <brenmark/plugin/custom_properties.h>

namespace NBrenmark {

class CCustomPropertyData;

namespace NApiCore {

class CCustomPropertyDataApi_1 : public ISubApi, public ICustomPropertyDataApi_1_0
{
public:
    /// \param hostContext    not owned; null is refused
    /// \param data           of the item's owner; not owned, null is refused
    /// \param stagingStore   where changes are gathered; not owned, null for none
    /// \param stagingOffset  the item's place in it
    bool bind(const CHostContext* hostContext, CCustomPropertyData* data, quint32 item,
              CCustomPropertyData* stagingStore, quint32 stagingOffset);

    void getVersion(unsigned int& major, unsigned int& minor) const override;
    unsigned int getIdentifier() const override { return ePropertyData; }
    bool isAvailable() const override;
    ICustomPropertyManagerApi_1_0* getPropertyManager(unsigned int major, unsigned int minor) const override;
    const double* getValue(const char* name) const override { return getValue(indexOf(name)); }
    const double* getValue(unsigned int index) const override;
    double* getStagedValue(const char* name) const override { return getStagedValue(indexOf(name)); }
    double* getStagedValue(unsigned int index) const override;
    bool canWriteProperty(const char* name) const override { return getStagedValue(name) != nullptr; }
    bool canWriteProperty(unsigned int index) const override { return getStagedValue(index) != nullptr; }

private:
    /// One that no property has for a name that isn't known.
    unsigned int indexOf(const char* name) const;

    const CHostContext* context = nullptr;
    CCustomPropertyData* values = nullptr;
    CCustomPropertyData* staged = nullptr;
    quint32 item = 0;
    quint32 stagedItem = 0;
};

} // namespace NApiCore
} // namespace NBrenmark
