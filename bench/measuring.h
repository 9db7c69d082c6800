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
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace NBench {

using namespace NBrenmark;

/// Gives the header the version of the last legacy program: with that of today nobody takes a deck for one that
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

/// Runs a step in a process of its own. The step gives the seconds that it counts itself, 0 where all of its
/// time counts, and a negative number where it failed.
inline SMeasure measure(const char* name, const std::function<double()>& step)
{
    int ends[2];
    if (pipe(ends) != 0)
        std::exit(1);
    std::fflush(stdout);
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const double seconds = step();
        _exit(write(ends[1], &seconds, sizeof seconds) == sizeof seconds ? 0 : 1);
    }
    double counted = -1.0;
    close(ends[1]);
    const bool answered = read(ends[0], &counted, sizeof counted) == sizeof counted;
    close(ends[0]);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    if (!answered || counted < 0.0 || status != 0) {
        std::fprintf(stderr, "%s failed\n", name);
        std::exit(1);
    }
    const auto seconds = [](const timeval& time) { return double(time.tv_sec) + 1e-6 * double(time.tv_usec); };
    SMeasure result;
    result.wallSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (counted > 0.0)
        result.wallSeconds = counted;
    result.cpuSeconds = seconds(usage.ru_utime) + seconds(usage.ru_stime);
    result.peakMegabytes = double(usage.ru_maxrss) / 1024.0;
    return result;
}

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : 0.5 * (values[middle - 1] + values[middle]);
}

inline QString wordAfter(const QStringList& arguments, const QString& option, const QString& otherwise)
{
    const int at = arguments.indexOf(option);
    return at >= 0 && at + 1 < arguments.size() ? arguments[at + 1] : otherwise;
}

} // namespace NBench
