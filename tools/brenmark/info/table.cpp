#include "brenmark/info/table.h"

#include "brenmark/terminal.h"

#include <algorithm>

namespace NBrenmark {

/// Characters, not bytes: those that begin one.
static size_t columns(const std::string& text)
{
    return static_cast<size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

void CTable::print(const std::string& heading) const
{
    printResult(heading + '\n');
    size_t width = 0;
    for (const auto& [first, rest] : rows)
        width = std::max(width, columns(first));
    for (const auto& [first, rest] : rows) {
        std::string line = "  " + first;
        line.append(width - columns(first) + 2, ' ').append(rest).append("\n");
        printResult(line);
    }
}

void CTable::printUnlessEmpty(const std::string& heading) const
{
    if (!rows.empty())
        print(heading);
}

std::string text(const Json& value) { return value.get<std::string>(); }

std::string textOrNone(const Json& value) { return value.is_null() ? std::string() : text(value); }

std::string shown(const Json& name) { return oneLine(text(name)); }

std::string listText(const Json& list)
{
    std::string out;
    for (const Json& entry : list)
        out += (out.empty() ? "" : ", ") + shown(entry.is_object() ? entry["name"] : entry);
    return out;
}

} // namespace NBrenmark
