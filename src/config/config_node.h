#pragma once
// A node of the configuration tree, and the twenty kinds of value that it may hold.

#include "maths/vector.h"

#include <QColor>
#include <QString>
#include <QStringList>

#include <any>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <typeinfo>
#include <vector>

namespace NBrenmark::NConfig {

/// A node has a value, children, both or neither.
struct SConfigNode
{
    std::map<std::string, SConfigNode> children;
    std::any value;
};

/// The types of the kinds, in the order of their numbers.
using ValueTypes =
    std::tuple<bool, int, unsigned int, double, float, char, C3DPoint, C3DVector, std::string, std::set<int>,
               std::set<unsigned int>, std::set<double>, std::set<std::string>, std::vector<int>,
               std::vector<unsigned int>, std::vector<double>, std::vector<std::string>, QString, QColor, QStringList>;

constexpr size_t valueKindCount = std::tuple_size_v<ValueTypes>;

template <class T, class TTuple>
struct SIsOneOf;
template <class T, class... TTypes>
struct SIsOneOf<T, std::tuple<TTypes...>> : std::disjunction<std::is_same<T, TTypes>...>
{
};

/// Whether T is exactly one of the twenty types.
template <class T>
constexpr bool isValueType = SIsOneOf<T, ValueTypes>::value;

/// One kind: its name in the configuration file, its type, and its text form there.
struct SValueKind
{
    const char* name;
    const std::type_info& type;
    /// The text of a value of this kind; it has no end of a line in it. What a text can't hold is left out or
    /// replaced: decode says what remains.
    std::string (*encode)(const std::any& value);
    /// Takes the value of a text over. False, and the value untouched, if the text has none.
    bool (*decode)(const std::string& text, std::any& value);
    /// Whether two values of this kind are equal; a nan is equal to a nan.
    bool (*isSame)(const std::any& a, const std::any& b);
};

/// The kind of a file's name for it; null for a name that isn't in the table.
const SValueKind* valueKindOfName(const std::string& name);
/// The kind of a value, by exact type; null for an empty holder and for a type outside of the table.
const SValueKind* valueKindOf(const std::any& value);

} // namespace NBrenmark::NConfig
