#include "physics/plugins/host/api_manager.h"

#include "physics/plugins/host/create_api.h"

namespace NBrenmark::NApiCore {

IApi* CApiManager_1::getApi(unsigned int wanted, unsigned int wantedMajor, unsigned int wantedMinor)
{
    return createApi(context, wanted, wantedMajor, wantedMinor).release();
}

void CApiManager_1::releaseApi(IApi* api)
{
    if (api != this)
        delete api;
}

} // namespace NBrenmark::NApiCore
