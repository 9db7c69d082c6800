#include "brenmark/argument_values.h"

#include "brenmark/failure.h"

#include "core/thread_pool.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace NBrenmark {

static CFailure valueFailure(const char* option, const std::string& argument, const std::string& wanted)
{
    return CFailure(eExitUsage, std::string(option) + ": \"" + oneLine(argument) + "\" isn't " + wanted,
                    std::string("Give ") + option + ' ' + wanted + ", or leave it out.");
}

template <class TValue, size_t number>
static TValue wordFrom(const char* option, const std::string& argument,
                       const std::array<std::pair<const char*, TValue>, number>& words)
{
    std::string all;
    for (size_t i = 0; i < number; ++i) {
        if (argument == words[i].first)
            return words[i].second;
        all += (i == 0 ? "" : i + 1 < number ? ", " : " or ") + std::string(words[i].first);
    }
    throw valueFailure(option, argument, all);
}

QString pathFrom(const std::string& argument)
{
    const QByteArray bytes = QByteArray::fromStdString(argument);
    QString path = QFile::decodeName(bytes);
    if (path.isEmpty())
        throw CFailure(eExitUsage, "an empty path", "Name the deck's first file.");
    if (QFile::encodeName(path) != bytes)
        throw CFailure(eExitUsage, argument + ": the path isn't text in the encoding of the locale",
                       "Set LC_ALL to the encoding of your file names, or rename the files.");
    return path;
}

std::string nativeFrom(const std::string& argument)
{
    if (argument.empty())
        throw CFailure(eExitUsage, "an empty path", "Name a file or a folder.");
    return argument;
}

QString keyFrom(const std::string& argument)
{
    if (argument.find_first_not_of(':') == std::string::npos)
        throw CFailure(eExitUsage, "an empty key", "Leave it out for all keys.");
    return QFile::decodeName(QByteArray::fromStdString(argument));
}

quint32 numberFrom(const char* option, const std::string& argument)
{
    quint32 number = 0;
    const char* const end = argument.data() + argument.size();
    const auto [last, error] = std::from_chars(argument.data(), end, number);
    if (error != std::errc() || last != end)
        throw valueFailure(option, argument, "a whole number from 0 to 4294967295");
    return number;
}

unsigned threadsChosen(const std::string& argument)
{
    const char* const variable = "BRENMARK_THREADS";
    const std::string fromEnvironment = qgetenv(variable).toStdString();
    const bool isArgument = !argument.empty();
    if (!isArgument && fromEnvironment.empty())
        return 0;
    const char* const option = isArgument ? "--threads" : variable;
    const std::string& wanted = isArgument ? argument : fromEnvironment;
    unsigned number = 0;
    const char* const end = wanted.data() + wanted.size();
    const auto [last, error] = std::from_chars(wanted.data(), end, number);
    if (error != std::errc() || last != end || number < 1 || number > mostThreads)
        throw valueFailure(option, wanted, "a whole number from 1 to " + std::to_string(mostThreads));
    return number;
}

/// \return whether all of a text is a finite number
static bool isReal(const char* begin, const char* end, double& number)
{
    const auto [last, error] = std::from_chars(begin, end, number);
    return error == std::errc() && last == end && std::isfinite(number);
}

std::tuple<double, double, quint32> rangeFrom(const char* option, const std::string& argument)
{
    constexpr quint32 most = 100000;
    double from = 0.0, to = 0.0;
    quint32 count = 0;
    const char* const begin = argument.data();
    const char* const end = begin + argument.size();
    const char* const first = std::find(begin, end, ':');
    const char* const second = first == end ? end : std::find(first + 1, end, ':');
    const auto [last, error] = std::from_chars(second == end ? end : second + 1, end, count);
    if (second == end || !isReal(begin, first, from) || !isReal(first + 1, second, to) || error != std::errc() ||
        last != end || count < 2 || count > most || from == to)
        throw valueFailure(option, argument, "FROM:TO:COUNT with two different numbers and a count from 2 to 100000");
    return {from, to, count};
}

quint32 countFrom(const char* option, const std::string& argument)
{
    constexpr quint32 most = 1000;
    quint32 number = 0;
    const char* const end = argument.data() + argument.size();
    const auto [last, error] = std::from_chars(argument.data(), end, number);
    if (error != std::errc() || last != end || number < 1 || number > most)
        throw valueFailure(option, argument, "a whole number from 1 to " + std::to_string(most));
    return number;
}

std::vector<std::string> namesFrom(const std::string& argument)
{
    std::vector<std::string> names;
    for (std::size_t at = 0; at < argument.size();) {
        const std::size_t end = std::min(argument.find(',', at), argument.size());
        const std::size_t first = argument.find_first_not_of(' ', at);
        const std::size_t last = argument.find_last_not_of(' ', end == 0 ? 0 : end - 1);
        if (first < end && last >= first)
            names.push_back(argument.substr(first, last - first + 1));
        at = end + 1;
    }
    return names;
}

