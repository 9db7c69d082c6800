#pragma once
// Numbers for readers: sizes, durations, counts with their noun.

#include <QtGlobal>
#include <string>

namespace NBrenmark {

/// "512 bytes", "4.1 kB", "1.25 GB": decimal units, three digits.
std::string sizeText(double bytes);
/// "0.8 s" below a minute, "2:05 min" below an hour, "1:02:05 h" above.
std::string durationText(double seconds);
/// "1 timestep", "4 timesteps".
std::string countText(quint64 count, const std::string& noun);
/// "1 factory", "4 factories".
std::string countText(quint64 count, const std::string& noun, const std::string& plural);
/// A number as people write it: twelve digits, which hide the rounding of its last bits.
std::string shortNumber(double value);

} // namespace NBrenmark
