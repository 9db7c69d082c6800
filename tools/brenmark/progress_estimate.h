#pragma once
// How far a deck is, and how long the rest takes. Nothing here knows a clock or a disk: both are handed in, so that a
// test can drive them.
//
// A timestep takes a fixed time and a time for each of its bytes. Both come from the finished timesteps by least squares,
// for timesteps grow: with the mean rate alone, what the many small ones cost at the beginning would be charged to every
// byte of the large ones that follow. The first timestep is left out of that, for it has to set everything up.

#include <cstddef>
#include <optional>
#include <vector>

namespace NBrenmark {

/// What is known at one moment.
struct SProgressMoment
{
    double seconds = 0.0; ///< of a clock that only goes on
    double traffic = 0.0; ///< bytes that the process has read and written so far; where that isn't known always 0
};

class CProgressEstimate
{
public:
    /// \param sizes    bytes of each timestep
    /// \param traffic  bytes read and written for one of a timestep, until a timestep is finished that says so
    CProgressEstimate(std::vector<double> sizes, double traffic, const SProgressMoment& begin);

    /// So many timesteps are finished.
    void finish(std::size_t timesteps, const SProgressMoment& now);
    /// So many timesteps have been passed over, which says nothing about the rate.
    void pass(std::size_t timesteps, const SProgressMoment& now);

    std::size_t finished() const { return done; }
    std::size_t timesteps() const { return sizes.size(); }
    double bytesTotal() const { return bytesBefore.back(); }
    /// Never less than before.
    double bytesDone(const SProgressMoment& now);
    /// Of all that was finished; 0 as long as nothing was.
    double bytesPerSecond(const SProgressMoment& now);
    /// Smoothed: it goes down with the clock and moves to each better estimate within a short time.
    std::optional<double> secondsLeft(const SProgressMoment& now);

private:
    void beginNext(std::size_t timesteps, const SProgressMoment& now);
    double shareOfCurrent(const SProgressMoment& now) const;
    std::optional<double> estimate(const SProgressMoment& now);

    std::vector<double> sizes;
    std::vector<double> bytesBefore; ///< each timestep, and after the last one
    double trafficPerByte;
    SProgressMoment begin;   ///< of the first timestep that counts
    SProgressMoment current; ///< when the timestep at work began
    std::size_t done = 0;
    std::size_t passed = 0;
    double farthest = 0.0;

    // Sums over all that was finished.
    double allBytes = 0.0, allSeconds = 0.0, allTraffic = 0.0;
    // For the least squares.
    double number = 0.0, bytes = 0.0, squares = 0.0, seconds = 0.0, products = 0.0;

    std::optional<double> shown;
    double shownAt = 0.0;
};

} // namespace NBrenmark
