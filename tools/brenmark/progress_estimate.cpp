#include "brenmark/progress_estimate.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace NBrenmark {

CProgressEstimate::CProgressEstimate(std::vector<double> timestepSizes, double expectedTraffic,
                                     const SProgressMoment& now)
    : sizes(std::move(timestepSizes)), bytesBefore{0.0}, trafficPerByte(expectedTraffic), begin(now), current(now)
{
    for (double& size : sizes) {
        size = std::max(size, 1.0);
        bytesBefore.push_back(bytesBefore.back() + size);
    }
}

void CProgressEstimate::beginNext(std::size_t count, const SProgressMoment& now)
{
    done = std::min(count, sizes.size());
    farthest = std::max(farthest, bytesBefore[done]);
    current = now;
}

void CProgressEstimate::finish(std::size_t count, const SProgressMoment& now)
{
    const std::size_t last = std::min(count, sizes.size());
    if (last <= done)
        return;
    const double size = (bytesBefore[last] - bytesBefore[done]) / static_cast<double>(last - done);
    const double time = (now.seconds - current.seconds) / static_cast<double>(last - done);
    for (; done < last; ++done) {
        const bool isFirst = allBytes == 0.0;
        allBytes += size;
        allSeconds += time;
        if (isFirst)
            continue;
        number += 1.0;
        bytes += size;
        squares += size * size;
        seconds += time;
        products += size * time;
    }
    allTraffic += now.traffic - current.traffic;
    if (allTraffic > 0.0)
        trafficPerByte = allTraffic / allBytes;
    beginNext(count, now);
}

void CProgressEstimate::pass(std::size_t count, const SProgressMoment& now)
{
    beginNext(count, now);
    passed = done;
    begin = now;
}

double CProgressEstimate::shareOfCurrent(const SProgressMoment& now) const
{
    constexpr double most = 0.99; // whether it is finished is said by those who do it
    if (done == sizes.size() || trafficPerByte <= 0.0)
        return 0.0;
    return std::clamp((now.traffic - current.traffic) / (trafficPerByte * sizes[done]), 0.0, most);
}

double CProgressEstimate::bytesDone(const SProgressMoment& now)
{
    if (done < sizes.size())
        farthest = std::max(farthest, bytesBefore[done] + sizes[done] * shareOfCurrent(now));
    return farthest;
}

double CProgressEstimate::bytesPerSecond(const SProgressMoment& now)
{
    const double elapsed = now.seconds - begin.seconds;
    return elapsed > 0.0 ? (bytesDone(now) - bytesBefore[passed]) / elapsed : 0.0;
}

std::optional<double> CProgressEstimate::estimate(const SProgressMoment& now)
{
    if (done == sizes.size())
        return 0.0;
    double each = 0.0, perByte = 0.0; // seconds
    if (allBytes > 0.0) {
        constexpr double leastForSquares = 3.0;
        const double spread = number * squares - bytes * bytes; // of the sizes
        perByte = number > 0.0 ? seconds / bytes : allSeconds / allBytes;
        if (number >= leastForSquares && spread > 1e-3 * number * squares) {
            perByte = (number * products - bytes * seconds) / spread;
            each = (seconds - perByte * bytes) / number;
            if (each < 0.0) { // a timestep of no bytes takes no time
                each = 0.0;
                perByte = products / squares;
            }
            else if (perByte < 0.0) {
                each = seconds / number;
                perByte = 0.0;
            }
        }
    }
    else {
        const double own = bytesDone(now) - bytesBefore[passed];
        if (own <= 0.0)
            return std::nullopt;
        perByte = (now.seconds - begin.seconds) / own;
    }
    const double share = std::max((bytesDone(now) - bytesBefore[done]) / sizes[done], 0.0);
    const auto others = static_cast<double>(sizes.size() - done - 1);
    return (each + perByte * sizes[done]) * (1.0 - share) + each * others +
           perByte * (bytesBefore.back() - bytesBefore[done + 1]);
}

std::optional<double> CProgressEstimate::secondsLeft(const SProgressMoment& now)
{
    const std::optional<double> raw = estimate(now);
    if (!raw || done == sizes.size())
        return raw;
    if (!shown) {
        shown = raw;
    }
    else {
        const double passedSince = now.seconds - shownAt;
        const double expected = std::max(*shown - passedSince, 0.0);
        const double settling = std::min(2.0, 0.02 + 0.05 * (now.seconds - begin.seconds)); // the first ones are rough
        shown = expected + (*raw - expected) * (1.0 - std::exp(-passedSince / settling));
    }
    shownAt = now.seconds;
    return shown;
}

} // namespace NBrenmark
