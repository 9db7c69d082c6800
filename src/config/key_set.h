#pragma once
// The keys that an object has in the configuration tree, as data: what a file doesn't hold gets its default, and what
// is in no set stays as it is.

#include "config/config_manager.h"

#include <any>
#include <string>
#include <vector>

namespace NBrenmark::NConfig {

/// A key, and the value that it has where a file gives it none.
struct SKeyDefault
{
    std::string key;           ///< in text form
    std::any value;            ///< of one of the twenty kinds
    bool takesAnyKind = false; ///< a value of another kind is no fault
};

struct SKeySet
{
    std::string place; ///< below the owner's place; empty for the same
    std::vector<SKeyDefault> keys;
    std::vector<SKeySet> parts;    ///< objects that belong to this one
    std::vector<SKeySet> elements; ///< each numbered child of the place, "00001" and up, has the keys of each of these
    bool hasNamedElements = false; ///< so has each other child that has children of its own
};

/// Gives every key of the set, and of what belongs to it, its default if it has no value.
/// \throws CConfigException  code 1 at the first value of another kind than its default
void fillKeys(const CConfigHandle& owner, const SKeySet& set);

/// A set with the same keys at another place.
SKeySet placedAt(const std::string& place, SKeySet set);

} // namespace NBrenmark::NConfig
