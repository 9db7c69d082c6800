#pragma once
// The mass that a factory has brought in.

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class CFactoryAccounting
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// What a new creation rate starts from: nothing created by it, and nothing carried over.
    void startRate();

    double massCreated = 0.0;         ///< kg
    double massSinceRateChange = 0.0; ///< kg
    double massRemainder = 0.0;       ///< carried over from the time step before, kg
};

} // namespace NBrenmark
