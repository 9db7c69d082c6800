#pragma once
// Interfaces 4 to 7: the definitions of custom properties, of the owner that the identifier stands for.

#include "physics/plugins/host/host_context.h"

#include <brenmark/plugin/custom_properties.h>

namespace NBrenmark {

class CCustomPropertyManager;

namespace NApiCore {

class CCustomPropertyManagerApi_1 : public CHostApi<ICustomPropertyManagerApi_1_0, 0>
{
public:
    /// Fails for an identifier that stands for no owner.
    bool init(const CHostContext* hostContext, quint32 asked) override;

    unsigned int getPropertyCount() const override;
    int getPropertyIndex(const char* name) const override;
    bool getPropertyDetails(const char* name, SPropertyDetails& details) const override;
    bool getPropertyDetails(unsigned int index, SPropertyDetails& details) const override;

private:
    const CCustomPropertyManager* manager() const;
};

/// The identifier of the definitions of an owner, an ECustomPropertyOwner; 0 for none.
quint32 propertiesApiOf(unsigned int ownerType);

} // namespace NApiCore
} // namespace NBrenmark
