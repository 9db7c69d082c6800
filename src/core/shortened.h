#pragma once
// Names and texts out of a file, for messages: a damaged length makes a name of a whole file's size.

#include <QString>
#include <cstddef>
#include <string>

namespace NBrenmark {

/// At most so many bytes of a text in UTF-8, up to a whole character; "..." takes the place of the rest. 200 bytes are as
/// much as one can look through.
std::string shortened(const std::string& text, std::size_t longest = 200);
/// The same as UTF-8, with "?" for what is no character.
std::string shortened(const QString& text);

} // namespace NBrenmark