std::pair<quint32, quint32> timestepsFrom(const char* option, const std::string& argument)
{
    quint32 first = 0, last = 0;
    const char* const begin = argument.data();
    const char* const end = begin + argument.size();
    const char* const colon = std::find(begin, end, ':');
    const auto isNumber = [](const char* from, const char* to, quint32& number) {
        const auto [rest, error] = std::from_chars(from, to, number);
        return error == std::errc() && rest == to;
    };
    if (!isNumber(begin, colon, first) || !isNumber(colon == end ? begin : colon + 1, end, last) || first > last ||
        last == std::numeric_limits<quint32>::max())
        throw valueFailure(option, argument, "a timestep such as 3, a range such as 2:5, or all");
    return {first, last};
}

std::pair<quint32, quint32> shardFrom(const char* option, const std::string& argument)
{
    constexpr quint32 most = 100000;
    quint32 share = 0, shares = 0;
    const char* const begin = argument.data();
    const char* const end = begin + argument.size();
    const char* const slash = std::find(begin, end, '/');
    const auto [firstEnd, firstError] = std::from_chars(begin, slash, share);
    const auto [lastEnd, lastError] = std::from_chars(slash == end ? end : slash + 1, end, shares);
    if (slash == end || firstError != std::errc() || lastError != std::errc() || firstEnd != slash || lastEnd != end ||
        share < 1 || share > shares || shares > most)
        throw valueFailure(option, argument, "I/N with I from 1 to N, for example 2/8");
    return {share, shares};
}

static STolerance toleranceFrom(const char* option, const std::string& argument)
{
    const bool isRelative = !argument.empty() && argument.back() == '%';
    double number = 0.0;
    if (!isReal(argument.data(), argument.data() + argument.size() - (isRelative ? 1 : 0), number) || number < 0.0)
        throw valueFailure(option, argument,
                           "a number in the unit of the values, such as 1e-9, or a share such as 0.01%");
    STolerance tolerance;
    (isRelative ? tolerance.relative : tolerance.absolute) = isRelative ? number / 100.0 : number;
    return tolerance;
}

STolerances tolerancesFrom(const char* option, const std::vector<std::string>& arguments)
{
    STolerances tolerances;
    for (const std::string& argument : arguments) {
        const size_t sign = argument.rfind('=');
        const STolerance tolerance =
            toleranceFrom(option, sign == std::string::npos ? argument : argument.substr(sign + 1));
        if (sign == 0)
            throw valueFailure(option, argument, "NAME=BY, such as velocity=1e-6, or BY alone");
        (sign == std::string::npos ? tolerances.all : tolerances.ofQuantities[argument.substr(0, sign)]) = tolerance;
    }
    return tolerances;
}

double speedFrom(const char* option, const std::string& argument)
{
    double number = 0.0;
    if (!isReal(argument.data(), argument.data() + argument.size(), number) || number <= 0.0)
        throw valueFailure(option, argument, "a number above 0");
    return number;
}

std::uint64_t sizeFrom(const char* option, const std::string& argument)
{
    const auto failure = [&] { return valueFailure(option, argument, "a size such as 500MB, 4GB or 2GiB"); };
    std::uint64_t size = 0;
    const char* const end = argument.data() + argument.size();
    const auto [last, error] = std::from_chars(argument.data(), end, size);
    if (error != std::errc())
        throw failure();
    std::string unit;
    for (const char* c = last; c != end; ++c)
        if (*c != ' ')
            unit += static_cast<char>(std::tolower(static_cast<unsigned char>(*c)));
    constexpr std::array<char, 5> prefixes{'k', 'm', 'g', 't', 'p'};
    std::uint64_t factor = 1;
    for (size_t i = 0; i < prefixes.size() && !unit.empty() && unit != "b"; ++i) {
        const bool isBinary = unit == std::string(1, prefixes[i]) + "ib";
        const bool isDecimal = unit == std::string(1, prefixes[i]) || unit == std::string(1, prefixes[i]) + "b";
        if (!isBinary && !isDecimal)
            continue;
        for (size_t power = 0; power <= i; ++power)
            factor *= isBinary ? 1024 : 1000;
        unit.clear();
    }
    if ((!unit.empty() && unit != "b") || size > UINT64_MAX / factor)
        throw failure();
    return size * factor;
}

static constexpr std::array<std::pair<const char*, EColour>, 3> colours{
    {{"auto", eColourAuto}, {"always", eColourAlways}, {"never", eColourNever}}};
static constexpr std::array<std::pair<const char*, EProgressForm>, 5> progressForms{{{"auto", eProgressAuto},
                                                                                     {"bar", eProgressBar},
                                                                                     {"plain", eProgressPlain},
                                                                                     {"json", eProgressJson},
                                                                                     {"none", eProgressNone}}};

template <class TWords>
static std::vector<std::string> namesOf(const TWords& words)
{
    std::vector<std::string> names;
    names.reserve(words.size());
    for (const auto& [name, value] : words)
        names.emplace_back(name);
    return names;
}

std::vector<std::string> colourWords() { return namesOf(colours); }
std::vector<std::string> progressWords() { return namesOf(progressForms); }

EColour colourFrom(const std::string& argument) { return wordFrom("--color", argument, colours); }

EProgressForm progressFrom(const std::string& argument) { return wordFrom("--progress", argument, progressForms); }

std::string adviceForManyDecks(const std::string& decks)
{
    return "To convert decks and whole trees of them into a folder OUT: brenmark convert " + decks + " -o OUT";
}

} // namespace NBrenmark
