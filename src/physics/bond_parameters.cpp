// Bond parameters by pair: one key for both orders of the names.
#include "physics/bond_parameters.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <string_view>

namespace NBrenmark {

static const std::string separator = " <> ";

void CBondParameters::read(IFileVisitorReader& v) { v.readBondParameters(*this); }

void CBondParameters::write(IFileVisitorWriter& v) const { v.writeBondParameters(*this); }

bool CBondParameters::operator==(const CBondParameters& other) const
{
    return normalStiffness == other.normalStiffness && shearStiffness == other.shearStiffness &&
           normalStrength == other.normalStrength && shearStrength == other.shearStrength &&
           bondRadius == other.bondRadius;
}

void CBondParametersMap::read(IFileVisitorReader& v) { v.readBondParametersMap(*this); }

void CBondParametersMap::write(IFileVisitorWriter& v) const { v.writeBondParametersMap(*this); }

std::string CBondParametersMap::pairKey(const std::string& a, const std::string& b)
{
    const SNamePair pair(a, b);
    return pair.first + separator + pair.second;
}

std::optional<std::pair<std::string, std::string>> CBondParametersMap::namesOf(const std::string& key)
{
    const std::size_t position = key.find(separator);
    if (position == std::string::npos)
        return std::nullopt;
    return std::make_pair(key.substr(0, position), key.substr(position + separator.size()));
}

int SBondKeyOrder::compared(const std::string& key, const SNamePairView& pair)
{
    std::string_view rest = key;
    for (const std::string_view part :
         {std::string_view(pair.first), std::string_view(separator), std::string_view(pair.second)}) {
        const std::string_view head = rest.substr(0, part.size());
        if (const int order = head.compare(part); order != 0)
            return order;
        rest.remove_prefix(head.size());
    }
    return rest.empty() ? 0 : 1;
}

const CBondParameters* CBondParametersMap::find(const std::string& a, const std::string& b) const
{
    const auto entry = entries.find(SNamePairView(a, b));
    return entry == entries.end() ? nullptr : &entry->second;
}

const CBondParameters* CBondParametersMap::find(const std::string& key) const
{
    const auto entry = entries.find(key);
    return entry == entries.end() ? nullptr : &entry->second;
}

std::vector<std::string> CBondParametersMap::names() const
{
    std::vector<std::string> keys;
    for (const auto& [key, parameters] : entries)
        keys.push_back(key);
    return keys;
}

void CBondParametersMap::rename(const std::string& oldName, const std::string& newName)
{
    decltype(entries) moved;
    for (auto entry = entries.begin(); entry != entries.end();) {
        const auto pair = namesOf(entry->first);
        if (!pair || (pair->first != oldName && pair->second != oldName)) {
            ++entry;
            continue;
        }
        moved[pairKey(pair->first == oldName ? newName : pair->first,
                      pair->second == oldName ? newName : pair->second)] = entry->second;
        entry = entries.erase(entry);
    }
    moved.merge(entries);
    entries.swap(moved);
}

} // namespace NBrenmark
