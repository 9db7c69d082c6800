#pragma once
// A small picture in characters: dots of braille, eight a character, or stars where the terminal has none.

#include <string>
#include <vector>

namespace NBrenmark {

class CCanvas
{
public:
    CCanvas(int columns, int rows, bool braille);

    /// Dots across and down.
    int width() const { return columns * across; }
    int height() const { return static_cast<int>(cells.size()) * down; }
    /// \param y  from below
    void dot(int x, int y);
    void line(int fromX, int fromY, int toX, int toY);
    /// A row of characters, from above.
    std::string row(int number) const;

private:
    int columns;
    bool braille;
    int across; ///< dots of a character
    int down;
    std::vector<std::vector<unsigned>> cells;
};

/// Whether the user's locale has characters beyond ASCII.
bool localeIsUtf8();

} // namespace NBrenmark
