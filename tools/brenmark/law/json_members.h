#pragma once
// Members of a JSON object by name, with what is wrong with one said by its place: "state 3: element1.mass".

#include "brenmark/json_text.h"

#include "maths/vector.h"

#include <map>
#include <string>
#include <vector>

namespace NBrenmark {

/// An object whose members may all be missing. What is there and isn't of the type asked for is wrong usage.
class CJsonMembers
{
public:
    /// \param json   an object, or null for one without members
    /// \param place  for messages
    CJsonMembers(const Json& json, const std::string& place);

    bool has(const char* name) const { return json.contains(name); }
    bool isNull(const char* name) const { return !has(name) || json[name].is_null(); }
    /// Null is what isn't a number.
    double number(const char* name, double byDefault = 0.0) const;
    quint32 count(const char* name, quint32 byDefault = 0) const;
    bool flag(const char* name, bool byDefault = false) const;
    std::string text(const char* name, const std::string& byDefault = std::string()) const;
    C3DVector vector(const char* name, const C3DVector& byDefault = C3DVector()) const;
    std::vector<double> numbers(const char* name) const;
    std::vector<std::string> texts(const char* name) const;
    /// An object of names and numbers.
    std::map<std::string, double> numbersByName(const char* name) const;
    /// An object of names and arrays of numbers.
    std::map<std::string, std::vector<double>> arraysByName(const char* name) const;
    CJsonMembers object(const char* name) const;
    std::vector<CJsonMembers> objects(const char* name) const;

private:
    const Json& at(const char* name) const { return json[name]; }
    [[noreturn]] void refuse(const std::string& name, const char* expected) const;
    double numberOf(const Json& value, const std::string& name) const;
    std::vector<double> numbersOf(const Json& value, const std::string& name) const;

    Json json;
    std::string place;
};

/// "[1.0,2.0,3.0]"
Json jsonVector(const C3DVector& vector);

} // namespace NBrenmark
