#pragma once
// What the benchmarks share: steps that run in processes of their own, and numbers that can be compared.

#include "api/data_converter.h"
#include "core/version.h"

#include <QDataStream>
#include <QFile>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace NBench {

using namespace NBrenmark;

/// Gives the header the version of the last legacy program: with that of today no one takes a deck for one that
/// needs converting. Its blocks tell their own version.
inline bool markAsLegacy(const QString& path)
{
    constexpr quint32 version = makeVersion(27, 0, 3);
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite))
        return false;
    QDataStream stream(&file);
    stream << version << version;
    file.close();
    return stream.status() == QDataStream::Ok && CDataConverter::legacyDataConversionRequired(path);
}

struct SMeasure
{
    double wallSeconds = 0.0;
    double cpuSeconds = 0.0;
    double peakMegabytes = 0.0;
};

/// The seconds that a step counts itself; 0 where all of its time counts, and negative where it failed.
struct SCounted
{
    SCounted(double wall, double cpu = 0.0) : wall(wall), cpu(cpu) {} // NOLINT: most steps have one number to give

    double wall;
    double cpu;
};

inline double secondsOf(const timeval& time) { return double(time.tv_sec) + 1e-6 * double(time.tv_usec); }

/// Seconds of this process.
inline SCounted now()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return {std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(),
            secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime)};
}

/// Runs a step in a process of its own.
inline SMeasure measure(const char* name, const std::function<SCounted()>& step)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        std::exit(1);
    std::fflush(stdout);
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const SCounted seconds = step();
        _exit(write(ends[1], &seconds, sizeof seconds) == sizeof seconds ? 0 : 1);
    }
    SCounted counted(-1.0);
    close(ends[1]);
    const bool answered = read(ends[0], &counted, sizeof counted) == sizeof counted;
    if (!answered) // another program ran in place of the step: its status says all
        counted = SCounted(0.0);
    close(ends[0]);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    if (counted.wall < 0.0 || status != 0) {
        std::fprintf(stderr, "%s failed\n", name);
        std::exit(1);
    }
    SMeasure result;
    result.wallSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (counted.wall > 0.0)
        result.wallSeconds = counted.wall;
    result.cpuSeconds = counted.cpu > 0.0 ? counted.cpu : secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
    result.peakMegabytes = double(usage.ru_maxrss) / 1024.0;
    return result;
}

/// Turns this process into the command line, with its results thrown away.
[[noreturn]] inline void becomeCommand(const QString& program, const QStringList& words)
{
    std::vector<QByteArray> texts{program.toLocal8Bit()};
    for (const QString& word : words)
        texts.push_back(word.toLocal8Bit());
    std::vector<char*> arguments;
    arguments.reserve(texts.size() + 1);
    for (QByteArray& text : texts)
        arguments.push_back(text.data());
    arguments.push_back(nullptr);
    const int nothing = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    ::execv(arguments.front(), arguments.data());
    _exit(127);
}

/// Runs the command line in a process of its own.
inline SMeasure measureCommand(const char* name, const QString& program, const QStringList& words)
{
    return measure(name, [&]() -> SCounted { becomeCommand(program, words); });
}

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : 0.5 * (values[middle - 1] + values[middle]);
}

/// "7.95 (7.80 to 8.11, 5 rounds)".
inline QString spread(const std::vector<double>& values)
{
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    return QString("%1 (%2 to %3, %4 rounds)")
        .arg(median(values), 0, 'f', 3)
        .arg(*least, 0, 'f', 3)
        .arg(*most, 0, 'f', 3)
        .arg(values.size());
}

inline QString wordAfter(const QStringList& arguments, const QString& option, const QString& otherwise)
{
    const int at = arguments.indexOf(option);
    return at >= 0 && at + 1 < arguments.size() ? arguments[at + 1] : otherwise;
}

} // namespace NBench
