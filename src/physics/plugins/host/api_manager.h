#pragma once
// Interface 0: gives out the others.

#include "physics/plugins/host/host_context.h"

#include <brenmark/plugin/api.h>

namespace NBrenmark::NApiCore {

class CApiManager_1 : public CHostApi<IApiManager_1_0, 0>
{
public:
    bool isAvailable() const override { return true; }
    IApi* getApi(unsigned int wanted, unsigned int wantedMajor, unsigned int wantedMinor) override;
    void releaseApi(IApi* api) override;
};

} // namespace NBrenmark::NApiCore
