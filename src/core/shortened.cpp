// Cuts a text where a character ends.
#include "core/shortened.h"

namespace NBrenmark {

std::string shortened(const std::string& text, std::size_t longest)
{
    if (text.size() <= longest)
        return text;
    std::size_t end = longest;
    // The bytes of a character after its first one begin with the bits 10.
    while (end > longest - 4 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return text.substr(0, end) + "...";
}

std::string shortened(const QString& text)
{
    // Cut before it is encoded: a character of the text takes a byte at least.
    return shortened(text.left(201).toStdString());
}

} // namespace NBrenmark
