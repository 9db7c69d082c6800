#pragma once
// The values of arguments: each from the text that the user gave, or a failure that says what was wrong with it.

#include "brenmark/progress_display.h"
#include "brenmark/terminal.h"
#include "brenmark/tolerance.h"

#include <QString>

#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace NBrenmark {

// All of them \throw CFailure, for wrong usage.

QString pathFrom(const std::string& argument);
/// The same for a path that is used as its bytes.
std::string nativeFrom(const std::string& argument);
/// A key with nothing in it would be all keys.
QString keyFrom(const std::string& argument);
quint32 numberFrom(const char* option, const std::string& argument);
/// Bytes: "4GB" has 4,000,000,000, "4GiB" 4,294,967,296.
/// What --threads asks for, else the environment; 0 for as many as there are cores.
unsigned threadsChosen(const std::string& argument);
/// "0:1e-5:50": two different numbers, and how many there are from one to the other, at least two.
std::tuple<double, double, quint32> rangeFrom(const char* option, const std::string& argument);
/// A number of parts, from 1 to 1000.
quint32 countFrom(const char* option, const std::string& argument);
/// "Velocity, Mass": what commas part, without blanks at its ends; any text will do.
std::vector<std::string> namesFrom(const std::string& argument);
/// "3" or "2:5": the first and the last timestep.
std::pair<quint32, quint32> timestepsFrom(const char* option, const std::string& argument);
/// "2/8": a share from 1 on, and the number of all, at most 100000.
std::pair<quint32, quint32> shardFrom(const char* option, const std::string& argument);
/// "1e-9": absolute; "0.01%": relative; "velocity=1e-6": of the quantity of that name.
STolerances tolerancesFrom(const char* option, const std::vector<std::string>& arguments);
/// A number above 0.
double speedFrom(const char* option, const std::string& argument);
std::uint64_t sizeFrom(const char* option, const std::string& argument);
/// What --color and --progress take.
std::vector<std::string> colourWords();
std::vector<std::string> progressWords();
EColour colourFrom(const std::string& argument);
EProgressForm progressFrom(const std::string& argument);

/// How several decks are converted: a line to paste into a shell.
/// \param decks  as the shell has them, for example "*.dem"
std::string adviceForManyDecks(const std::string& decks);

} // namespace NBrenmark
