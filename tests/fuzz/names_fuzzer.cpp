// Any bytes in place of the names that a deck is addressed by: key paths, names of properties and attributes, units, texts
// of an HDF5 file.

#include "brenmark/failure.h"
#include "brenmark/values/chosen_units.h"

#include "analysis/attributes/attribute_table.h"
#include "config/key_path.h"
#include "core/shortened.h"
#include "io/hdf5/link_names.h"
#include "io/hdf5/shapes.h"
#include "model/creator_data.h"
#include "properties/custom_property_manager.h"
#include "results/timestep_data.h"

#include <cstdlib>

using namespace NBrenmark;

/// An attribute that is found has the name that was asked for.
static bool isFoundByItsName(const QString& name)
{
    using namespace NAttributes;
    static CCreatorData creator{SPropertyManagers()};
    static const CTimestepData timestep(SPropertyManagers(), creator);
    static const CAttributeTable table = buildAttributeTable(timestep);
    const CAttribute* const found = table.attribute(name, eParticleAttribute);
    return found == nullptr || found->name == name;
}

/// Units are chosen, or it is the command line that is wrong.
static bool isAnsweredForUnits(const std::string& text)
{
    try {
        CChosenUnits{text};
        return true;
    }
    catch (const CFailure& failure) {
        return failure.code == eExitUsage;
    }
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    const NConfig::CKeyPath path = NConfig::CKeyPath::fromString(text);
    if (!(NConfig::CKeyPath::fromString(path.toString()) == path))
        std::abort();
    const QString stored = storedText(text);
    if (shortened(stored).size() > 203 || shortened(text).size() > 203)
        std::abort();
    if (!isFoundByItsName(stored) || !isAnsweredForUnits(text) || !isAnsweredForUnits("length=" + text))
        std::abort();
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    auto property = std::make_unique<CCustomPropertyMetaData>(text, 0u, 1u, 0u);
    if (manager.addProperty(property) != CCustomPropertyManager::isValidName(text))
        std::abort();
    return 0;
}
