// Reads members of JSON objects.
#include "brenmark/law/json_members.h"

#include "brenmark/failure.h"
#include "brenmark/terminal.h"

#include <limits>

namespace NBrenmark {

CJsonMembers::CJsonMembers(const Json& json, const std::string& place)
    : json(json.is_null() ? Json::object() : json), place(place)
{
    if (!this->json.is_object())
        throw CFailure(eExitUsage, place + (place.back() == ':' ? " isn't an object" : ": isn't an object"),
                       "Write it in braces, with a name before each value.");
}

void CJsonMembers::refuse(const std::string& name, const char* expected) const
{
    throw CFailure(eExitUsage, place + (place.back() == ':' ? " " : ".") + oneLine(name) + ": isn't " + expected,
                   "brenmark help law says where the members are described.");
}

double CJsonMembers::numberOf(const Json& value, const std::string& name) const
{
    if (value.is_null())
        return std::numeric_limits<double>::quiet_NaN();
    if (!value.is_number())
        refuse(name, "a number");
    return value.get<double>();
}

std::vector<double> CJsonMembers::numbersOf(const Json& value, const std::string& name) const
{
    if (!value.is_array())
        refuse(name, "an array of numbers");
    std::vector<double> numbers;
    for (const Json& element : value)
        numbers.push_back(numberOf(element, name));
    return numbers;
}

double CJsonMembers::number(const char* name, double byDefault) const
{
    return has(name) ? numberOf(at(name), name) : byDefault;
}

quint32 CJsonMembers::count(const char* name, quint32 byDefault) const
{
    if (!has(name))
        return byDefault;
    if (!at(name).is_number_unsigned() || at(name).get<quint64>() > std::numeric_limits<quint32>::max())
        refuse(name, "a whole number from 0 to 4294967295");
    return at(name).get<quint32>();
}

bool CJsonMembers::flag(const char* name, bool byDefault) const
{
    if (has(name) && !at(name).is_boolean())
        refuse(name, "true or false");
    return has(name) ? at(name).get<bool>() : byDefault;
}

std::string CJsonMembers::text(const char* name, const std::string& byDefault) const
{
    if (has(name) && !at(name).is_string())
        refuse(name, "a text");
    return has(name) ? at(name).get<std::string>() : byDefault;
}

C3DVector CJsonMembers::vector(const char* name, const C3DVector& byDefault) const
{
    if (!has(name))
        return byDefault;
    const std::vector<double> parts = numbersOf(at(name), name);
    if (parts.size() != 3)
        refuse(name, "an array of three numbers");
    return {parts[0], parts[1], parts[2]};
}

std::vector<double> CJsonMembers::numbers(const char* name) const
{
    return has(name) ? numbersOf(at(name), name) : std::vector<double>();
}

std::vector<std::string> CJsonMembers::texts(const char* name) const
{
    std::vector<std::string> all;
    if (!has(name))
        return all;
    if (!at(name).is_array())
        refuse(name, "an array of texts");
    for (const Json& element : at(name)) {
        if (!element.is_string())
            refuse(name, "an array of texts");
        all.push_back(element.get<std::string>());
    }
    return all;
}

std::map<std::string, double> CJsonMembers::numbersByName(const char* name) const
{
    std::map<std::string, double> numbers;
    if (has(name)) {
        if (!at(name).is_object())
            refuse(name, "an object of names and numbers");
        for (const auto& [key, value] : at(name).items())
            numbers[key] = numberOf(value, std::string(name) + "." + key);
    }
    return numbers;
}

std::map<std::string, std::vector<double>> CJsonMembers::arraysByName(const char* name) const
{
    std::map<std::string, std::vector<double>> arrays;
    if (!isNull(name)) {
        if (!at(name).is_object())
            refuse(name, "an object of names and arrays");
        for (const auto& [key, value] : at(name).items())
            arrays[key] = numbersOf(value, std::string(name) + "." + key);
    }
    return arrays;
}

CJsonMembers CJsonMembers::object(const char* name) const
{
    return {has(name) ? at(name) : Json(), place + (place.back() == ':' ? " " : ".") + name};
}

std::vector<CJsonMembers> CJsonMembers::objects(const char* name) const
{
    std::vector<CJsonMembers> all;
    if (!has(name))
        return all;
    if (!at(name).is_array())
        refuse(name, "an array of objects");
    for (const Json& element : at(name))
        all.emplace_back(element,
                         place + (place.back() == ':' ? " " : ".") + name + "[" + std::to_string(all.size()) + "]");
    return all;
}

Json jsonVector(const C3DVector& vector) { return Json::array({vector.x, vector.y, vector.z}); }

} // namespace NBrenmark
