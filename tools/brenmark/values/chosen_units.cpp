#include "brenmark/values/chosen_units.h"

#include "brenmark/failure.h"
#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"

namespace NBrenmark {

/// As it is typed: "m/s2" for "m/s²", "C" for "°C".
static std::string typed(std::string unit)
{
    for (const auto& [sign, letter] : {std::pair("²", "2"), std::pair("³", "3"), std::pair("°", "")})
        for (std::size_t at = unit.find(sign); at != std::string::npos; at = unit.find(sign))
            unit.replace(at, std::string(sign).size(), letter);
    return unit;
}

static std::string listed(const std::vector<std::string>& words)
{
    std::string all;
    for (const std::string& word : words)
        all += (all.empty() ? "" : ", ") + word;
    return all;
}

static std::string meant(const std::string& word, const std::vector<std::string>& words, const std::string& otherwise)
{
    const std::string nearest = nearestOf(word, words);
    return nearest.empty() ? otherwise + listed(words) + "." : "Did you mean " + nearest + "?";
}

static const SQuantity& quantityNamed(const std::string& key)
{
    std::vector<std::string> keys;
    for (quint32 number = 0; number < eQuantityCount; ++number) {
        const SQuantity& quantity = quantityOf(number);
        if (quantity.key == nullptr)
            continue;
        if (key == quantity.key)
            return quantity;
        keys.emplace_back(quantity.key);
    }
    throw CFailure(eExitUsage, "--units: \"" + oneLine(key) + "\" isn't a quantity",
                   meant(key, keys, "The quantities are "));
}

static const SUnit& unitNamed(const SQuantity& quantity, const std::string& name)
{
    std::vector<std::string> names;
    for (const SUnit& unit : quantity.units) {
        if (name == unit.name || name == typed(unit.name))
            return unit;
        names.emplace_back(unit.name);
    }
    throw CFailure(eExitUsage, "--units: \"" + oneLine(name) + "\" isn't a unit of " + quantity.key,
                   meant(name, names, "Its units are "));
}

CChosenUnits::CChosenUnits(const std::string& text)
{
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::string choice = text.substr(begin, end - begin);
        const std::size_t equals = choice.find('=');
        if (equals == std::string::npos)
            throw CFailure(eExitUsage, "--units: \"" + oneLine(choice) + "\" has no unit",
                           "Give quantities with their units, for example length=mm,angVel=rpm.");
        const SQuantity& quantity = quantityNamed(choice.substr(0, equals));
        chosen.at(quantity.number) = &unitNamed(quantity, choice.substr(equals + 1));
        begin = end + 1;
    }
}

std::string CChosenUnits::nameOf(quint32 quantity) const
{
    if (const SUnit* const unit = of(quantity))
        return unit->name;
    const std::vector<SUnit>& units = quantityOf(quantity).units;
    return units.empty() ? "" : units.front().name;
}

std::string CChosenUnits::withUnit(const std::string& name, quint32 quantity) const
{
    const std::string unit = nameOf(quantity);
    return unit.empty() ? name : name + " [" + unit + "]";
}

} // namespace NBrenmark
