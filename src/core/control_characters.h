#pragma once
// Characters that steer a terminal instead of being shown by it. They may be in every name that comes out of a deck.

namespace NBrenmark {

/// C0 with line feed and tab, DEL and C1.
constexpr bool isControlCharacter(char32_t c) { return c < 0x20 || (c >= 0x7F && c <= 0x9F); }

/// What turns the direction of the text around it: "lig\u202Emed.exe" would be read as another name.
constexpr bool isDirectionControl(char32_t c)
{
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

} // namespace NBrenmark
