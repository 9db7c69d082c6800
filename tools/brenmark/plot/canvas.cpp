#include "brenmark/plot/canvas.h"

#include <QString>

#include <algorithm>
#include <cstdlib>

namespace NBrenmark {

CCanvas::CCanvas(int columns, int rows, bool braille)
    : columns(columns),
      braille(braille),
      across(braille ? 2 : 1),
      down(braille ? 4 : 1),
      cells(static_cast<std::size_t>(rows), std::vector<unsigned>(static_cast<std::size_t>(columns), 0))
{}

void CCanvas::dot(int x, int y)
{
    if (x < 0 || y < 0 || x >= width() || y >= height())
        return;
    const int fromAbove = height() - 1 - y;
    // The bits of a character of braille, row by row: the fourth row came to it later.
    static constexpr unsigned bits[4][2] = {{0x01, 0x08}, {0x02, 0x10}, {0x04, 0x20}, {0x40, 0x80}};
    cells[static_cast<std::size_t>(fromAbove / down)][static_cast<std::size_t>(x / across)] |=
        bits[fromAbove % down][x % across];
}

void CCanvas::line(int fromX, int fromY, int toX, int toY)
{
    const int steps = std::max({std::abs(toX - fromX), std::abs(toY - fromY), 1});
    for (int i = 0; i <= steps; ++i)
        dot(fromX + (toX - fromX) * i / steps, fromY + (toY - fromY) * i / steps);
}

std::string CCanvas::row(int number) const
{
    QString text;
    for (const unsigned bits : cells[static_cast<std::size_t>(number)])
        text += bits == 0 ? QChar(' ') : braille ? QChar(0x2800 + bits) : QChar('*');
    return text.toStdString();
}

bool localeIsUtf8()
{
    for (const char* const name : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const char* const value = std::getenv(name); value != nullptr && *value != '\0') {
            const QString locale = QString::fromLocal8Bit(value).toLower();
            return locale.contains("utf-8") || locale.contains("utf8");
        }
    return false;
}

} // namespace NBrenmark
