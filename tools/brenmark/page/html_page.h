#pragma once
// A page that needs nothing but itself: no scripts, no fonts, no pictures from elsewhere. It is read on a phone and in
// print. Every text from a deck is escaped, and the page forbids its reader's browser to load or run anything.

#include <string>

namespace NBrenmark {

/// A text for an element or an attribute in double quotes.
std::string htmlText(const std::string& text);

class CHtmlPage
{
public:
    explicit CHtmlPage(const std::string& title);

    CHtmlPage& heading(int level, const std::string& text);
    CHtmlPage& paragraph(const std::string& text);
    /// Goes in as it is.
    CHtmlPage& raw(const std::string& html);
    /// A table's beginning with its heads; cells follow row by row.
    CHtmlPage& beginTable(std::initializer_list<const char*> heads);
    CHtmlPage& row(std::initializer_list<std::string> cells);
    CHtmlPage& endTable();

    /// Puts the page in the place of an earlier one. \throws CFailure
    void write(const std::string& path);

private:
    std::string html;
};

} // namespace NBrenmark
