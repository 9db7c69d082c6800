#pragma once
// How brenmark info lays out what it shows.

#include "brenmark/json_text.h"

#include <string>
#include <utility>
#include <vector>

namespace NBrenmark {

/// A heading, and rows of which the first column is as wide as its widest text.
class CTable
{
public:
    void row(const std::string& first, const std::string& rest) { rows.emplace_back(first, rest); }
    /// Nothing of a table without rows.
    void printUnlessEmpty(const std::string& heading) const;
    void print(const std::string& heading) const;
    size_t size() const { return rows.size(); }

private:
    std::vector<std::pair<std::string, std::string>> rows;
};

/// The text of a value that is one.
std::string text(const Json& value);
/// The same, and nothing of null.
std::string textOrNone(const Json& value);
/// A name in one line, with its control characters made harmless.
std::string shown(const Json& name);
/// "Lift, Turn", of a list of names, or of objects by their names.
std::string listText(const Json& list);

} // namespace NBrenmark
