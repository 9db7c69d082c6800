#pragma once
// Progress as text: a bar that fits its terminal, a line, an object.

#include <QtGlobal>

#include <optional>
#include <string>

namespace NBrenmark {

struct SProgressState
{
    std::string work;     ///< what is done, for example "converting"
    quint32 finished = 0; ///< timesteps
    quint32 timesteps = 0;
    double bytesDone = 0.0;
    double bytesTotal = 0.0;
    double bytesPerSecond = 0.0; ///< 0: not known
    std::optional<double> secondsLeft;
};

/// A bar and as much text as fits into so many columns, without a control sequence but those of colour.
std::string progressBar(const SProgressState& state, int columns, bool hasColour);
/// "converting timestep 3 of 4 done, 3.97 MB/s, 0.2 s left", or with the percentage where one is at work.
std::string progressLine(const SProgressState& state, bool isDone);
/// One object in one line.
std::string progressObject(const SProgressState& state);

} // namespace NBrenmark
