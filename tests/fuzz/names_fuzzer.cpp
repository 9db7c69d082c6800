// Any bytes in place of the names that a deck is addressed by: key paths, names of properties, texts of an HDF5 file.

#include "config/key_path.h"
#include "core/shortened.h"
#include "io/hdf5/link_names.h"
#include "io/hdf5/shapes.h"
#include "properties/custom_property_manager.h"

#include <cstdlib>

using namespace NBrenmark;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    const NConfig::CKeyPath path = NConfig::CKeyPath::fromString(text);
    if (!(NConfig::CKeyPath::fromString(path.toString()) == path))
        std::abort();
    const QString stored = storedText(text);
    if (shortened(stored).size() > 203 || shortened(text).size() > 203)
        std::abort();
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    auto property = std::make_unique<CCustomPropertyMetaData>(text, 0u, 1u, 0u);
    if (manager.addProperty(property) != CCustomPropertyManager::isValidName(text))
        std::abort();
    return 0;
}
