// Any bytes in place of the property file of an old deck. A file is taken whole or leaves nothing behind.

#include "fuzz/memory_file.h"
#include "legacy/legacy_custom_property_manager.h"

#include <cstdlib>

using namespace NBrenmark;
using namespace NBrenmark::NLegacySupport;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const CMemoryFile file;
    file.hold(bytes, size);
    CLegacyCustomPropertyManager manager("Particle Properties", eParticleOwner);
    manager.setPropertyFilePath(file.path());
    const int result = manager.readPropertyFile();

    const bool isEmpty = manager.propertyCount() == 0 && manager.lastFinalisedPropertyIndex == -1;
    if (result != ePropertyFileRead && (result != ePropertyFileRefused || !isEmpty))
        std::abort();
    if (manager.finalizedCount() > manager.propertyCount())
        std::abort();
    for (unsigned int i = 0; i < manager.propertyCount(); ++i)
        if (manager.property(i)->numberOfElements > CCustomPropertyMetaData::mostElements)
            std::abort();
    return 0;
}
