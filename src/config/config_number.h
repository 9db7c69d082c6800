#pragma once
// Numbers in the text of a configuration file. They depend on no locale: a deck reads the same everywhere.

#include <string>
#include <string_view>

namespace NBrenmark::NConfig {

bool isWhiteSpace(char c);
bool isDigit(char c);

/// The number at the front of a text, after white space and a sign; what follows it is ignored.
/// False if there are no digits, or if it doesn't fit into 32 bits.
bool parseInt(std::string_view text, int& value);
/// The same without a sign of its own: with a minus the number wraps round, -1 being 4294967295.
bool parseUnsignedInt(std::string_view text, unsigned int& value);
/// The same for a real number, "inf", "nan" and hexadecimal ones included. A number below the least one is no
/// number; a subnormal one is.
bool parseDouble(std::string_view text, double& value);

/// The shortest of fixed and scientific notation with six significant digits, as "%g" prints it.
std::string generalText(double value);
/// Six digits after the point, as "%f" prints them.
std::string fixedText(double value);

} // namespace NBrenmark::NConfig
